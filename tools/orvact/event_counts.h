// How many events there are of each kind: a question that a store answers by itself. Beside its events it keeps how
// many each hour has of each code, the table EventHours, so that a year is counted as fast as a day. A store that is
// slow to find the events of an hour keeps the same for each minute, the table EventMinutes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "event_conditions.h"

enum class EventGrouping { One, Code, Name, Hour, Day, User };  // all in one, or by what

enum class Counted { Nowhere, ByHour, ByHourAndMinute };  // which of these tables there are

// Rows of two values: a group as text (a code as digits) and how many events it has.
std::string CountSql(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect, Counted counted,
                     std::vector<EventValue>& values);

inline constexpr std::int64_t kMinute = 60'000;  // milliseconds
inline constexpr std::int64_t kHour = 60 * kMinute;

// The begin of the hour or the minute in which that time lies, since 1970 UTC.
constexpr std::int64_t BeginOf(std::int64_t milliseconds, std::int64_t length)
{
    return milliseconds - ((milliseconds % length) + length) % length;
}

// The begin of an hour or a minute and a code, and how many events were added.
using EventCounts = std::map<std::pair<std::int64_t, std::uint32_t>, std::uint64_t>;
EventCounts HoursOf(const EventCounts& minutes);
