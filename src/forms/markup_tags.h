// Finds the tags of XML and HTML in a text, as the pattern of tags finds them, in linear time.
//
// The pattern, which stands in tests/judge/patterns.cpp, lets an attribute's value hold almost anything, quotes that
// are protected by a backslash included, so a tag can be read in many ways and the first that ends well counts. The
// walk tries them in the order of the pattern and visits each place once in each of its states: what failed once fails
// again.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace OrvPLC {

class MarkupTags {
public:
    // The text outlives the walk.
    explicit MarkupTags(std::u16string_view text);

    // The next tag behind the last one; false if there is none.
    bool Next(std::u16string_view& tag);

private:
    static constexpr std::size_t kNone = std::u16string_view::npos;

    // Places that a walk has been at.
    class Visited {
    public:
        explicit Visited(std::size_t size) : places_(size + 1) {}
        // False when it was there before.
        bool Enter(std::size_t place)
        {
            if (places_[place]) return false;
            places_[place] = true;
            return true;
        }

    private:
        std::vector<bool> places_;
    };

    // What is still to be tried: from a place on, or, for a value, the ends that it may have, the last one first.
    struct Choice {
        enum class Kind : unsigned char {
            Attribute,       // another attribute or the end of the tag, at `last`
            AttributeName,   // what follows the name that ends before `last`
            ProtectedQuote,  // quotes from `first` on, before `last`, that a backslash protects
            BareValue,       // a value without quotes that begins at `last`
            BareValueEnd,    // its ends from `first` to `last`
        };
        Kind kind;
        std::size_t first;
        std::size_t last;
    };

    // Where something stands next. It is looked for once, however many tags ask.
    struct Landmark {
        std::u16string_view what;
        std::size_t at = 0;
    };

    std::size_t TagEnd(std::size_t bracket);
    std::size_t NamedTagEnd(std::size_t behindName);
    std::size_t ClosingTagEnd(std::size_t name) const;
    std::size_t DeclarationEnd(std::size_t mark);
    std::size_t EndBehind(Landmark& landmark, std::size_t from);
    std::size_t Try(const Choice& choice);
    std::size_t TryAttribute(std::size_t at);
    void TryAttributeName(std::size_t behind);
    void TryQuotedValue(std::size_t open);
    void TryProtectedQuotes(const Choice& choice);
    void TryBareValue(std::size_t first);
    void Add(Choice::Kind kind, std::size_t first, std::size_t last) { choices_.push_back({kind, first, last}); }

    std::u16string_view text_;
    std::size_t place_ = 0;
    std::size_t lastEnd_;  // behind the last closing bracket: no tag goes further
    Landmark commentEnd_{u"-->"};
    Landmark dataEnd_{u"]]>"};
    std::vector<Choice> choices_;
    Visited attributes_{0};
    Visited names_{0};
    Visited bareValues_{0};
    bool walksAttributes_ = false;
};

}  // namespace OrvPLC
