#include "platform/calendar.h"

#include <algorithm>
#include <climits>

#include "platform/windows/system_time.h"

namespace Platform {

namespace {

constexpr std::size_t kLongest = INT_MAX;

// With a capacity of 0 the system would answer with the size, which is not wanted here.
std::size_t Refuse()
{
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return 0;
}

int Capacity(std::span<char16_t> buffer)
{
    return static_cast<int>(std::min(buffer.size(), kLongest));
}

// The system counts the terminating zero.
std::size_t WithoutZero(int length)
{
    return length > 0 ? static_cast<std::size_t>(length - 1) : 0;
}

}  // namespace

std::size_t FormatLocaleDate(const SystemTime& time, DateStyle style, std::span<char16_t> buffer)
{
    if (buffer.empty()) return Refuse();
    const SYSTEMTIME system = ToSystem(time);
    const bool weekday = style == DateStyle::Weekday;
    const DWORD flags = weekday ? 0 : style == DateStyle::Long ? DATE_LONGDATE : DATE_SHORTDATE;
    return WithoutZero(GetDateFormatW(LOCALE_USER_DEFAULT, flags, &system, weekday ? L"ddd" : nullptr,
                                      AsWide(buffer.data()), Capacity(buffer)));
}

std::size_t FormatLocaleTime(const SystemTime& time, bool withSeconds, std::span<char16_t> buffer)
{
    if (buffer.empty()) return Refuse();
    const SYSTEMTIME system = ToSystem(time);
    return WithoutZero(GetTimeFormatW(LOCALE_USER_DEFAULT, withSeconds ? 0 : TIME_NOSECONDS, &system, nullptr,
                                      AsWide(buffer.data()), Capacity(buffer)));
}

}  // namespace Platform
