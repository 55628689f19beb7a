// Where our replacements follow the original and Wine does not, or what Windows settles by the system's code page, so
// that the shared tests cannot ask.
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <ratio>
#include <string_view>

#include "platform/calendar.h"
#include "platform/posix/codeset.h"
#include "platform/posix/utf8.h"
#include "platform/system_error.h"
#include "platform/text.h"

namespace {

TEST(PosixCalendar, RefusesTheLeapDayOfACommonYearAndTheYear30828)
{
    const Platform::SystemTime cases[] = {
        {2023, 2, 0, 29, 0, 0, 0, 0}, {1900, 2, 0, 29, 0, 0, 0, 0}, {30828, 1, 0, 1, 0, 0, 0, 0}};
    for (const Platform::SystemTime& time : cases) {
        std::uint64_t ticks = 0;
        Platform::SetLastError(0);
        EXPECT_FALSE(Platform::SystemTimeToFileTime(time, ticks)) << time.year;
        EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
    }
    std::uint64_t last = 0;
    EXPECT_TRUE(Platform::SystemTimeToFileTime({30827, 12, 0, 31, 23, 59, 59, 999}, last));
}

TEST(PosixCalendar, TheClockIsTheSystems)
{
    using Ticks = std::chrono::duration<std::uint64_t, std::ratio<1, 10000000>>;
    constexpr Ticks kUntil1970{116444736000000000};
    const auto now = [&] { return kUntil1970 + std::chrono::system_clock::now().time_since_epoch(); };
    const auto before = now();
    const Ticks told(Platform::NowAsFileTime());
    EXPECT_LE(before, told + Ticks(1));  // which has cut the rest off
    EXPECT_LE(told, now());
}

TEST(PosixLowering, LeavesCapitalsOutsideTheBasicPlane)
{
    std::u16string text = u"\xD801\xDC00 A";
    Platform::LowerInPlace(text.data(), text.size());
    EXPECT_EQ(text, u"\xD801\xDC00 a");
}

// Each byte that begins no sequence has a replacement of its own.
TEST(PosixUtf8, ReplacesEachMaximalPart)
{
    struct Case {
        std::string_view narrow;
        std::size_t replacements;
    };
    const Case cases[] = {{"\xED\xA0\x80", 3},
                          {"\xF4\x90\x80\x80", 4},
                          {"\xE0\x80\x80", 3},
                          {"\xF0\x80", 2},
                          {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF", 4}};
    for (const Case& test : cases) {
        char16_t wide[16] = {};
        const std::size_t length = Platform::DecodeUtf8(test.narrow, wide);
        EXPECT_EQ(std::u16string_view(wide, length), std::u16string(test.replacements, u'\xFFFD'));
    }
}

TEST(PosixCodesets, ReplaceWhatDoesNotConvert)
{
    struct Case {
        const char* codeset;
        std::string narrow;
        std::u16string wide;
        std::string back;
    };
    const Case cases[] = {
        {"ISO-8859-1", "\xC4rger", u"\u00C4rger", "\xC4rger"},
        {"CP1252", "\x80\x81z", u"\u20AC\uFFFDz", "\x80?z"},
        {"ISO-8859-15", "", u"", ""},
        {"TCVN5712-1", "a", u"a", "a"},  // a mark may follow, so iconv keeps the letter back
        {"EUC-JP", "a\xC6\xFC\xC6", u"a\u65E5\uFFFD", "a\xC6\xFC?"},  // ends inside a character
        {"CP1252", std::string(2000, '\xE4'), std::u16string(2000, u'\u00E4'), std::string(2000, '\xE4')},
    };
    for (const Case& test : cases) {
        std::u16string wide;
        std::string back;
        ASSERT_TRUE(Platform::CodesetToWide(test.codeset, test.narrow, wide));
        EXPECT_EQ(wide, test.wide) << test.codeset;
        ASSERT_TRUE(Platform::WideToCodeset(test.codeset, wide, back));
        EXPECT_EQ(back, test.back) << test.codeset;
    }
    std::string narrow;
    ASSERT_TRUE(Platform::WideToCodeset("ISO-8859-1", u"a\xD800\xDC00\xDBFF\xDFFF\xD800\uFF21\u4E00\xDC00z", narrow));
    EXPECT_EQ(narrow, "a??????z");  // one for each pair, one for each lone half and one for what is beside it
    EXPECT_FALSE(Platform::WideToCodeset("no such codeset", u"a", narrow));
    EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
    EXPECT_EQ(narrow, "");
    std::u16string wide = u"before";
    EXPECT_FALSE(Platform::CodesetToWide("no such codeset", "a", wide));
    EXPECT_EQ(wide, u"");
}

// A letter and its marks become the one character that the codeset has, and stay apart if it has none.
TEST(PosixCodesets, ComposeWhatTheyHave)
{
    const struct {
        const char* codeset;
        std::u16string_view wide;
        std::string_view narrow;
    } cases[] = {
        {"ISO-8859-1", u"A\u0308rger e\u0302\u0301 s\u0327", "\xC4rger \xEA? s?"},
        {"ISO-8859-9", u"s\u0327 \u0308a", "\xFE ?a"},
        {"ISO-8859-7", u"\u03B1\u0301\u03B9\u0308\u0301", "\xDC\xC0"},
        {"KOI8-R", u"\u0435\u0308", "\xA3"},
        {"ISO-8859-1", u"e\u0300", "\xE8"},
        {"EUC-JP", u"\u304B\u3099", "\xA4\xAC"},
    };
    for (const auto& c : cases) {
        std::string narrow;
        ASSERT_TRUE(Platform::WideToCodeset(c.codeset, c.wide, narrow));
        EXPECT_EQ(narrow, c.narrow) << c.codeset;
    }
}

// All values of errno, and none, but 87, whose number the library reports itself.
TEST(PosixErrors, HaveTheTextOfTheSystem)
{
    for (std::uint32_t code = 0; code < 134; ++code) {
        const char* text = strerrordesc_np(static_cast<int>(code));
        if (code == Platform::kInvalidParameter || !text) continue;
        EXPECT_EQ(Platform::SystemErrorText(code), std::u16string(text, text + std::strlen(text)));
    }
}

}  // namespace
