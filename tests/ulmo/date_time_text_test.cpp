#include <gtest/gtest.h>

#include "platform/system_error.h"
#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"

namespace {

using namespace Ulmo;
using Platform::SystemTime;

constexpr SystemTime kMoment{2026, 11, 0, 15, 3, 10, 43, 123};

std::u16string Text(const SystemTime& time, TUlmoDateTimeStrMode mode)
{
    DateText buffer;
    return {buffer, SystemTimeToStr(std::span<char16_t>(buffer), time, mode)};
}

TEST(DateTimeText, WritesEveryFixedForm)
{
    SystemTime wholeSecond = kMoment;
    wholeSecond.milliseconds = 0;
    SystemTime wholeMinute = wholeSecond;
    wholeMinute.second = 0;
    struct Case {
        SystemTime time;
        TUlmoDateTimeStrMode mode;
        std::u16string text;
    };
    const Case cases[] = {
        {kMoment, dtsmTechnical, u"2026/11/15 03:10:43,123"},
        {kMoment, dtsmDashes, u"2026-11-15 03:10:43.123"},
        {kMoment, dtsmIso, u"2026-11-15T03:10:43.123"},
        {kMoment, dtsmIso | dtsmDateOnly, u"2026-11-15"},
        {kMoment, dtsmTechnical | dtsmTimeOnly, u"03:10:43,123"},
        {kMoment, dtsmTechnical | dtsmNoSeconds, u"2026/11/15 03:10"},
        {kMoment, dtsmTechnical | dtsmNoMilliseconds, u"2026/11/15 03:10:43"},
        {kMoment, dtsmTechnical | dtsmShortenZeros, u"2026/11/15 03:10:43,123"},
        {wholeSecond, dtsmTechnical | dtsmShortenZeros, u"2026/11/15 03:10:43"},
        {wholeMinute, dtsmTechnical | dtsmShortenZeros, u"2026/11/15 03:10"},
        {wholeMinute, dtsmTechnical | dtsmShortenZeros | dtsmNoMilliseconds, u"2026/11/15 03:10"},
        {wholeSecond, dtsmTechnical | dtsmShortenZeros | dtsmNoSeconds, u"2026/11/15 03:10"},
        {kMoment, dtsmIso | dtsmQuotes | dtsmDateOnly, u"\"2026-11-15\""},
        {{10520, 7, 0, 5, 0, 0, 0, 7}, dtsmTechnical, u"10520/07/05 00:00:00,007"},
        {{65535, 65535, 0, 65535, 65535, 65535, 65535, 65535},
         dtsmDashes,
         u"65535-65535-65535 65535:65535:65535.65535"},
        {{10000, 999, 0, 1000, 9999, 100, 99, 1000}, dtsmDashes, u"10000-999-1000 9999:100:99.1000"},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(Text(test.time, test.mode), test.text);
        char narrow[64];
        const std::size_t length = SystemTimeToStr(std::span<char>(narrow), test.time, test.mode);
        EXPECT_EQ(std::u16string(narrow, narrow + length), test.text);
    }
}

TEST(DateTimeText, WritesTheUsersLanguage)
{
    EXPECT_NE(Text(kMoment, dtsmLocale | dtsmDateOnly).find(u"26"), std::u16string::npos);
    EXPECT_NE(Text(kMoment, dtsmLocale | dtsmDateOnly | dtsmLongDate).find(u"2026"), std::u16string::npos);
    EXPECT_EQ(Text(kMoment, dtsmLocale),
              Text(kMoment, dtsmLocale | dtsmDateOnly) + u" " + Text(kMoment, dtsmLocale | dtsmTimeOnly));
    EXPECT_NE(Text(kMoment, dtsmLocale | dtsmTimeOnly).find(u"43"), std::u16string::npos);
    EXPECT_EQ(Text(kMoment, dtsmLocale | dtsmTimeOnly | dtsmNoSeconds).find(u"43"), std::u16string::npos);
    EXPECT_EQ(Text(kMoment, dtsmLocale | dtsmDateOnly | dtsmWeekday).find(u"26"), std::u16string::npos);
    char narrow[100];
    EXPECT_EQ(SystemTimeToStr(std::span<char>(narrow), kMoment, dtsmLocale), Text(kMoment, dtsmLocale).size());
}

TEST(DateTimeText, RefusesUnknownModes)
{
    struct Case {
        TUlmoDateTimeStrMode mode;
        const char* message;
    };
    const Case cases[] = {
        {0x40000, "Invalid value of TUlmoDateTimeStrMode & dtsmFormatMask"},
        {0x40003, "Invalid value of TUlmoDateTimeStrMode & dtsmFormatMask"},
        {dtsmIso | 3, "Invalid value of TUlmoDateTimeStrMode & dtsmModeMask"},
        {dtsmLocale | 0xFF, "Invalid value of TUlmoDateTimeStrMode & dtsmModeMask"},
    };
    for (const Case& test : cases) {
        try {
            Text(kMoment, test.mode);
            ADD_FAILURE() << test.mode;
        } catch (const EUlmoDateTime& failure) {
            EXPECT_STREQ(failure.what(), test.message);
            EXPECT_EQ(failure.ErrorCode(), 2U);
            EXPECT_EQ(failure.ErrorClass(), 5U);
        }
    }
}

// The name of the call and the code that a buffer of the given size raises; " 0" when it suffices.
std::string FailureFor(std::size_t room, TUlmoDateTimeStrMode mode)
{
    char16_t buffer[64];
    try {
        SystemTimeToStr(std::span<char16_t>(buffer, room), kMoment, mode);
        return " 0";
    } catch (const SystemException& failure) {
        const std::string message = failure.what();
        return message.substr(message.rfind("] in ") + 5) + ' ' + std::to_string(failure.ErrorCode());
    }
}

TEST(DateTimeText, NamesTheCallThatRanOutOfRoom)
{
    EXPECT_EQ(FailureFor(0, dtsmTechnical), "Ulmo::CheckedStringCchPrintfEx 2147942487");
    EXPECT_EQ(FailureFor(0, dtsmTechnical | dtsmQuotes), "Ulmo::CheckedStringCchCopyEx 2147942487");
    EXPECT_EQ(FailureFor(10, dtsmTechnical), "Ulmo::CheckedStringCchPrintfEx 2147942522");
    EXPECT_EQ(FailureFor(11, dtsmTechnical), "Ulmo::CheckedStringCchCopyEx 2147942522");
    EXPECT_EQ(FailureFor(23, dtsmTechnical), "Ulmo::CheckedStringCchPrintfEx 2147942522");
    EXPECT_EQ(FailureFor(24, dtsmTechnical), " 0");
    EXPECT_EQ(FailureFor(0, dtsmLocale), "TUlmoDateTime::SystemTimeToStr::GetDateFormat 122");
    EXPECT_EQ(FailureFor(0, dtsmLocale | dtsmTimeOnly), "TUlmoDateTime::SystemTimeToStr::GetTimeFormat 122");
    const std::size_t date = Text(kMoment, dtsmLocale | dtsmDateOnly).size();
    EXPECT_EQ(FailureFor(date + 1, dtsmLocale), "TUlmoDateTime::SystemTimeToStr 2147942522");
    EXPECT_EQ(FailureFor(date + 2, dtsmLocale), "TUlmoDateTime::SystemTimeToStr::GetTimeFormat 122");
}

TEST(DateTimeText, WritesBiases)
{
    struct Case {
        std::int16_t bias;
        std::u16string_view prefix;
        std::u16string text;
    };
    const Case cases[] = {
        {0, u" GMT", u" GMT+00:00"},       {-60, u" GMT", u" GMT+01:00"},
        {1, u" GMT", u" GMT-00:01"},       {-90, u"", u"+01:30"},
        {0, kIsoBiasPrefix, u"Z"},         {300, kIsoBiasPrefix, u"-05:00"},
        {-345, kIsoBiasPrefix, u"+05:45"}, {-32768, {}, u"+546:08"},
    };
    for (const Case& test : cases) {
        char16_t buffer[20];
        EXPECT_EQ(std::u16string(buffer, BiasToStr(buffer, test.bias, test.prefix)), test.text);
        EXPECT_EQ(buffer[test.text.size()], u'\0');
    }
    char16_t small[10];
    EXPECT_THROW(BiasToStr(small, 0, u" GMT"), SystemException);
}

TEST(DateTimeText, WritesValues)
{
    struct Case {
        std::int64_t milliseconds;
        std::int16_t bias;
        std::u16string text;
        std::u16string iso;
    };
    const Case cases[] = {
        {13439182243123, -60, u"2026/11/15 03:10:43,123 GMT+01:00", u"2026-11-15T03:10:43.123+01:00"},
        {13439182243123, 0, u"2026/11/15 02:10:43,123 GMT+00:00", u"2026-11-15T02:10:43.123Z"},
        {0, 0, u"1601/01/01 00:00:00,000 GMT+00:00", u"1601-01-01T00:00:00.000Z"},
        {0, -90, u"1601/01/01 01:30:00,000 GMT+01:30", u"1601-01-01T01:30:00.000+01:30"},
        {0xFFFFFFFFFFFF, 0, u"10520/08/03 05:31:50,655 GMT+00:00", u"10520-08-03T05:31:50.655Z"},
    };
    for (const Case& test : cases) {
        DateText buffer;
        const TUlmoDateTime value = MakeDateTime(test.milliseconds, test.bias);
        EXPECT_EQ(UtcMilliseconds(value), static_cast<std::uint64_t>(test.milliseconds));
        EXPECT_EQ(Bias(value), test.bias);
        EXPECT_EQ(ToText(value, buffer), test.text);
        EXPECT_EQ(ToIsoText(value, buffer), test.iso);
    }
}

TEST(DateTimeText, RefusesInstantsOutOfRange)
{
    DateText buffer;
    EXPECT_THROW(ToText(MakeDateTime(0, 1), buffer), SystemException);  // the wall clock is in 1600
    const std::pair<std::int64_t, const char*> cases[] = {
        {-1, "SetUTCMilliseconds(): Internal milliseconds underflow. A year below 1601 is not supported."},
        {0x1000000000000, "SetUTCMilliseconds(): Internal milliseconds overflow."},
    };
    for (const auto& [milliseconds, message] : cases) {
        try {
            MakeDateTime(milliseconds, 0);
            ADD_FAILURE() << milliseconds;
        } catch (const EUlmoDateTime& failure) {
            EXPECT_STREQ(failure.what(), message);
            EXPECT_EQ(failure.ErrorCode(), 13U);
        }
    }
}

}  // namespace
