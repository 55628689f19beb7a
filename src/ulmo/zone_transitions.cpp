#include "ulmo/date_time.h"

#include <mutex>

#include "ulmo/date_fault.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

namespace {

using Platform::SystemTime;
using Platform::TimeZone;

constexpr std::int64_t kMillisecondsPerDay = 86400000;
constexpr std::int64_t kMillisecondsPerMinute = 60000;
constexpr std::uint64_t kTicksPerMillisecond = 10000;

std::uint16_t YearOf(std::uint64_t milliseconds)
{
    constexpr std::uint64_t kDaysPerCycle = 146097;
    constexpr std::uint64_t kDaysPerCentury = 36524;
    std::uint64_t days = milliseconds / kMillisecondsPerDay;
    std::uint64_t year = 1601 + days / kDaysPerCycle * 400;
    days %= kDaysPerCycle;
    const std::uint64_t century = days / kDaysPerCentury < 3 ? days / kDaysPerCentury : 3;  // the fourth has a day more
    year += century * 100;
    days -= century * kDaysPerCentury;
    // At most a hundred steps: the years before were counted as cycles and centuries.
    for (std::uint64_t length = 365; days >= length; length = Platform::IsLeapYear(year) ? 366 : 365) {
        days -= length;
        ++year;
    }
    if (year >= 30828) Raise({DateTimeError::Range, u"YearFromMilliseconds: Year/Century out of range."});
    return static_cast<std::uint16_t>(year);
}

std::int64_t ToMilliseconds(const SystemTime& time)
{
    std::uint64_t ticks = 0;
    if (!Platform::SystemTimeToFileTime(time, ticks)) ThrowLastError(u"Ulmo::SystemTimeToMilliseconds");
    return static_cast<std::int64_t>(ticks / kTicksPerMillisecond);
}

// The instant of a transition in a year, in local milliseconds since 1601.
std::int64_t SystemTimeToMilliseconds(std::uint16_t year, const SystemTime& transition)
{
    if (transition.year != 0) {
        if (transition.year != year) {
            Raise({DateTimeError::Transition, u"Transition date error in absolute format. Year not equal."});
        }
        return ToMilliseconds(transition);
    }
    const bool valid = transition.day >= 1 && transition.day <= 5 && transition.month >= 1 && transition.month <= 12 &&
                       transition.dayOfWeek < 7;
    if (!valid) Raise({DateTimeError::Transition, u"Transition date of time zone is not valid."});
    SystemTime first = transition;
    first.year = year;
    first.day = 1;
    const std::int64_t start = ToMilliseconds(first);
    const auto weekday = static_cast<int>((start / kMillisecondsPerDay + 1) % 7);  // 1601-01-01 was a Monday
    int days = (transition.dayOfWeek - weekday + 7) % 7 + (transition.day - 1) * 7;
    if (days >= static_cast<int>(Platform::DaysInMonth(year, transition.month))) days -= 7;  // week 5 is the last one
    return start + days * kMillisecondsPerDay;
}

bool SameDate(const SystemTime& a, const SystemTime& b)
{
    return a.year == b.year && a.month == b.month && a.dayOfWeek == b.dayOfWeek && a.day == b.day && a.hour == b.hour &&
           a.minute == b.minute && a.second == b.second && a.milliseconds == b.milliseconds;
}

// The transitions of the year that was asked for last: nearly every question is about the present.
struct TransitionCache {
    std::mutex section;
    std::uint16_t year = 0;
    SystemTime daylightDate;
    SystemTime standardDate;
    Transitions transitions{};
};

// Never destroyed, for threads that still write lines at process end.
TransitionCache& Cache()
{
    static TransitionCache& cache = *new TransitionCache;
    return cache;
}

}  // namespace

std::optional<Transitions> ZoneTransitions(std::uint64_t milliseconds, const TimeZone& zone)
{
    const std::uint16_t year = YearOf(milliseconds);
    if (zone.standardDate.month == 0 || zone.daylightDate.month == 0) return std::nullopt;
    TransitionCache& cache = Cache();
    const std::lock_guard<std::mutex> guard(cache.section);
    const bool known = cache.year == year && SameDate(cache.daylightDate, zone.daylightDate) &&
                       SameDate(cache.standardDate, zone.standardDate);
    if (!known) {
        // If this raises, the cache stays what it was.
        cache.transitions = {SystemTimeToMilliseconds(year, zone.daylightDate),
                             SystemTimeToMilliseconds(year, zone.standardDate)};
        cache.year = year;
        cache.daylightDate = zone.daylightDate;
        cache.standardDate = zone.standardDate;
    }
    return cache.transitions;
}

std::int16_t BiasAt(std::uint64_t utcMilliseconds, const TimeZone& zone)
{
    const std::optional<Transitions> transitions = ZoneTransitions(utcMilliseconds, zone);
    if (!transitions) return static_cast<std::int16_t>(zone.bias);
    const std::int32_t daylightBias = zone.bias + zone.daylightBias;
    const std::int32_t standardBias = zone.bias + zone.standardBias;
    const auto now = static_cast<std::int64_t>(utcMilliseconds);
    const bool endsLater = now - daylightBias * kMillisecondsPerMinute < transitions->standard;
    const bool hasBegun = now - standardBias * kMillisecondsPerMinute >= transitions->daylight;
    // South of the equator daylight saving spans the turn of the year.
    const bool southern = transitions->daylight >= transitions->standard;
    const bool daylight = southern ? endsLater || hasBegun : endsLater && hasBegun;
    return static_cast<std::int16_t>(daylight ? daylightBias : standardBias);
}

TUlmoDateTime Now()
{
    const std::uint64_t milliseconds = (Platform::NowAsFileTime() + kTicksPerMillisecond / 2) / kTicksPerMillisecond;
    TimeZone zone;
    const std::int16_t bias = Platform::GetLocalTimeZone(zone) ? BiasAt(milliseconds, zone) : std::int16_t{0};
    return MakeDateTime(static_cast<std::int64_t>(milliseconds), bias);
}

}  // namespace Ulmo
