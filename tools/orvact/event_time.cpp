#include "event_time.h"

#include <chrono>
#include <cstdio>

#include "whole_number.h"

namespace {

// Z, or hours and minutes east of Greenwich: +02:00, +0200 or +02. Taken off the text.
bool TakeOffset(std::string_view& text, std::int64_t& minutes)
{
    minutes = 0;
    if (text.ends_with('Z') || text.ends_with('z')) {
        text.remove_suffix(1);
        return true;
    }
    const std::size_t sign = text.find_first_of("+-");
    if (sign == std::string_view::npos) return true;
    std::string digits(text.substr(sign + 1));
    // All three spellings become four digits.
    if (digits.size() == 5 && digits[2] == ':') digits.erase(2, 1);
    if (digits.size() == 2) digits += "00";
    std::uint32_t number = 0;
    if (digits.size() != 4 || !ParseWhole(digits, number) || number / 100 > 14 || number % 100 > 59) return false;
    minutes = (text[sign] == '-' ? -1 : 1) * static_cast<std::int64_t>(number / 100 * 60 + number % 100);
    text = text.substr(0, sign);
    return true;
}

}  // namespace

orv::TimePoint TimeAt(std::int64_t milliseconds)
{
    return orv::TimePoint(std::chrono::milliseconds(milliseconds));
}

bool ParseTime(const std::string& text, orv::TimePoint& time)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned clock[4] = {};
    int end = 0;
    if (std::sscanf(text.c_str(), "%4d-%2u-%2u%n", &year, &month, &day, &end) != 3) return false;
    std::string_view rest = std::string_view(text).substr(static_cast<std::size_t>(end));
    std::int64_t offset = 0;
    if (!TakeOffset(rest, offset)) return false;
    const char separators[] = {'T', ':', ':', '.'};
    for (int i = 0; i < 4 && !rest.empty(); ++i) {
        const std::string_view digits = rest.substr(1, i == 3 ? 3 : 2);
        const bool separated = rest[0] == separators[i] || (i == 0 && (rest[0] == ' ' || rest[0] == 't'));
        if (!separated || digits.size() != (i == 3 ? 3u : 2u) || !ParseWhole(digits, clock[i])) return false;
        rest.remove_prefix(1 + digits.size());
    }
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!rest.empty() || !date.ok() || clock[0] > 23 || clock[1] > 59 || clock[2] > 59) return false;
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    const std::int64_t minutes = (days * 24 + clock[0]) * 60 + clock[1] - offset;
    time = TimeAt((minutes * 60 + clock[2]) * 1000 + clock[3]);
    return true;
}

bool ParseAge(std::string_view text, std::int64_t& milliseconds)
{
    constexpr std::string_view kUnits = "smhdw";
    constexpr std::int64_t kLengths[] = {1000, 60'000, 3'600'000, 86'400'000, 604'800'000};
    const std::size_t unit = text.empty() ? std::string_view::npos : kUnits.find(text.back());
    std::uint32_t number = 0;
    if (unit == std::string_view::npos || !ParseWhole(text.substr(0, text.size() - 1), number)) return false;
    milliseconds = number * kLengths[unit];
    return true;
}
