// The rule of a time zone in the notation of POSIX, as the variable TZ and the last line of a zone file have it:
// "CET-1CEST,M3.5.0,M10.5.0/3".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/calendar.h"

namespace Platform {

// The rule as a zone record; empty for a text that is not a rule. A change that the relative form of a date cannot
// express (a day of the year, a clock time outside 0 to 23 hours) is given in the absolute form for the given year.
// The clock time 24:00 becomes 23:59:59.999 of the same day, as system records have it.
std::optional<TimeZone> ParsePosixRule(std::string_view rule, std::uint16_t year);

}  // namespace Platform
