// Calendar arithmetic, the clock, the time zone and dates in the user's language.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace Platform {

// A broken-down time with the fields and ranges of SYSTEMTIME: month 1 to 12, weekday 0 for Sunday.
struct SystemTime {
    std::uint16_t year = 0;
    std::uint16_t month = 0;
    std::uint16_t dayOfWeek = 0;
    std::uint16_t day = 0;
    std::uint16_t hour = 0;
    std::uint16_t minute = 0;
    std::uint16_t second = 0;
    std::uint16_t milliseconds = 0;
};

constexpr bool IsLeapYear(std::uint64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}
constexpr unsigned DaysInMonth(std::uint64_t year, unsigned month)
{
    if (month == 2) return IsLeapYear(year) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

// Ticks are 100 ns since 1601-01-01. False for ticks of 2^63 and above, and for a time that does not exist or lies
// outside the years 1601 to 30827; LastError() then says "invalid parameter" and the output is unchanged.
bool FileTimeToSystemTime(std::uint64_t ticks, SystemTime& time);
bool SystemTimeToFileTime(const SystemTime& time, std::uint64_t& ticks);  // does not look at dayOfWeek

std::uint64_t NowAsFileTime();

// The rule of the local zone. A month of 0 in either date means no daylight saving; a year of 0 in a date means the
// relative form: the day-th (5: last) dayOfWeek of the month. All biases in minutes, UTC = local + bias.
struct TimeZone {
    std::int32_t bias = 0;
    SystemTime standardDate;
    std::int32_t standardBias = 0;
    SystemTime daylightDate;
    std::int32_t daylightBias = 0;
};
bool GetLocalTimeZone(TimeZone& zone);

enum class DateStyle { Short, Long, Weekday };

// Writes the date or time in the user's language and a terminating zero. The result counts the units without the zero;
// 0 means failure, with the reason in LastError().
std::size_t FormatLocaleDate(const SystemTime& time, DateStyle style, std::span<char16_t> buffer);
std::size_t FormatLocaleTime(const SystemTime& time, bool withSeconds, std::span<char16_t> buffer);

}  // namespace Platform
