#include "judge/expression.h"

#include <boost/regex.hpp>
#include <iterator>
#include <string>
#include <utility>

#include "ulmo/character_class.h"

namespace OrvPLC::Judge {

// UTF-16 units as the engine's characters. The iterator is only bidirectional, so that the engine does not estimate a
// limit of its own: the budget sets the limit, and the searches run a little faster.
class UnitIterator {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = wchar_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const wchar_t*;
    using reference = wchar_t;

    UnitIterator() = default;
    explicit UnitIterator(const char16_t* unit) : unit_(unit) {}
    const char16_t* Unit() const { return unit_; }

    wchar_t operator*() const { return static_cast<wchar_t>(*unit_); }
    UnitIterator& operator++()
    {
        ++unit_;
        return *this;
    }
    UnitIterator operator++(int) { return UnitIterator(unit_++); }
    UnitIterator& operator--()
    {
        --unit_;
        return *this;
    }
    UnitIterator operator--(int) { return UnitIterator(unit_--); }
    bool operator==(const UnitIterator&) const = default;

private:
    const char16_t* unit_ = nullptr;
};

// What the engine asks about characters. Its own traits ask the system, so each system would read a text in its own
// way, and make a locale for it. Syntax and messages of the engine stay as they are.
struct UnitTraits {
    using char_type = wchar_t;
    using size_type = std::size_t;
    using string_type = std::wstring;
    using locale_type = int;
    using char_class_type = std::uint32_t;

    static std::size_t length(const wchar_t* text) { return std::char_traits<wchar_t>::length(text); }
    static wchar_t translate(wchar_t unit) { return unit; }
    static wchar_t translate_nocase(wchar_t unit) { return unit; }
    static std::wstring transform(const wchar_t* first, const wchar_t* last) { return {first, last}; }
    static std::wstring transform_primary(const wchar_t* first, const wchar_t* last) { return {first, last}; }
    static std::wstring lookup_collatename(const wchar_t*, const wchar_t*) { return {}; }

    static char_class_type lookup_classname(const wchar_t* first, const wchar_t* last)
    {
        const std::wstring_view name(first, last);
        if (name == L"alpha") return Ulmo::kAlpha;
        if (name == L"alnum") return Ulmo::kAlpha | Ulmo::kDigit;
        if (name == L"d" || name == L"digit") return Ulmo::kDigit;
        if (name == L"s" || name == L"space") return Ulmo::kSpace;
        if (name == L"w" || name == L"word") return Ulmo::kWord;
        // The engine insists on these two, for searches that ignore case. We have none, and no unit is in the class.
        if (name == L"lower" || name == L"upper") return kCase;
        return 0;
    }

    static bool isctype(wchar_t unit, char_class_type classes)
    {
        return (Ulmo::CharacterClass(static_cast<char16_t>(unit)) & classes) != 0;
    }

    static int value(wchar_t unit, int radix)
    {
        const int digit = boost::BOOST_REGEX_DETAIL_NS::global_value(unit);
        return digit < radix ? digit : -1;
    }

private:
    static constexpr char_class_type kCase = 0x100;
};

using UnitRegex = boost::basic_regex<wchar_t, UnitTraits>;

}  // namespace OrvPLC::Judge

// Counts how often the engine is inside each repeat of the pattern: a list with the newest entry first, and an entry
// for each step that can be taken back. The engine's own version walks over all entries of the inner repeats whenever
// an outer one goes on, without counting these steps as states, so a text of 100 KB could keep it busy for hours. This
// version has a second link past the entries of inner repeats: it takes at most as many steps as repeats are nested. It
// does not serve expressions that call themselves, which we do not have.
template <>
class boost::BOOST_REGEX_DETAIL_NS::repeater_count<OrvPLC::Judge::UnitIterator> {
public:
    explicit repeater_count(repeater_count** stack) : stack_(stack) {}
    repeater_count(int id, repeater_count** stack, OrvPLC::Judge::UnitIterator start, int)
        : stack_(stack), next_(*stack), id_(id), start_(start)
    {
        *stack_ = this;
        const repeater_count* entry = next_;
        while (entry && entry->id_ > id) entry = entry->outer_;
        outer_ = entry;
        if (!entry || entry->id_ != id) return;
        outer_ = entry->outer_;
        count_ = entry->count_;
        start_ = entry->start_;
    }
    repeater_count(const repeater_count&) = delete;
    repeater_count& operator=(const repeater_count&) = delete;
    ~repeater_count()
    {
        if (next_) *stack_ = next_;
    }

    std::size_t get_count() const { return count_; }
    int get_id() const { return id_; }
    std::size_t operator++() { return ++count_; }
    // An iteration that took nothing is the last one.
    bool check_null_repeat(const OrvPLC::Judge::UnitIterator& position, std::size_t max)
    {
        const bool idle = count_ != 0 && position == start_;
        if (idle) {
            count_ = max;
        } else {
            start_ = position;
        }
        return idle;
    }

private:
    repeater_count** stack_;
    repeater_count* next_ = nullptr;
    const repeater_count* outer_ = nullptr;  // the newest entry of a repeat around this one; outer ones have lower ids
    int id_ = -1;
    std::size_t count_ = 0;
    OrvPLC::Judge::UnitIterator start_;
};

namespace OrvPLC::Judge {

namespace {

using MatchResults = boost::match_results<UnitIterator>;
using Matcher =
    boost::BOOST_REGEX_DETAIL_NS::perl_matcher<UnitIterator, MatchResults::allocator_type, UnitRegex::traits_type>;

// The engine counts the states that it visits and gives up at a limit, but it neither takes the limit as an argument
// nor gives the count. Both are private members of the matcher that boost::regex_search makes on its stack; naming
// them in an explicit instantiation is the one place where the language lets us reach them.
std::ptrdiff_t& StateCount(Matcher& matcher);
std::ptrdiff_t& StateLimit(Matcher& matcher);

template <std::ptrdiff_t Matcher::*count, std::ptrdiff_t Matcher::*limit>
struct MatcherMembers {
    friend std::ptrdiff_t& StateCount(Matcher& matcher) { return matcher.*count; }
    friend std::ptrdiff_t& StateLimit(Matcher& matcher) { return matcher.*limit; }
};
template struct MatcherMembers<&Matcher::state_count, &Matcher::max_state_count>;

// The budget of one reading: about 0.2 s, and 1 us a character. A well-formed text takes some 7 states a character, so
// the fixed part alone lets more than two million characters through. Text of another kind takes 60 a character, where
// the patterns begin anew at each and fail at once. A longer budget decides few more texts, and each text that was made
// to be slow costs all of it. So programs that compare many texts set a smaller one.
std::ptrdiff_t fixedStates = 20'000'000;
constexpr std::ptrdiff_t kStatesPerUnit = 100;

}  // namespace

struct Expression::Compiled {
    UnitRegex regex;
};

Expression::Expression(std::string_view pattern) : compiled_(std::make_unique<Compiled>())
{
    compiled_->regex.assign(std::wstring(pattern.begin(), pattern.end()));
}

Expression::Expression(Expression&&) noexcept = default;
Expression::~Expression() = default;

struct PatternSearch::Results {
    // As boost::regex_search and boost::regex_match do it.
    template <class Run>
    static bool Search(const Expression& expression, std::u16string_view text, boost::match_flag_type flags,
                       MatchResults& match, std::ptrdiff_t& statesLeft, Run run)
    {
        const UnitIterator first(text.data());
        const UnitIterator last(text.data() + text.size());
        Matcher matcher(first, last, match, expression.compiled_->regex, flags, first);
        StateLimit(matcher) = statesLeft;
        const bool found = run(matcher);
        statesLeft -= StateCount(matcher);
        return found;
    }

    MatchResults match;
};

PatternSearch::PatternSearch(std::size_t textLength)
    : results_(std::make_unique<Results>()),
      statesLeft_(fixedStates + kStatesPerUnit * static_cast<std::ptrdiff_t>(textLength))
{}

PatternSearch::~PatternSearch() = default;

bool PatternSearch::Find(const Expression& expression, std::u16string_view text)
{
    if (!Results::Search(expression, text, boost::match_default, results_->match, statesLeft_,
                         [](Matcher& matcher) { return matcher.find(); })) {
        return false;
    }
    const char16_t* end = results_->match[0].second.Unit();
    rest_ = text.substr(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool PatternSearch::FitsWhole(const Expression& expression, std::u16string_view text)
{
    MatchResults match;
    return Results::Search(expression, text, boost::match_default | boost::match_any, match, statesLeft_,
                           [](Matcher& matcher) { return matcher.match(); });
}

std::u16string_view PatternSearch::operator[](std::size_t group) const
{
    const auto& found = results_->match[static_cast<int>(group)];
    if (!found.matched) return {};
    return {found.first.Unit(), static_cast<std::size_t>(found.second.Unit() - found.first.Unit())};
}

std::ptrdiff_t SetFixedSearchBudget(std::ptrdiff_t states)
{
    return std::exchange(fixedStates, states);
}

}  // namespace OrvPLC::Judge
