#include "platform/posix/time_zone_rule.h"

namespace Platform {

namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerDay = 24 * kSecondsPerHour;
constexpr int kDefaultChange = 2 * kSecondsPerHour;
constexpr std::string_view kDefaultDates = "M3.2.0,M11.1.0";  // what POSIX leaves open and every system assumes

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

class RuleScanner {
public:
    explicit RuleScanner(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    bool Take(char c)
    {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    // The abbreviation of a zone: letters, or any text in angle brackets.
    bool Name()
    {
        if (Take('<')) {
            const std::size_t end = rest_.find('>');
            if (end == std::string_view::npos) return false;
            rest_.remove_prefix(end + 1);
            return true;
        }
        std::size_t length = 0;
        while (length < rest_.size() && IsLetter(rest_[length])) ++length;
        rest_.remove_prefix(length);
        return length >= 3;
    }

    bool Number(int lowest, int highest, int& value)
    {
        if (rest_.empty() || !IsDigit(rest_.front())) return false;
        value = 0;
        for (; !rest_.empty() && IsDigit(rest_.front()) && value <= highest; rest_.remove_prefix(1)) {
            value = value * 10 + (rest_.front() - '0');
        }
        return value >= lowest && value <= highest;
    }

    // [+-]hh[:mm[:ss]] in seconds.
    bool Clock(int highestHour, int& seconds)
    {
        const bool negative = Take('-');
        if (!negative) Take('+');
        int hour = 0;
        int minute = 0;
        int second = 0;
        if (!Number(0, highestHour, hour)) return false;
        if (Take(':') && !Number(0, 59, minute)) return false;
        if (Take(':') && !Number(0, 59, second)) return false;
        seconds = hour * kSecondsPerHour + minute * 60 + second;
        if (negative) seconds = -seconds;
        return true;
    }

    bool IsOffset() const { return !rest_.empty() && rest_.front() != ','; }

private:
    std::string_view rest_;
};

void SetClock(SystemTime& time, int secondsOfDay)
{
    time.hour = static_cast<std::uint16_t>(secondsOfDay / kSecondsPerHour);
    time.minute = static_cast<std::uint16_t>(secondsOfDay / 60 % 60);
    time.second = static_cast<std::uint16_t>(secondsOfDay % 60);
}

constexpr std::int64_t kTicksPerSecond = 10000000;

// The ticks of the first day of a month, or 0 for a date that does not exist.
std::int64_t FirstOfMonth(std::uint16_t year, std::uint16_t month)
{
    SystemTime first;
    first.year = year;
    first.month = month;
    first.day = 1;
    std::uint64_t ticks = 0;
    SystemTimeToFileTime(first, ticks);
    return static_cast<std::int64_t>(ticks);
}

// False for a day or an instant that the calendar lacks.
bool SetAbsolute(SystemTime& date, std::int64_t dayTicks, int seconds)
{
    const std::int64_t ticks = dayTicks + seconds * kTicksPerSecond;
    return dayTicks != 0 && ticks >= 0 && FileTimeToSystemTime(static_cast<std::uint64_t>(ticks), date);
}

struct WeekRule {
    int month;
    int week;
    int dayOfWeek;
};

// The day of a month that a week rule means, from 0.
int DayOfMonth(const WeekRule& rule, std::uint16_t year)
{
    const auto month = static_cast<std::uint16_t>(rule.month);
    const std::int64_t first = FirstOfMonth(year, month);
    const std::int64_t next = month == 12 ? first + std::int64_t{31} * kSecondsPerDay * kTicksPerSecond
                                          : FirstOfMonth(year, static_cast<std::uint16_t>(month + 1));
    SystemTime time;
    FileTimeToSystemTime(static_cast<std::uint64_t>(first), time);
    const auto length = static_cast<int>((next - first) / kTicksPerSecond / kSecondsPerDay);
    int day = (rule.dayOfWeek - time.dayOfWeek + 7) % 7 + (rule.week - 1) * 7;
    // The fifth week means the last one that the month has.
    while (day >= length) day -= 7;
    return day;
}

// In the relative form where the clock time allows it, else as the date that it means in this year.
bool SetWeekRule(SystemTime& date, const WeekRule& rule, int seconds, std::uint16_t year)
{
    // The relative form has only clock times of its own day.
    if (seconds < 0 || seconds > kSecondsPerDay) {
        const std::int64_t first = FirstOfMonth(year, static_cast<std::uint16_t>(rule.month));
        const int day = DayOfMonth(rule, year);
        return SetAbsolute(date, first + std::int64_t{day} * kSecondsPerDay * kTicksPerSecond, seconds);
    }
    date.month = static_cast<std::uint16_t>(rule.month);
    date.day = static_cast<std::uint16_t>(rule.week);
    date.dayOfWeek = static_cast<std::uint16_t>(rule.dayOfWeek);
    const bool endOfDay = seconds == kSecondsPerDay;
    SetClock(date, endOfDay ? seconds - 1 : seconds);
    date.milliseconds = endOfDay ? 999 : 0;
    return true;
}

// A day of the year, from 0; `countsLeapDay` false leaves the 29th of February out of the count.
bool SetDayOfYear(SystemTime& date, int day, bool countsLeapDay, int seconds, std::uint16_t year)
{
    // Day 59 is the first of March where February has 28 days.
    if (!countsLeapDay && IsLeapYear(year) && day >= 59) ++day;
    return SetAbsolute(date, FirstOfMonth(year, 1) + std::int64_t{day} * kSecondsPerDay * kTicksPerSecond, seconds);
}

// Mm.w.d, Jn or n, each with an optional "/time".
bool ParseDate(RuleScanner& scanner, std::uint16_t year, SystemTime& date)
{
    WeekRule rule{};
    int day = 0;
    const bool week = scanner.Take('M');
    const bool julian = !week && scanner.Take('J');
    if (week) {
        if (!scanner.Number(1, 12, rule.month) || !scanner.Take('.') || !scanner.Number(1, 5, rule.week) ||
            !scanner.Take('.') || !scanner.Number(0, 6, rule.dayOfWeek)) {
            return false;
        }
    } else if (!scanner.Number(julian ? 1 : 0, 365, day)) {
        return false;
    }
    int seconds = kDefaultChange;
    if (scanner.Take('/') && !scanner.Clock(167, seconds)) return false;
    const bool set = week ? SetWeekRule(date, rule, seconds, year)
                          : SetDayOfYear(date, julian ? day - 1 : day, !julian, seconds, year);
    return set && (date.year == 0 || date.year == year);  // an absolute date of another year does not count
}

bool ParseDates(RuleScanner scanner, std::uint16_t year, TimeZone& zone)
{
    return ParseDate(scanner, year, zone.daylightDate) && scanner.Take(',') &&
           ParseDate(scanner, year, zone.standardDate) && scanner.AtEnd();
}

}  // namespace

std::optional<TimeZone> ParsePosixRule(std::string_view rule, std::uint16_t year)
{
    RuleScanner scanner(rule);
    TimeZone zone;
    int standard = 0;  // seconds, with the sign of a bias
    if (!scanner.Name() || !scanner.Clock(24, standard)) return std::nullopt;
    zone.bias = standard / 60;
    if (scanner.AtEnd()) return zone;
    int daylight = standard - kSecondsPerHour;
    if (!scanner.Name()) return std::nullopt;
    if (scanner.IsOffset() && !scanner.Clock(24, daylight)) return std::nullopt;
    zone.daylightBias = daylight / 60 - zone.bias;
    if (!scanner.AtEnd() && !scanner.Take(',')) return std::nullopt;
    if (!ParseDates(scanner.AtEnd() ? RuleScanner(kDefaultDates) : scanner, year, zone)) return std::nullopt;
    return zone;
}

}  // namespace Platform
