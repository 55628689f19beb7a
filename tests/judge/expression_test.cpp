#include "judge/expression.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace OrvPLC::Judge
