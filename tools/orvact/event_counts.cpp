#include "event_counts.h"

#include <algorithm>
#include <limits>
#include <span>

namespace {

using Asks = EventCondition::Asks;

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max() / 2;  // in both directions, whole hours fit

constexpr const char* kUser =
    "coalesce(nullif(StringFieldFirstUser, ''), nullif(StringFieldWindowsUser, ''), "
    "nullif(StringFieldSecondUser, ''), '')";

// `time` is a column.
std::string Key(EventGrouping grouping, const SqlDialect& dialect, const std::string& time)
{
    switch (grouping) {
    case EventGrouping::One: return "''";
    case EventGrouping::Code: return "cast(Code as text)";
    case EventGrouping::Name: return "Name";
    case EventGrouping::Hour: return dialect.hour(time);
    case EventGrouping::Day: return dialect.day(time);
    case EventGrouping::User: break;
    }
    return kUser;
}

// The key of an hour or a day becomes text at the end, once for each group and not for each event.
std::string Shown(EventGrouping grouping, const SqlDialect& dialect)
{
    if (grouping == EventGrouping::Hour) return dialect.shownHour("k");
    return grouping == EventGrouping::Day ? dialect.shownDay("k") : "k";
}

std::int64_t Milliseconds(const EventValue& time)
{
    return std::get<orv::TimePoint>(time).time_since_epoch().count();
}

EventValue Time(std::int64_t milliseconds)
{
    return orv::TimePoint(std::chrono::milliseconds(milliseconds));
}

// A table that holds how many events there are in each stretch of time.
struct CountTable {
    const char* name;
    const char* time;
    std::int64_t length;
};
constexpr CountTable kTables[] = {{"EventHours", "Hour", kHour}, {"EventMinutes", "Minute", kMinute}};

// The events from `first` up to but without `end`, of some codes. Whole hours are read from the table of hours, the
// whole minutes around them from that of minutes where there is one; the events that are left at both ends are counted.
class TimeQuestion {
public:
    TimeQuestion(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect, Counted counted,
                 std::vector<EventValue>& values)
        : grouping_(grouping), dialect_(dialect), values_(values), tables_(kTables, static_cast<std::size_t>(counted))
    {
        sound_ = grouping != EventGrouping::Name && grouping != EventGrouping::User &&
                 std::all_of(filter.conditions.begin(), filter.conditions.end(),
                             [&](const EventCondition& condition) { return Take(condition); });
    }

    // Empty when no part of it can be read from a table of numbers.
    std::string Sql()
    {
        if (!sound_) return {};
        bool fromTables = false;
        for (const CountTable& table : tables_) fromTables |= FirstWhole(first_, table) < EndWhole(end_, table);
        if (!fromTables) return {};
        Cover(first_, end_, tables_);
        return "select k, cast(sum(n) as bigint) as n from (" + parts_ + ") as parts group by 1";
    }

private:
    bool Take(const EventCondition& condition)
    {
        if (condition.column == "Code" && condition.asks == Asks::OneOf) {
            codes_.push_back(condition);
            return true;
        }
        if (condition.column != "Stored") return false;
        const std::int64_t time = Milliseconds(condition.values.front());
        if (condition.asks == Asks::AtLeast) first_ = std::max(first_, time);
        if (condition.asks == Asks::AtMost) end_ = std::min(end_, time + 1);
        return condition.asks == Asks::AtLeast || condition.asks == Asks::AtMost;
    }

    // The begin of the first whole hour or minute of a time without a begin or from `first` on, and the end of the
    // last.
    static std::int64_t FirstWhole(std::int64_t first, const CountTable& table)
    {
        return first == -kNever ? first : BeginOf(first + table.length - 1, table.length);
    }
    static std::int64_t EndWhole(std::int64_t end, const CountTable& table)
    {
        return end == kNever ? end : BeginOf(end, table.length);
    }

    // From the first of the tables as much as it has, what is left at both ends from the others.
    void Cover(std::int64_t first, std::int64_t end, std::span<const CountTable> tables)
    {
        if (first >= end) return;
        if (tables.empty()) return Add(Part("Events", "Stored", "1", first, end));
        const CountTable& table = tables.front();
        const std::int64_t firstWhole = FirstWhole(first, table);
        const std::int64_t endWhole = EndWhole(end, table);
        tables = tables.subspan(1);
        if (firstWhole >= endWhole) return Cover(first, end, tables);
        Add(Part(table.name, table.time, "Count", firstWhole, endWhole));
        Cover(first, firstWhole, tables);
        Cover(endWhole, end, tables);
    }

    void Add(const std::string& part) { parts_ += (parts_.empty() ? "" : " union all ") + part; }

    std::string Part(const std::string& table, const std::string& time, const std::string& count, std::int64_t first,
                     std::int64_t end)
    {
        EventFilter filter;
        if (first != -kNever) filter.Add(time, Asks::AtLeast, {Time(first)});
        if (end != kNever) filter.Add(time, Asks::Below, {Time(end)});
        // An hour is less than a code has in all.
        for (const EventCondition& codes : codes_) {
            filter.Add(dialect_.withoutIndex + codes.column, codes.asks, codes.values);
        }
        return "select " + Key(grouping_, dialect_, time) + " as k, " + count + " as n from " + table + " where " +
               SqlOf(filter, dialect_, values_);
    }

    EventGrouping grouping_;
    const SqlDialect& dialect_;
    std::vector<EventValue>& values_;
    std::vector<EventCondition> codes_;
    std::int64_t first_ = -kNever;
    std::int64_t end_ = kNever;
    std::span<const CountTable> tables_;
    std::string parts_;
    bool sound_ = false;
};

}  // namespace

std::string CountSql(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect, Counted counted,
                     std::vector<EventValue>& values)
{
    std::string groups = TimeQuestion(filter, grouping, dialect, counted, values).Sql();
    if (groups.empty()) {
        groups = "select " + Key(grouping, dialect, "Stored") + " as k, count(*) as n from " +
                 dialect.rows(filter, SqlOf(filter, dialect, values)) + " group by 1";
    }
    return "select " + Shown(grouping, dialect) + ", n from (" + groups + ") as counted";
}

EventCounts HoursOf(const EventCounts& minutes)
{
    EventCounts hours;
    for (const auto& [key, count] : minutes) hours[{BeginOf(key.first, kHour), key.second}] += count;
    return hours;
}
