// Where a string literal may close.
//
// Strings have no escapes: a backslash protects the next character from ending the string and stays in the value. Our
// own text also lets a backslash stand alone, so a quote that follows a backslash may be content and may be the end;
// what stands behind it decides. Only a quote that follows no backslash is certain to close.
#pragma once

#include <cstddef>
#include <string_view>

namespace OrvPLC {

// How a pattern of strings treats a backslash.
enum class Backslash : unsigned char {
    MayStandAlone,      // "((?:[^\\"]|\\.|\\)*)"
    ProtectsTheNextOne  // "((?:[^\\"]|\\.)*)"
};

// The places where one string may close, in the order in which the pattern would try them: each quote where the
// backslashes before it pair off, up to the first that follows no backslash, and then, from there backwards, those that
// were passed over as protected. All steps together visit the string twice.
class StringCloses {
public:
    static constexpr std::size_t kNone = std::u16string_view::npos;

    // `open` is the place of the opening quote.
    StringCloses(std::u16string_view text, std::size_t open, Backslash backslash)
        : text_(text), open_(open), at_(open + 1), backslash_(backslash)
    {}

    // The next place of a closing quote, kNone when there is no other.
    std::size_t Next();
    // Once the first kNone or a protected quote came: no string that opens from `open` up to here closes behind it.
    std::size_t LastPlace() const { return last_; }
    bool WentBack() const { return !forward_; }

private:
    bool PairsOff(std::size_t quote, bool& afterBackslash) const;
    std::size_t NextForward();
    std::size_t NextBackward();

    std::u16string_view text_;
    std::size_t open_;
    std::size_t at_;  // forward: where to look on; backward: the place found last
    std::size_t last_ = kNone;
    std::size_t passedOver_ = 0;  // protected quotes that may still be tried
    Backslash backslash_;
    bool forward_ = true;
};

}  // namespace OrvPLC
