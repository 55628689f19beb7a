// TUlmoDateTime: an instant in UTC and the zone bias under which it was taken, and all text forms of a date.
//
// Nothing here allocates on the way to a successful result, but for the narrow parsers, which widen their text first.
// Failures raise EUlmoDateTime (class 5) with a code of DateTimeError, or SystemException for the calendar.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "OrvActions/OrvTypes.h"
#include "platform/calendar.h"

namespace Ulmo {

enum class DateTimeError : std::uint32_t {
    Transition = 1,
    Mode = 2,
    Year = 3,
    Month = 4,
    Day = 5,
    Hour = 6,
    Minute = 7,
    Second = 8,
    Millisecond = 9,
    Separator = 10,
    EndOfText = 12,
    Range = 13,
    TimeMissing = 14,
};

// A set of fields that selects a text form.
using TUlmoDateTimeStrMode = std::uint32_t;
inline constexpr TUlmoDateTimeStrMode dtsmModeMask = 0xFF;
inline constexpr TUlmoDateTimeStrMode dtsmFormatMask = 0xFF0000;
inline constexpr TUlmoDateTimeStrMode dtsmDateAndTime = 0;
inline constexpr TUlmoDateTimeStrMode dtsmDateOnly = 1;
inline constexpr TUlmoDateTimeStrMode dtsmTimeOnly = 2;
inline constexpr TUlmoDateTimeStrMode dtsmLongDate = 0x100;  // locale format only
inline constexpr TUlmoDateTimeStrMode dtsmNoSeconds = 0x200;
inline constexpr TUlmoDateTimeStrMode dtsmWeekday = 0x400;  // locale format only
inline constexpr TUlmoDateTimeStrMode dtsmNoMilliseconds = 0x800;
inline constexpr TUlmoDateTimeStrMode dtsmShortenZeros = 0x1000;
inline constexpr TUlmoDateTimeStrMode dtsmQuotes = 0x2000;
inline constexpr TUlmoDateTimeStrMode dtsmLocale = 0;
inline constexpr TUlmoDateTimeStrMode dtsmTechnical = 0x10000;
inline constexpr TUlmoDateTimeStrMode dtsmDashes = 0x20000;
inline constexpr TUlmoDateTimeStrMode dtsmIso = 0x30000;

// The prefix that selects ISO writing of a bias.
inline constexpr std::u16string_view kIsoBiasPrefix = u"{$ISO:Z$}";

// The two parts of a TUlmoDateTime: milliseconds since 1601 in UTC, and minutes, where UTC is local time plus bias.
std::uint64_t UtcMilliseconds(TUlmoDateTime value);
std::int16_t Bias(TUlmoDateTime value);
// Raises DateTimeError::Range for a negative instant and for one above 48 bits.
TUlmoDateTime MakeDateTime(std::int64_t utcMilliseconds, std::int16_t bias);

// The present instant with the local bias of that instant.
TUlmoDateTime Now();

// Renders a broken-down time. The result counts the characters without the terminating zero.
std::size_t SystemTimeToStr(std::span<char16_t> buffer, const Platform::SystemTime& time, TUlmoDateTimeStrMode mode);
std::size_t SystemTimeToStr(std::span<char> buffer, const Platform::SystemTime& time, TUlmoDateTimeStrMode mode);

// " GMT+01:00", or "Z" under kIsoBiasPrefix.
std::size_t BiasToStr(std::span<char16_t> buffer, std::int16_t bias, std::u16string_view prefix);

// Parses date and time. With `used` the number of characters taken is stored and the rest not looked at; without it
// the text must end behind the date. dayOfWeek stays 0.
Platform::SystemTime StrToSystemTime(std::u16string_view text, std::size_t* used = nullptr);
Platform::SystemTime StrToSystemTime(std::string_view ansi, std::size_t* used = nullptr);
std::int16_t StrToBias(std::u16string_view text);

// Room for any standard, ISO or locale text of a date, the terminating zero included.
inline constexpr std::size_t kDateTextCapacity = 160;
using DateText = char16_t[kDateTextCapacity];

// The texts of a value, written into the buffer; the view refers to it.
std::u16string_view ToText(TUlmoDateTime value, DateText& buffer);        // 2026/11/15 03:10:43,123 GMT+01:00
std::u16string_view ToIsoText(TUlmoDateTime value, DateText& buffer);     // 2026-11-15T03:10:43.123+01:00
// In the user's language, without bias; the mode selects what is written.
std::u16string_view ToLocaleText(TUlmoDateTime value, DateText& buffer,
                                 TUlmoDateTimeStrMode mode = dtsmLocale | dtsmDateAndTime);

TUlmoDateTime FromText(std::u16string_view text);
TUlmoDateTime FromText(std::string_view ansi);
// As FromText, but nothing for a text that is no date, without a failure being raised or remembered.
std::optional<TUlmoDateTime> TryFromText(std::u16string_view text);

// The instants, as local milliseconds since 1601, of the change to daylight and to standard time in the year of the
// given instant; nothing when the zone has no daylight saving. Exposed for tests of the zone rule.
struct Transitions {
    std::int64_t daylight;
    std::int64_t standard;
};
std::optional<Transitions> ZoneTransitions(std::uint64_t milliseconds, const Platform::TimeZone& zone);
// The bias that holds at an instant under a zone rule.
std::int16_t BiasAt(std::uint64_t utcMilliseconds, const Platform::TimeZone& zone);

}  // namespace Ulmo
