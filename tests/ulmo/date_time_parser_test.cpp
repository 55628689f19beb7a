#include <gtest/gtest.h>

#include <string>

#include "ulmo/date_time.h"
#include "ulmo/exception_history.h"
#include "ulmo/exceptions.h"

namespace {

using namespace Ulmo;

std::u16string Shown(const Platform::SystemTime& time)
{
    char16_t buffer[64];
    return {buffer, SystemTimeToStr(std::span<char16_t>(buffer), time, dtsmTechnical)};
}

// "code message" of the failure that a call raises, or "none".
template <class Call>
std::string FailureOf(Call call)
{
    try {
        call();
        return "none";
    } catch (const EUlmoDateTime& failure) {
        return std::to_string(failure.ErrorCode()) + ' ' + failure.what();
    }
}

TEST(DateTimeParser, ReadsDates)
{
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"2026/11/15 03:10:43,123", u"2026/11/15 03:10:43,123"},
        {u"  2026-1-5T3:1:4.5  ", u"2026/01/05 03:01:04,005"},
        {u"2024/02/29", u"2024/02/29 00:00:00,000"},
        {u"2000-02-29", u"2000/02/29 00:00:00,000"},
        {u"2024-02-01 ", u"2024/02/01 00:00:00,000"},
        {u"2024-02-01   7:05", u"2024/02/01 07:05:00,000"},
        {u"2024-02-01 07:05:59", u"2024/02/01 07:05:59,000"},
        {u"9999/12/31 23:59:59,999", u"9999/12/31 23:59:59,999"},
    };
    for (const auto& [text, shown] : cases) {
        EXPECT_EQ(Shown(StrToSystemTime(text)), shown);
        EXPECT_EQ(Shown(StrToSystemTime(std::string(text.begin(), text.end()))), shown);
    }
}

TEST(DateTimeParser, CountsWhatItUsed)
{
    const std::pair<std::u16string, std::size_t> cases[] = {
        {u"2026/11/15 03:10:43,123 GMT+01:00", 23},
        {u" 2026/11/15", 11},
        {u"2026/11/15  GMT", 12},
        {u"2026/11/15 03:10xyz", 16},
        {u"2026/11/15 3:1:2,1234", 20},
    };
    for (const auto& [text, length] : cases) {
        std::size_t used = 0;
        StrToSystemTime(text, &used);
        EXPECT_EQ(used, length);
    }
}

TEST(DateTimeParser, NamesTheFirstFault)
{
    const std::string range = " part in date/time string. Expected a number from ";
    const std::pair<std::u16string, std::string> cases[] = {
        {u"", "3 Invalid year" + range + "1601 to 9999."},
        {u"1600/01/01", "3 Invalid year" + range + "1601 to 9999."},
        {u"12:00", "3 Invalid year" + range + "1601 to 9999."},
        {u"20245/01/01", "10 '/' or '-' expected."},
        {u"2024.01.01", "10 '/' or '-' expected."},
        {u"2024/13/01", "4 Invalid month" + range + "1 to 12."},
        {u"2024/0/01", "4 Invalid month" + range + "1 to 12."},
        {u"2024/02-01", "10 '/' expected."},
        {u"2024-02/01", "10 '-' expected."},
        {u"2024-02", "10 '-' expected."},
        {u"2023/02/29", "5 Invalid day" + range + "1 to 28."},
        {u"1900/02/29", "5 Invalid day" + range + "1 to 28."},
        {u"2024/04/31", "5 Invalid day" + range + "1 to 30."},
        {u"2024/02/01x", "10 ' ' or 'T' expected."},
        {u"2024/02/011", "10 ' ' or 'T' expected."},
        {u"2024-02-01T", "14 Time expected after T separator."},
        {u"2024-02-01T 10:00", "14 Time expected after T separator."},
        {u"2024-02-01 24:00", "6 Invalid hour" + range + "0 to 23."},
        {u"2024-02-01 010:00", "10 ':' expected."},
        {u"2024-02-01 10:60", "7 Invalid minute" + range + "0 to 59."},
        {u"2024-02-01 10:00:60", "8 Invalid second" + range + "0 to 59."},
        {u"2024-02-01 10:00:", "8 Invalid second" + range + "0 to 59."},
        {u"2024-02-01 10:00:00,", "9 Invalid millisecond" + range + "0 to 999."},
        {u"2024-02-01 x", "12 End of date/time string or \"Hour\" expected."},
        {u"2024-02-01 10:000", "12 End of date/time string or \":Seconds\" expected."},
        {u"2024-02-01 10:00:000", "12 End of date/time string or \",Milliseconds or .Milliseconds\" expected."},
        {u"2024-02-01 10:00:00.1234", "12 End of date/time string expected."},
    };
    for (const auto& [text, failure] : cases) {
        EXPECT_EQ(FailureOf([&text = text] { StrToSystemTime(text); }), failure);
    }
}

TEST(DateTimeParser, ReadsBiases)
{
    const std::string hour = "6 Invalid hour part in date/time string. Expected a number from 0 to 14.";
    const std::pair<std::u16string, std::int16_t> good[] = {
        {u"+01:00", -60},  {u" gmt + 1", -60}, {u"UTC-05:30", 330},  {u"Z", 0},       {u" z ", 0},    {u"0", 0},
        {u"+14:00", -840}, {u"-14:59", 899},   {u"GMT+01:30 ", -30}, {u"5:45", -255}, {u"-0:30", 30},
    };
    for (const auto& [text, bias] : good) EXPECT_EQ(StrToBias(text), bias);
    const std::pair<std::u16string, std::string> bad[] = {
        {u"", hour},
        {u"GMT", hour},
        {u"+15:00", hour},
        {u"GMTZ", hour},
        {u"+-1", hour},
        {u"+1:60", "7 Invalid minute part in date/time string. Expected a number from 0 to 59."},
        {u"Z+1", "12 End of date/time string expected."},
        {u"+01:000", "12 End of date/time string expected."},
        {u"+001", "12 End of date/time string expected."},
    };
    for (const auto& [text, failure] : bad) EXPECT_EQ(FailureOf([&text = text] { StrToBias(text); }), failure);
}

TEST(DateTimeParser, ReadsValuesBack)
{
    constexpr std::int16_t kBiases[] = {0, -60, 300, 899, -840};
    for (const std::int16_t bias : kBiases) {
        const TUlmoDateTime value = MakeDateTime(13439182243123, bias);
        DateText buffer;
        EXPECT_EQ(FromText(ToText(value, buffer)).value, value.value) << bias;
        EXPECT_EQ(FromText(ToIsoText(value, buffer)).value, value.value) << bias;
    }
    EXPECT_EQ(FromText(u"1601/01/01 00:00:00,000 GMT+00:00").value, 0U);
    EXPECT_EQ(FromText("1601/01/01 00:00:00,001 Z").value, 1U);
    DateText buffer;
    const TUlmoDateTime halfHour = FromText(ToText(MakeDateTime(13439182243123, -90), buffer));
    EXPECT_EQ(Bias(halfHour), -30);  // the minutes count against the hours, on purpose
    EXPECT_EQ(UtcMilliseconds(halfHour), 13439182243123U + 60 * 60000);
    EXPECT_EQ(FailureOf([] { FromText(u"1601/01/01 00:00:00,000 GMT+01:00"); }),
              "13 SetUTCMilliseconds(): Internal milliseconds underflow. A year below 1601 is not supported.");
    EXPECT_EQ(FailureOf([] { FromText(u"2024/02/01 10:00"); }),
              "6 Invalid hour part in date/time string. Expected a number from 0 to 14.");
}

TEST(DateTimeParser, AsksWithoutRaising)
{
    ExceptionHistory::End();
    ExceptionHistory::Start();
    for (const char16_t* text : {u"", u"no date", u"2024-02-01T", u"2024/02/01 10:00", u"1601/01/01 00:00 +1"}) {
        EXPECT_FALSE(TryFromText(text).has_value());
    }
    EXPECT_EQ(TryFromText(u"1601/01/01 01:00 +1")->value, MakeDateTime(0, -60).value);
    EXPECT_TRUE(ExceptionHistory::Snapshot().empty());
}

}  // namespace
