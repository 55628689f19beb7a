#include "platform/calendar.h"

#include <gtest/gtest.h>

#include "platform/system_error.h"

namespace {

using Platform::SystemTime;

constexpr std::uint64_t kTicksPerDay = 864000000000;

// The calendar as one would count it on a wall: a day at a time.
void NextDay(SystemTime& date)
{
    const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    date.dayOfWeek = static_cast<std::uint16_t>((date.dayOfWeek + 1) % 7);
    if (++date.day <= lengths[date.month - 1]) return;
    date.day = 1;
    if (++date.month <= 12) return;
    date.month = 1;
    ++date.year;
}

bool Same(const SystemTime& a, const SystemTime& b)
{
    return a.year == b.year && a.month == b.month && a.day == b.day && a.dayOfWeek == b.dayOfWeek && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second && a.milliseconds == b.milliseconds;
}

TEST(Calendar, AgreesWithCountingDays)
{
    SystemTime expected{1601, 1, 1, 1, 0, 0, 0, 0};
    for (std::uint64_t ticks = 0; expected.year < 2410; ticks += kTicksPerDay, NextDay(expected)) {
        SystemTime time;
        std::uint64_t back = 1;
        ASSERT_TRUE(Platform::FileTimeToSystemTime(ticks, time));
        ASSERT_TRUE(Same(time, expected)) << expected.year << '-' << expected.month << '-' << expected.day;
        ASSERT_TRUE(Platform::SystemTimeToFileTime(time, back));
        ASSERT_EQ(back, ticks);
    }
}

TEST(Calendar, KnowsKnownInstants)
{
    struct Case {
        std::uint64_t ticks;
        SystemTime time;
    };
    const Case cases[] = {
        {116444736000000000, {1970, 1, 4, 1, 0, 0, 0, 0}},
        {116444735999990000, {1969, 12, 3, 31, 23, 59, 59, 999}},
        {133536023453450000, {2024, 2, 3, 28, 13, 59, 5, 345}},
        {0x7FFFFFFFFFFFFFFF, {30828, 9, 4, 14, 2, 48, 5, 477}},  // a part of a millisecond is cut off
    };
    for (const Case& test : cases) {
        SystemTime time;
        ASSERT_TRUE(Platform::FileTimeToSystemTime(test.ticks, time));
        EXPECT_TRUE(Same(time, test.time)) << test.ticks;
    }
}

TEST(Calendar, RefusesWhatDoesNotExist)
{
    const SystemTime cases[] = {
        {1600, 12, 0, 31, 0, 0, 0, 0}, {2023, 2, 0, 30, 0, 0, 0, 0},   {2024, 2, 0, 30, 0, 0, 0, 0},
        {2024, 0, 0, 1, 0, 0, 0, 0},   {2024, 13, 0, 1, 0, 0, 0, 0},   {2024, 1, 0, 0, 0, 0, 0, 0},
        {2024, 4, 0, 31, 0, 0, 0, 0},  {2024, 1, 0, 1, 24, 0, 0, 0},   {2024, 1, 0, 1, 0, 60, 0, 0},
        {2024, 1, 0, 1, 0, 0, 60, 0},  {2024, 1, 0, 1, 0, 0, 0, 1000},
    };
    for (const SystemTime& time : cases) {
        std::uint64_t ticks = 7;
        Platform::SetLastError(0);
        EXPECT_FALSE(Platform::SystemTimeToFileTime(time, ticks)) << time.year << '-' << time.month << '-' << time.day;
        EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
        EXPECT_EQ(ticks, 7U);
    }
    SystemTime time;
    Platform::SetLastError(0);
    EXPECT_FALSE(Platform::FileTimeToSystemTime(1ULL << 63, time));
    EXPECT_EQ(Platform::LastError(), Platform::kInvalidParameter);
    EXPECT_EQ(time.year, 0);
}

TEST(Calendar, TheClockRunsInThisCentury)
{
    SystemTime now;
    ASSERT_TRUE(Platform::FileTimeToSystemTime(Platform::NowAsFileTime(), now));
    EXPECT_EQ(now.year / 100, 20);
}

}  // namespace
