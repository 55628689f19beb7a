#include <gtest/gtest.h>

#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"

namespace {

using namespace Ulmo;
using Platform::SystemTime;
using Platform::TimeZone;

constexpr SystemTime Rule(std::uint16_t month, std::uint16_t week, std::uint16_t dayOfWeek, std::uint16_t hour)
{
    return {0, month, dayOfWeek, week, hour, 0, 0, 0};
}

const TimeZone kBerlin = {-60, Rule(10, 5, 0, 3), 0, Rule(3, 5, 0, 2), -60};
const TimeZone kAuckland = {-720, Rule(4, 1, 0, 3), 0, Rule(9, 5, 0, 2), -60};
const TimeZone kDublin = {-60, Rule(3, 5, 0, 1), 0, Rule(10, 5, 0, 2), 60};  // "daylight saving" is in winter

std::uint64_t Utc(const char* text)
{
    return UtcMilliseconds(FromText(std::string(text) + " Z"));
}

TEST(ZoneTransitions, FindTheBiasAroundEachChange)
{
    struct Case {
        const TimeZone& zone;
        const char* utc;
        std::int16_t bias;
    };
    const Case cases[] = {
        {kBerlin, "2026/01/01 00:00", -60},
        {kBerlin, "2026/03/29 00:59:59,999", -60},
        {kBerlin, "2026/03/29 01:00", -120},
        {kBerlin, "2026/10/25 00:59:59,999", -120},
        {kBerlin, "2026/10/25 01:00", -60},
        {kBerlin, "2027/03/28 01:00", -120},  // another year than the cached one
        {kAuckland, "2026/01/01 00:00", -780},
        {kAuckland, "2026/04/04 13:59:59,999", -780},
        {kAuckland, "2026/04/04 14:00", -720},
        {kAuckland, "2026/09/26 13:59:59,999", -720},
        {kAuckland, "2026/09/26 14:00", -780},
        {kDublin, "2026/01/01 00:00", 0},
        {kDublin, "2026/03/29 00:59:59,999", 0},
        {kDublin, "2026/03/29 01:00", -60},
        {kDublin, "2026/10/25 01:00", 0},
    };
    for (const Case& test : cases) EXPECT_EQ(BiasAt(Utc(test.utc), test.zone), test.bias) << test.utc;
}

TEST(ZoneTransitions, CountWeeksOfTheMonth)
{
    struct Case {
        SystemTime rule;
        const char* date;
    };
    const Case cases[] = {
        {Rule(2, 5, 0, 0), "2026/02/22"},  // a February of four weeks: its fifth Sunday is the fourth
        {Rule(3, 5, 0, 0), "2026/03/29"},  // what differs in one field alone is another rule
        {Rule(3, 5, 2, 0), "2026/03/31"},
        {Rule(3, 1, 0, 0), "2026/03/01"},
        {Rule(3, 1, 6, 0), "2026/03/07"},
        {Rule(3, 4, 6, 0), "2026/03/28"},
        {Rule(3, 4, 6, 7), "2026/03/28 07:00"},
        {{0, 3, 6, 4, 7, 8, 0, 0}, "2026/03/28 07:08"},
        {{0, 3, 6, 4, 7, 8, 9, 0}, "2026/03/28 07:08:09"},
        {{0, 3, 6, 4, 7, 8, 9, 1}, "2026/03/28 07:08:09,001"},
        {{2026, 3, 6, 4, 7, 8, 9, 1}, "2026/03/04 07:08:09,001"},
    };
    for (const Case& test : cases) {
        const TimeZone zone = {0, test.rule, 0, test.rule, 0};
        const auto transitions = ZoneTransitions(Utc("2026/07/01"), zone);
        ASSERT_TRUE(transitions.has_value());
        EXPECT_EQ(transitions->daylight, static_cast<std::int64_t>(Utc(test.date))) << test.date;
    }
    EXPECT_FALSE(ZoneTransitions(0, {-60, {}, 0, Rule(3, 5, 0, 2), -60}).has_value());
    EXPECT_FALSE(ZoneTransitions(0, {-60, Rule(3, 5, 0, 2), 0, {}, -60}).has_value());
    EXPECT_EQ(BiasAt(0, {-60, {}, -30, {}, -60}), -60);
}

TEST(ZoneTransitions, RefuseRulesThatCannotBe)
{
    const char* notValid = "Transition date of time zone is not valid.";
    struct Case {
        SystemTime rule;
        const char* message;
    };
    const Case cases[] = {
        {Rule(13, 1, 0, 0), notValid},
        {Rule(3, 0, 0, 0), notValid},
        {Rule(3, 6, 0, 0), notValid},
        {Rule(3, 1, 7, 0), notValid},
        {{2025, 3, 0, 1, 0, 0, 0, 0}, "Transition date error in absolute format. Year not equal."},
    };
    for (const Case& test : cases) {
        try {
            ZoneTransitions(Utc("2026/07/01"), {0, Rule(10, 5, 0, 3), 0, test.rule, -60});
            ADD_FAILURE() << test.message;
        } catch (const EUlmoDateTime& failure) {
            EXPECT_STREQ(failure.what(), test.message);
            EXPECT_EQ(failure.ErrorCode(), 1U);
        }
    }
    const TimeZone noSuchHour = {0, Rule(10, 5, 0, 3), 0, Rule(3, 5, 0, 24), -60};
    EXPECT_THROW(ZoneTransitions(Utc("2026/07/01"), noSuchHour), SystemException);
}

// The year is found by counting centuries; its first and last instants show a slip of a day.
TEST(ZoneTransitions, KnowTheYearAtItsEnds)
{
    constexpr std::uint16_t kYears[] = {1601, 1700, 1900, 2000, 2001, 2024, 2100, 2400, 9999};
    for (const std::uint16_t year : kYears) {
        const TimeZone zone = {0, Rule(12, 1, 0, 0), 0, {year, 6, 0, 1, 0, 0, 0, 0}, -60};
        const std::string text = std::to_string(year);
        EXPECT_NO_THROW(ZoneTransitions(Utc((text + "/01/01").c_str()), zone)) << year;
        EXPECT_NO_THROW(ZoneTransitions(Utc((text + "/12/31 23:59:59,999").c_str()), zone)) << year;
    }
    EXPECT_THROW(ZoneTransitions(std::uint64_t{30000} * 366 * 86400000, kBerlin), EUlmoDateTime);
    EXPECT_THROW(ZoneTransitions(~std::uint64_t{0}, kBerlin), EUlmoDateTime);
}

TEST(Now, IsThePresentUnderTheLocalRule)
{
    const auto nearest = [] { return (Platform::NowAsFileTime() + 5000) / 10000; };
    TUlmoDateTime now;
    for (int i = 0; i < 30000; ++i) {  // some milliseconds, so that each part of one is met
        const std::uint64_t before = nearest();
        now = Now();
        const std::uint64_t after = nearest();
        ASSERT_LE(before, UtcMilliseconds(now));
        ASSERT_GE(after, UtcMilliseconds(now));
    }
    TimeZone zone;
    ASSERT_TRUE(Platform::GetLocalTimeZone(zone));
    EXPECT_EQ(Bias(now), BiasAt(UtcMilliseconds(now), zone));
}

}  // namespace
