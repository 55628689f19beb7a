// How many events there are of each kind: a question that a store answers by itself. Beside its events it keeps how
// many each hour has of each code, the table EventHours, so that a year is counted as fast as a day.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "event_conditions.h"

enum class EventGrouping { One, Code, Name, Hour, Day, User };  // all in one, or by what

// Rows of two values: a group as text (a code as digits) and how many events it has.
std::string CountSql(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect, bool withHours,
                     std::vector<EventValue>& values);

// What an event of that time is counted under, in milliseconds since 1970 UTC.
constexpr std::int64_t HourOf(std::int64_t milliseconds)
{
    constexpr std::int64_t kHour = 3'600'000;
    return milliseconds - ((milliseconds % kHour) + kHour) % kHour;
}

// Hour and code, and how many events were added.
using HourCounts = std::map<std::pair<std::int64_t, std::uint32_t>, std::uint64_t>;
