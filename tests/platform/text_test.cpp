#include "platform/text.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Platform::CodePage;

TEST(Lowering, FollowsTheSimpleMappingOfTheSystem)
{
    struct Case {
        std::u16string text;
        std::u16string lower;
    };
    const Case cases[] = {
        {u"AZaz09[]@`{", u"azaz09[]@`{"},
        {u"\u00C4RGER \u00D6\u00DC\u00D7\u00DF", u"\u00E4rger \u00F6\u00FC\u00D7\u00DF"},
        {u"\u0391\u03A9\u03A3", u"\u03B1\u03C9\u03C3"},
        {u"\u0410\u042F\u0401", u"\u0430\u044F\u0451"},
        {u"\xD83D\xDE00 A\xD800", u"\xD83D\xDE00 a\xD800"},
        {u"\u0130\u212A\u2126\u1E9E\u01C5", u"\u0130\u212A\u2126\u1E9E\u01C5"},  // lower-case forms that lead elsewhere
        {u"\u2160\u24B6\uFF21", u"\u2170\u24D0\uFF41"},
    };
    for (const Case& test : cases) {
        std::u16string text = test.text;
        Platform::LowerInPlace(text.data(), text.size());
        EXPECT_EQ(text, test.lower);
    }
}

TEST(Lowering, ComparesWithoutRegardToCase)
{
    EXPECT_TRUE(Platform::EqualIgnoringCase(u"CameraOn", u"cAMERAoN"));
    EXPECT_TRUE(Platform::EqualIgnoringCase(u"\u00C4", u"\u00E4"));
    EXPECT_TRUE(Platform::EqualIgnoringCase(u"", u""));
    EXPECT_FALSE(Platform::EqualIgnoringCase(u"Camera", u"Cameras"));
    EXPECT_FALSE(Platform::EqualIgnoringCase(u"Camera1", u"Camera2"));
}

TEST(CodePages, ReadUtf8WithReplacements)
{
    struct Case {
        std::string narrow;
        std::u16string wide;
    };
    const Case cases[] = {
        {"", u""},
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
        {"\xC3\xA4\xE2\x82\xAC\xF0\x90\x80\x80", u"\u00E4\u20AC\xD800\xDC00"},
        {"\xF4\x8F\xBF\xBF", u"\xDBFF\xDFFF"},
        {"\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF", u"\u0080\u07FF\u0800\uFFFF"},
        {"\x80", u"\uFFFD"},
        {"\xC0\xAF", u"\uFFFD\uFFFD"},
        {"\xE2\x82", u"\uFFFD"},
        {"\xE2\x82"
         "A",
         u"\uFFFD"
         u"A"},
        {"\xF0\x9F\x98"
         "AB",
         u"\uFFFD"
         u"AB"},
        {std::string("a\x80\0z", 4), std::u16string(u"a\uFFFD\0z", 4)},
        {"\xF8\x88\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const Case& test : cases) {
        std::u16string wide = u"old";
        EXPECT_TRUE(Platform::ToWide(CodePage::Utf8, test.narrow, wide));
        EXPECT_EQ(wide, test.wide);
    }
}

TEST(CodePages, WriteUtf8WithReplacements)
{
    struct Case {
        std::u16string wide;
        std::string narrow;
    };
    const Case cases[] = {
        {u"", ""},
        {u"\u007F\u0080\u07FF\u0800\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
        {u"\xD800\xDC00\xDBFF\xDFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {u"\xD800", "\xEF\xBF\xBD"},
        {u"Сигнал от камеры", "Сигнал от камеры"},  // sixteen units whose bytes are all below 0x80
        {u"a\xDC00\xDFFFz", "a\xEF\xBF\xBD\xEF\xBF\xBDz"},
        {u"\xD83D\xD83D\xDE00", "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const Case& test : cases) {
        std::string narrow = "old";
        EXPECT_TRUE(Platform::ToNarrow(CodePage::Utf8, test.wide, narrow));
        EXPECT_EQ(narrow, test.narrow);
    }
}

TEST(CodePages, AnsiKeepsLatinLetters)
{
    std::string narrow;
    std::u16string wide;
    ASSERT_TRUE(Platform::ToNarrow(CodePage::Ansi, u"Stra\u00DFe", narrow));
    ASSERT_TRUE(Platform::ToWide(CodePage::Ansi, narrow, wide));
    EXPECT_EQ(wide, u"Stra\u00DFe");
}

}  // namespace
