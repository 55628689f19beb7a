// Finds the tokens of action text: what the patterns of the grammar would find, in linear time.
//
// The grammar is a handful of regular expressions that are searched for, not anchored: text that fits nowhere is
// skipped, and a match later in the text still counts. They stand in tests/judge/patterns.cpp, and the tests search
// with them and compare. The scanner gives the same first match with the same groups. It can, because the expressions
// leave next to nothing open: blanks, digits and letters are taken to the end of their run or the match fails, and the
// next character tells which alternative can match. Only a string with a backslash before a quote may close in several
// places; StringCloses tries them in the order of the expression. What is known to fail is remembered, so no stretch of
// text is walked more than a few times, whatever it holds.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "forms/string_closes.h"

namespace OrvPLC {

// Whose grammar. The sibling product has no quoted names and no result data, other floats and stricter strings.
enum class TextDialect : unsigned char { Own, Sibling };

struct HeaderMatch {
    std::u16string_view prefix;  // empty or one unit of @!?
    std::u16string_view name;    // without its quotes; may be empty between quotes
};

// One parameter, or one field of the sibling. The views refer to the text.
struct FieldMatch {
    enum class Form : unsigned char {
        Integer,     // the digits with their sign
        Float,       // the same
        String,      // the text between the quotes
        Rect,        // four numbers, the lowest word first
        Channel,     // id, number, name
        EventType,   // id, name
        Resource,    // guid, name
        ResultData,  // the whole list with its braces
    };

    std::u16string_view name;  // empty if there is none
    Form form = Form::Integer;
    std::array<std::u16string_view, 4> parts;  // as the form has them; the others are empty
};

// One item of a result data list.
struct ResultItemMatch {
    std::array<std::u16string_view, 5> numbers;
    std::u16string_view name;
};

class ResultListWalk;

// One walk through a text, which outlives the scanner. Each function finds the first match from the current place on
// and moves behind it; without a match it gives false and the place stays.
class TextScanner {
public:
    static constexpr std::size_t kNone = std::u16string_view::npos;

    explicit TextScanner(std::u16string_view text, TextDialect dialect = TextDialect::Own);
    TextScanner(const TextScanner&) = delete;
    TextScanner& operator=(const TextScanner&) = delete;
    ~TextScanner();

    bool FindHeader(HeaderMatch& match);  // at the place or at a later beginning of a line
    bool FindField(FieldMatch& match);
    bool FindClose();  // the closing bracket, at the place or at a later beginning of a line
    bool FindResultItem(ResultItemMatch& match);

    std::size_t Place() const { return place_; }
    void GoTo(std::size_t place);

private:
    // Strings that are known not to close so that what follows them fits: those that open at `from` or later, before
    // `to`. One for each thing that may follow.
    struct FailedStrings {
        std::size_t from = 0;
        std::size_t to = 0;
    };

    std::size_t HeaderAt(std::size_t at, HeaderMatch& match);
    std::size_t FieldAt(std::size_t at, FieldMatch& match);
    std::size_t NamedByIdentifier(std::size_t at, FieldMatch& match);
    std::size_t NamedByString(std::size_t at, FieldMatch& match);
    std::size_t ValueAfterColon(std::size_t at, FieldMatch& match);
    std::size_t Value(std::size_t at, FieldMatch& match);
    std::size_t Number(std::size_t at, FieldMatch& match);
    std::size_t Float(std::size_t at, std::size_t digits, std::size_t behind, FieldMatch& match);
    std::size_t String(std::size_t open, FieldMatch& match);
    std::size_t Braces(std::size_t at, FieldMatch& match);
    std::size_t NumbersInBraces(std::size_t at, FieldMatch& match);
    std::size_t Resource(std::size_t open, FieldMatch& match);
    std::size_t ResultData(std::size_t at, FieldMatch& match);
    std::size_t NameBeforeBrace(std::size_t open, std::u16string_view& name);
    std::size_t Separator(std::size_t at) const;
    template <class Follow>
    std::size_t CloseOf(std::size_t open, FailedStrings& failed, Follow follow);
    template <class At>
    bool FindAtLine(At at);

    std::u16string_view text_;
    std::size_t place_ = 0;
    TextDialect dialect_;
    // Ends of the last runs of letters and digits that cannot be a name, and of digits that cannot be a value, at
    // whichever of their characters a match begins. They hold for a walk forward.
    std::size_t failedName_ = 0;
    std::size_t failedDigits_ = 0;
    FailedStrings failedHeaders_;
    FailedStrings failedNames_;
    FailedStrings failedStrings_;
    FailedStrings failedGuids_;
    FailedStrings failedNamesInBraces_;
    FailedStrings failedItems_;
    std::unique_ptr<ResultListWalk> lists_;  // made for the first list
};

}  // namespace OrvPLC
