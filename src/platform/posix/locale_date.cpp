#include "platform/calendar.h"

#include <langinfo.h>
#include <algorithm>
#include <ctime>
#include <string>

#include "platform/posix/time_pattern.h"
#include "platform/posix/user_locale.h"
#include "platform/system_error.h"
#include "platform/text.h"

namespace Platform {

namespace {

// A broken-down time for the C library, checked as the calendar checks it; the weekday comes from the date.
bool ToCalendarTime(const SystemTime& time, std::tm& calendar)
{
    std::uint64_t ticks = 0;
    SystemTime checked;
    if (!SystemTimeToFileTime(time, ticks) || !FileTimeToSystemTime(ticks, checked)) return false;
    calendar.tm_year = checked.year - 1900;
    calendar.tm_mon = checked.month - 1;
    calendar.tm_mday = checked.day;
    calendar.tm_wday = checked.dayOfWeek;
    calendar.tm_hour = checked.hour;
    calendar.tm_min = checked.minute;
    calendar.tm_sec = checked.second;
    // Not known, as a date of the record has no zone.
    calendar.tm_isdst = -1;
    return true;
}

std::size_t Fail(std::uint32_t code)
{
    SetLastError(code);
    return 0;
}

// Locales whose format names the time zone leave a blank if it is not known.
std::string_view WithoutOuterBlanks(std::string_view text)
{
    const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// By way of the user's codeset, in which the C library writes.
std::size_t Render(const std::tm& calendar, const char* pattern, std::span<char16_t> buffer)
{
    char narrow[256];
    std::u16string text;
    const std::size_t length = strftime_l(narrow, sizeof narrow, pattern, &calendar, UserLocale());
    if (!ToWide(CodePage::Ansi, WithoutOuterBlanks({narrow, length}), text)) return 0;
    if (text.size() >= buffer.size()) return Fail(kInsufficientBuffer);
    *std::copy(text.begin(), text.end(), buffer.begin()) = 0;
    return text.size();
}

const char* DatePattern(DateStyle style)
{
    switch (style) {
    case DateStyle::Long: return "%A, %d %B %Y";
    case DateStyle::Weekday: return "%a";
    default: return "%x";
    }
}

// The user's time format. Its "%X" would be the same with the seconds.
std::string TimePattern(bool withSeconds)
{
    if (withSeconds) return "%X";
    return TimePatternWithoutSeconds(nl_langinfo_l(T_FMT, UserLocale()), nl_langinfo_l(T_FMT_AMPM, UserLocale()));
}

}  // namespace

std::size_t FormatLocaleDate(const SystemTime& time, DateStyle style, std::span<char16_t> buffer)
{
    SystemTime date = time;
    date.hour = date.minute = date.second = date.milliseconds = 0;  // only the date is looked at
    std::tm calendar{};
    return ToCalendarTime(date, calendar) ? Render(calendar, DatePattern(style), buffer) : 0;
}

std::size_t FormatLocaleTime(const SystemTime& time, bool withSeconds, std::span<char16_t> buffer)
{
    SystemTime clock = time;
    clock.year = 2000;  // only the time of day is looked at
    clock.month = clock.day = 1;
    std::tm calendar{};
    if (!ToCalendarTime(clock, calendar)) return 0;
    return Render(calendar, TimePattern(withSeconds).c_str(), buffer);
}

}  // namespace Platform
