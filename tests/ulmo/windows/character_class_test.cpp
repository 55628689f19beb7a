#include "ulmo/character_class.h"

#include <gtest/gtest.h>

#include <locale>

namespace Ulmo {
namespace {

// As the pattern engine asks where it is left to itself.
unsigned SystemClass(wchar_t unit)
{
    using Mask = std::ctype_base;
    const auto& facet = std::use_facet<std::ctype<wchar_t>>(std::locale::classic());
    return (facet.is(Mask::alpha, unit) ? kAlpha | kWord : 0u) | (facet.is(Mask::digit, unit) ? kDigit | kWord : 0u) |
           (facet.is(Mask::space, unit) ? kSpace + 0u : 0u) | (unit == L'_' ? kWord + 0u : 0u);
}

TEST(CharacterClass, AsTheSystemHasIt)
{
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        EXPECT_EQ(CharacterClass(static_cast<char16_t>(unit)), SystemClass(static_cast<wchar_t>(unit)))
            << std::hex << unit;
    }
}

}  // namespace
}  // namespace Ulmo
