#include "ulmo/string_conversion.h"

#include <gtest/gtest.h>

#include <utility>

#include "ulmo/exceptions.h"

namespace {

// Every length around the blocks of the fast paths, with the odd character at every place.
constexpr std::size_t kLongest = 40;

TEST(StringConversion, ConvertsUtf8AtEveryPlace)
{
    for (std::size_t length = 0; length != kLongest; ++length) {
        std::u16string wide(length, u'a');
        EXPECT_EQ(Ulmo::Utf8FromWide(wide), std::string(length, 'a'));
        EXPECT_EQ(Ulmo::WideFromUtf8(std::string(length, 'a')), wide);
        for (std::size_t place = 0; place != length; ++place) {
            std::u16string odd = wide;
            odd[place] = u'\u00FF';
            const std::string narrow = std::string(place, 'a') + "\xC3\xBF" + std::string(length - place - 1, 'a');
            EXPECT_EQ(Ulmo::Utf8FromWide(odd), narrow);
            EXPECT_EQ(Ulmo::WideFromUtf8(narrow), odd);
        }
    }
    // On both sides of where two units begin.
    EXPECT_EQ(Ulmo::WideFromUtf8({"\xEF\xBF\xBF\0\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", 12}),
              std::u16string_view(u"\uFFFF\0\U00010000\U0010FFFF", 6));
    // The size alone decides: the text is not looked at.
    EXPECT_THROW(Ulmo::Utf8FromWide({u"", 715827883}), Ulmo::SystemException);
    EXPECT_EQ(Ulmo::WideFromAnsi("plain"), u"plain");
    EXPECT_EQ(Ulmo::AnsiFromWide(u"plain"), "plain");
}

TEST(StringConversion, LowersAtEveryPlace)
{
    constexpr std::pair<char16_t, char16_t> kCases[] = {
        {u'A', u'a'}, {u'Z', u'z'}, {u'\u00C4', u'\u00E4'}, {u'\u0416', u'\u0436'}};
    for (std::size_t length = 1; length != kLongest; ++length) {
        for (std::size_t place = 0; place != length; ++place) {
            for (const auto& [upper, lower] : kCases) {
                std::u16string text(length, u'x');
                std::u16string expected = text;
                text[place] = upper;
                expected[place] = lower;
                EXPECT_EQ(Ulmo::LowerCase(text), expected);
                EXPECT_FALSE(Ulmo::IsLowerCase(text));
                EXPECT_TRUE(Ulmo::IsLowerCase(expected));
                EXPECT_TRUE(Ulmo::EqualsLower(text, expected));
                expected[length - 1] = u'?';
                EXPECT_FALSE(Ulmo::EqualsLower(text, expected));
                EXPECT_FALSE(Ulmo::SameText(text, expected));
            }
        }
    }
    // The neighbours of the letters, and units whose high byte alone is set.
    EXPECT_EQ(Ulmo::LowerCase(u"@[`{@[`{\u4100\u5A00"), u"@[`{@[`{\u4100\u5A00");
    EXPECT_FALSE(Ulmo::EqualsLower(u"abc", u"ab"));
    EXPECT_FALSE(Ulmo::EqualsLower(u"abcdwxyz", std::u16string_view(u"wxyzabcdabcd").substr(4)));
    EXPECT_TRUE(Ulmo::EqualsLower(u"", u""));
    EXPECT_TRUE(Ulmo::IsLowerCase(u"\u0080"));
}

TEST(StringConversion, ComparesTextsExactly)
{
    EXPECT_TRUE(Ulmo::SameText(u"", {}));
    EXPECT_TRUE(Ulmo::SameText(u"Camera 7", std::u16string(u"Camera 7")));
    EXPECT_FALSE(Ulmo::SameText(u"Camera 7", u"camera 7"));
    EXPECT_FALSE(Ulmo::SameText(u"Camera 7", u"Camera 71"));
}

TEST(StringConversion, ClipsSizesForSystemCalls)
{
    EXPECT_EQ(Ulmo::ClipSizeT(0), 0);
    EXPECT_EQ(Ulmo::ClipSizeT(0x7FFFFFFF), 0x7FFFFFFF);
    EXPECT_EQ(Ulmo::ClipSizeT(std::size_t{1} << 32), -1);
    EXPECT_EQ(Ulmo::ClipSizeT((std::size_t{1} << 32) + 5), -1);
}

}  // namespace
