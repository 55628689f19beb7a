#include "judge/expression.h"

#include <gtest/gtest.h>

#include <boost/regex.hpp>
#include <string>
#include <vector>

#include "ulmo/character_class.h"

namespace OrvPLC::Judge {
namespace {

// Whoever reads a text without the engine must see the same classes.
TEST(Expression, ClassesOfAllUnits)
{
    const struct {
        const char* pattern;
        bool (*is)(char16_t);
    } rows[] = {
        {"[[:alpha:]]", Ulmo::IsAlpha},
        {"[[:alnum:]]", Ulmo::IsAlnum},
        {"\\d", Ulmo::IsDigit},
        {"\\s", Ulmo::IsSpace},
        {"\\w", Ulmo::IsWord},
        {"[\\w]", Ulmo::IsWord},
        {"[a-z]", [](char16_t unit) { return unit >= u'a' && unit <= u'z'; }},
        {"[^\"]", [](char16_t unit) { return unit != u'"'; }},
        {".", [](char16_t) { return true; }},
    };
    for (const auto& [pattern, is] : rows) {
        const Expression expression(pattern);
        PatternSearch search(0x10000);
        for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
            const char16_t character = static_cast<char16_t>(unit);
            ASSERT_EQ(search.FitsWhole(expression, {&character, 1}), is(character)) << pattern << std::hex << unit;
        }
    }
}

// All texts of a, b and c up to a length.
std::vector<std::string> AllTexts(std::size_t longest)
{
    std::vector<std::string> texts = {""};
    for (std::size_t next = 0; texts[next].size() < longest; ++next) {
        for (const char unit : {'a', 'b', 'c'}) texts.push_back(texts[next] + unit);
    }
    return texts;
}

// The groups of the first match as places in the text, "-" without one.
std::string StockMatch(const std::string& pattern, const std::string& text)
{
    boost::smatch match;
    if (!boost::regex_search(text, match, boost::regex(pattern))) return "-";
    std::string places;
    for (std::size_t group = 0; group < match.size(); ++group)
        places += "[" + match[static_cast<int>(group)].str() + "]";
    return places;
}

std::string OurMatch(const Expression& expression, std::size_t groups, const std::string& text)
{
    const std::u16string wide(text.begin(), text.end());
    PatternSearch search(wide.size());
    if (!search.Find(expression, wide)) return "-";
    std::string places;
    for (std::size_t group = 0; group < groups; ++group) {
        const std::u16string found(search[group]);
        places += "[" + std::string(found.begin(), found.end()) + "]";
    }
    return places;
}

// We count repeats in a way of our own, which must find what the engine's own way finds.
TEST(Expression, RepeatsWithinRepeatsMatchAsInTheStockEngine)
{
    const struct {
        const char* pattern;
        std::size_t groups;
    } rows[] = {
        {"^((a|ab)(c|bc)*){1,3}$", 4},
        {"^(?:(a{1,2})(b|c)?){2,3}c$", 3},
        {"^(?:(?:a|b){0,2}c){2}", 1},
        {"(?:(a*)(b{1,2})?){2,4}c", 3},
        {"^((?:(?:a?){2}b){1,2}c?){2,}$", 2},
        {"((?:a|aa){2,3}?b)+c", 2},
        {"(?:(?:a*b?)*c){2}", 1},
        {"(((a{2})*b)+c)*$", 4},
    };
    for (const auto& row : rows) {
        const Expression expression(row.pattern);
        for (const std::string& text : AllTexts(7)) {
            ASSERT_EQ(OurMatch(expression, row.groups, text), StockMatch(row.pattern, text)) << row.pattern << text;
        }
    }
}

}  // namespace
}  // namespace OrvPLC::Judge
