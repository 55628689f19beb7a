#include "platform/calendar.h"

#include <ctime>

#include "platform/system_error.h"

namespace Platform {

namespace {

constexpr std::uint64_t kTicksPerMillisecond = 10000;
constexpr std::uint64_t kMillisecondsPerDay = 86400000;
constexpr std::uint64_t kSecondsFrom1601To1970 = 11644473600;

// Days are counted within years that begin in March, so that the leap day comes last and month lengths follow a
// straight line: 153 days in five months. 1600-03-01 begins a cycle of 400 years.
constexpr std::uint32_t kFirstYear = 1600;
constexpr std::uint32_t kDaysFromMarch1600 = 306;
constexpr std::uint32_t kDaysPerCycle = 146097;
constexpr std::uint32_t kDaysPerCentury = 36524;
constexpr std::uint32_t kDaysPerFourYears = 1461;

// The answer of Windows to a time that it does not take.
bool Refuse()
{
    SetLastError(kInvalidParameter);
    return false;
}

void SetDate(SystemTime& time, std::uint32_t daysSince1601)
{
    const std::uint32_t days = daysSince1601 + kDaysFromMarch1600;
    const std::uint32_t cycle = days / kDaysPerCycle;
    const std::uint32_t day = days % kDaysPerCycle;
    // The corrections take out the leap days that the division by 365 would count as days of a year.
    const std::uint32_t year =
        (day - day / (kDaysPerFourYears - 1) + day / kDaysPerCentury - day / (kDaysPerCycle - 1)) / 365;
    const std::uint32_t dayOfYear = day - (365 * year + year / 4 - year / 100);
    const std::uint32_t month = (5 * dayOfYear + 2) / 153;  // 0 for March
    const bool nextYear = month >= 10;
    time.year = static_cast<std::uint16_t>(kFirstYear + 400 * cycle + year + (nextYear ? 1 : 0));
    time.month = static_cast<std::uint16_t>(nextYear ? month - 9 : month + 3);
    time.day = static_cast<std::uint16_t>(dayOfYear - (153 * month + 2) / 5 + 1);
    time.dayOfWeek = static_cast<std::uint16_t>((daysSince1601 + 1) % 7);  // 1601-01-01 was a Monday
}

std::uint32_t DaysSince1601(const SystemTime& time)
{
    const bool beforeMarch = time.month < 3;
    const std::uint32_t year = time.year - kFirstYear - (beforeMarch ? 1 : 0);
    const std::uint32_t month = beforeMarch ? time.month + 9U : time.month - 3U;
    const std::uint32_t dayOfYear = (153 * month + 2) / 5 + time.day - 1;
    return 365 * year + year / 4 - year / 100 + year / 400 + dayOfYear - kDaysFromMarch1600;
}

bool Exists(const SystemTime& time)
{
    return time.year >= 1601 && time.year <= 30827 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= DaysInMonth(time.year, time.month) && time.hour < 24 && time.minute < 60 && time.second < 60 &&
           time.milliseconds < 1000;
}

}  // namespace

bool FileTimeToSystemTime(std::uint64_t ticks, SystemTime& time)
{
    // As on Windows, which takes the ticks for a signed number.
    if (ticks >= 1ULL << 63) return Refuse();
    const std::uint64_t milliseconds = ticks / kTicksPerMillisecond;
    SetDate(time, static_cast<std::uint32_t>(milliseconds / kMillisecondsPerDay));
    const auto rest = static_cast<std::uint32_t>(milliseconds % kMillisecondsPerDay);
    time.hour = static_cast<std::uint16_t>(rest / 3600000);
    time.minute = static_cast<std::uint16_t>(rest / 60000 % 60);
    time.second = static_cast<std::uint16_t>(rest / 1000 % 60);
    time.milliseconds = static_cast<std::uint16_t>(rest % 1000);
    return true;
}

bool SystemTimeToFileTime(const SystemTime& time, std::uint64_t& ticks)
{
    if (!Exists(time)) return Refuse();
    const std::uint64_t hours = DaysSince1601(time) * std::uint64_t{24} + time.hour;
    const std::uint64_t milliseconds = ((hours * 60 + time.minute) * 60 + time.second) * 1000 + time.milliseconds;
    ticks = milliseconds * kTicksPerMillisecond;
    return true;
}

std::uint64_t NowAsFileTime()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return (static_cast<std::uint64_t>(now.tv_sec) + kSecondsFrom1601To1970) * 10000000 +
           static_cast<std::uint64_t>(now.tv_nsec) / 100;
}

}  // namespace Platform
