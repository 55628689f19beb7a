// The pattern engine: Boost.Regex over UTF-16, in Perl syntax with default options. Its classes are those of
// ulmo/character_class.h: alpha, alnum, digit, space, word. Only the .cpp includes Boost, so that its templates are
// compiled once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace OrvPLC::Judge {

// A compiled pattern; safe to be searched with from several threads.
class Expression {
public:
    explicit Expression(std::string_view pattern);  // ASCII
    Expression(Expression&&) noexcept;
    ~Expression();

private:
    friend class PatternSearch;
    struct Compiled;
    std::unique_ptr<Compiled> compiled_;
};

// The searches of one reading: their groups and what they may cost together.
//
// Backtracking takes exponential time on texts made for it, and a text can hold any number of such places. So there
// is one budget for all searches of a reading, a fixed part and a part that grows with the text; when it is spent the
// search raises std::runtime_error. Well-formed text of a few kilobytes stays far below it; a valid text can spend it,
// for example on blanks after its end.
class PatternSearch {
public:
    explicit PatternSearch(std::size_t textLength);
    PatternSearch(const PatternSearch&) = delete;
    PatternSearch& operator=(const PatternSearch&) = delete;
    ~PatternSearch();

    // Finds the first match in the text, which the groups then refer to. The text begins where the view begins: what
    // comes before it in memory takes no part. The groups of a failed search are undefined.
    bool Find(const Expression& expression, std::u16string_view text);
    // Whether the whole text matches. Leaves the groups of the last Find alone.
    bool FitsWhole(const Expression& expression, std::u16string_view text);

    // A group of the last match, 0 for the whole; empty when it took no part.
    std::u16string_view operator[](std::size_t group) const;
    // What follows the last match.
    std::u16string_view Rest() const { return rest_; }

private:
    struct Results;

    std::unique_ptr<Results> results_;
    std::u16string_view rest_;
    std::ptrdiff_t statesLeft_;
};

// Sets the fixed part of the budget for the whole process and gives back the one before. For tests and fuzzers, where
// instrumentation makes every step slow.
std::ptrdiff_t SetFixedSearchBudget(std::ptrdiff_t states);

}  // namespace OrvPLC::Judge
