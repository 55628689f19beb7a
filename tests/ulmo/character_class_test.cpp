#include "ulmo/character_class.h"

#include <gtest/gtest.h>

namespace Ulmo {
namespace {

static_assert(IsAlpha(u'z') && IsWord(u'_') && !IsAlnum(u'_') && IsSpace(u'\v') && !IsSpace(u'\0') && !IsDigit(u'A'));

TEST(CharacterClass, NumberOfUnits)
{
    unsigned letters = 0, digits = 0, alnums = 0, blanks = 0, words = 0;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t character = static_cast<char16_t>(unit);
        letters += IsAlpha(character);
        digits += IsDigit(character);
        alnums += IsAlnum(character);
        blanks += IsSpace(character);
        words += IsWord(character);
    }
    EXPECT_EQ(letters, 49027u);
    EXPECT_EQ(digits, 373u);
    EXPECT_EQ(alnums, 49400u);
    EXPECT_EQ(blanks, 24u);
    EXPECT_EQ(words, 49401u);
}

// The fast path and the table behind it are two answers to one question.
TEST(CharacterClass, AsciiStandsInTheTableAsWell)
{
    for (char16_t unit = 0; unit < Detail::kAsciiUnits; ++unit) {
        EXPECT_EQ(Detail::TableClass(unit), CharacterClass(unit)) << static_cast<unsigned>(unit);
    }
}

TEST(CharacterClass, UnitsWhoseClassSurprises)
{
    const struct {
        char16_t unit;
        unsigned classes;
    } rows[] = {
        {u'\u0085', 0},        {u'\u00a0', kSpace},   {u'\u2007', kSpace},         {u'\u202f', kSpace},
        {u'\u200b', 0},        {u'\ufeff', 0},        {u'\u00b2', kDigit | kWord}, {u'\u0663', kDigit | kWord},
        {u'\u00aa', 0},        {u'\u00b5', 0},        {u'\u0431', kAlpha | kWord}, {u'\u203f', 0},
        {char16_t{0xD83D}, 0}, {char16_t{0xDE00}, 0}, {char16_t{0xFFFF}, 0},
    };
    for (const auto& [unit, classes] : rows) {
        EXPECT_EQ(CharacterClass(unit), classes) << std::hex << static_cast<unsigned>(unit);
    }
}

}  // namespace
}  // namespace Ulmo
