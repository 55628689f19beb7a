// Reads one action from the sibling product's text: `CameraOn (5)`, `SystemError (3, 12, WindowsError: 5)`.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "bridge/converters.h"
#include "bridge/hesk_patterns.h"
#include "objects/action.h"

namespace HeskPLC {

// One field of the text. The parts of one kind of value are filled and the others empty.
class ActionTextToken {
public:
    explicit ActionTextToken(const OrvPLC::PatternSearch& found);

    std::u16string_view operator[](TokenPart part) const { return parts_[static_cast<std::size_t>(part)]; }
    std::u16string_view RectWord(std::size_t word) const
    {
        return parts_[static_cast<std::size_t>(TokenPart::Rect) + word];
    }

private:
    std::array<std::u16string_view, static_cast<std::size_t>(TokenPart::Count)> parts_;
};

// One reading of a text, which outlives the parser.
class ActionTextParser {
public:
    // No action has as many fields: what stands behind is checked and dropped, so that a long text costs no memory.
    static constexpr std::size_t kMostTokens = 32;

    explicit ActionTextParser(std::u16string_view text) : search_(text.size()), text_(text) {}

    // The action, or null for a text that is none, has a prefix or has no counterpart here. Raises EUlmoDateTime for a
    // date that is none, SystemException when names cannot be compared, std::runtime_error for a text that the pattern
    // engine cannot get through.
    OrvPLC::ObjectPtr<OrvPLC::TOrvAction> Parse();

    // For the reading of one action's fields.
    const ActionTextToken* Current() const { return cursor_ < tokens_.size() ? &tokens_[cursor_] : nullptr; }
    void Advance() { ++cursor_; }  // also past the last token
    // Calls visit(token) for each field of the text. The result is whether the closing bracket follows the last one.
    template <class Visit>
    bool ForEachToken(Visit&& visit)
    {
        std::u16string_view rest = fields_;
        for (; search_.Find(Patterns().field, rest); rest = search_.Rest()) visit(ActionTextToken(search_));
        return search_.Find(Patterns().tail, rest);
    }

private:
    bool Split();

    OrvPLC::PatternSearch search_;
    std::u16string_view text_;
    std::u16string_view name_;
    std::u16string_view fields_;  // what stands behind the opening bracket
    std::vector<ActionTextToken> tokens_;
    std::size_t cursor_ = 0;
};

// Takes the field's value from the token at the cursor, if there is one and its key fits.
void ReadField(ActionTextParser& parser, OrvPLC::TOrvAction& action, const Field& field);
void ReadFields(ActionTextParser& parser, OrvPLC::TOrvAction& action, std::span<const Field> fields);

}  // namespace HeskPLC
