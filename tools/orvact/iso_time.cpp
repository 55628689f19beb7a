#include "iso_time.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

std::optional<orv::DateTime> DateFromIso(const std::string& text)
{
    using namespace std::chrono;
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0, ms = 0, end = 0;
    if (std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d.%3d%n", &y, &mo, &d, &h, &mi, &s, &ms, &end) != 7) {
        return std::nullopt;
    }
    const std::string zone = text.substr(static_cast<std::size_t>(end));
    int hours = 0, minutes_ = 0;
    char sign = '+';
    if (zone != "Z" && std::sscanf(zone.c_str(), "%c%2d:%2d", &sign, &hours, &minutes_) != 3) return std::nullopt;
    const year_month_day date{year(y), month(static_cast<unsigned>(mo)), day(static_cast<unsigned>(d))};
    if (!date.ok() || (sign != '+' && sign != '-')) return std::nullopt;
    const minutes east(zone == "Z" ? 0 : (sign == '-' ? -1 : 1) * (hours * 60 + minutes_));
    const sys_time<milliseconds> local =
        sys_days(date) + std::chrono::hours(h) + minutes(mi) + seconds(s) + milliseconds(ms);
    return orv::ToDateTime(orv::TimePoint((local - east).time_since_epoch()), -east);
}

std::string ClockText(orv::TimePoint time)
{
    using namespace std::chrono;
    const year_month_day date(floor<days>(time));
    const hh_mm_ss clock(time - floor<days>(time));
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

std::string IsoText(orv::DateTime date)
{
    // Read by hand, since the library writes no text for a date before 1601.
    const int bias = static_cast<std::int16_t>(date.value >> 48);
    const std::string clock = ClockText(orv::ToTimePoint(date) - std::chrono::minutes(bias));
    if (bias == 0) return clock + "Z";
    char zone[40];
    std::snprintf(zone, sizeof zone, "%c%02d:%02d", bias < 0 ? '+' : '-', std::abs(bias) / 60, std::abs(bias) % 60);
    return clock + zone;
}
