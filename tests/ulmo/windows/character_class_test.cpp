#include "ulmo/character_class.h"

#include <gtest/gtest.h>

#include "platform/windows/windows_api.h"

namespace Ulmo {
namespace {

// As the pattern engine asks on Windows.
unsigned SystemClass(char16_t unit)
{
    WORD type = 0;
    if (!GetStringTypeExW(GetUserDefaultLCID(), CT_CTYPE1, Platform::AsWide(&unit), 1, &type)) return 0;
    return ((type & C1_ALPHA) != 0 ? kAlpha | kWord : 0u) | ((type & C1_DIGIT) != 0 ? kDigit | kWord : 0u) |
           ((type & C1_SPACE) != 0 ? kSpace + 0u : 0u) | (unit == u'_' ? kWord + 0u : 0u);
}

TEST(CharacterClass, AsTheSystemHasIt)
{
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t character = static_cast<char16_t>(unit);
        EXPECT_EQ(CharacterClass(character), SystemClass(character)) << std::hex << unit;
    }
}

}  // namespace
}  // namespace Ulmo
