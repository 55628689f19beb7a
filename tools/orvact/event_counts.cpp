#include "event_counts.h"

#include <algorithm>
#include <limits>

namespace {

using Asks = EventCondition::Asks;

constexpr std::int64_t kHour = 3'600'000;
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

// The events from `first` up to but without `end`, of some codes. Whole hours are read from the table of hours; the
// events of the two hours that are not whole are counted.
class HourlyQuestion {
public:
    HourlyQuestion(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect,
                   std::vector<EventValue>& values)
        : grouping_(grouping), dialect_(dialect), values_(values)
    {
        sound_ = grouping != EventGrouping::Name && grouping != EventGrouping::User &&
                 std::all_of(filter.conditions.begin(), filter.conditions.end(),
                             [&](const EventCondition& condition) { return Take(condition); });
        // The first hour that begins within the time asked for; below, the hour in which that time ends.
        firstWhole_ = first_ == -kNever ? first_ : HourOf(first_ + kHour - 1);
        endWhole_ = end_ == kNever ? end_ : HourOf(end_);
    }

    bool sound() const { return sound_ && firstWhole_ < endWhole_; }

    std::string Sql()
    {
        std::string parts = Part("EventHours", "Hour", "Count", firstWhole_, endWhole_);
        if (first_ < firstWhole_) parts += " union all " + Part("Events", "Stored", "1", first_, firstWhole_);
        if (endWhole_ < end_) parts += " union all " + Part("Events", "Stored", "1", endWhole_, end_);
        return "select k, cast(sum(n) as bigint) as n from (" + parts + ") as parts group by 1";
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
    std::int64_t firstWhole_ = 0;
    std::int64_t endWhole_ = 0;
    bool sound_ = false;
};

}  // namespace

std::string CountSql(const EventFilter& filter, EventGrouping grouping, const SqlDialect& dialect, bool withHours,
                     std::vector<EventValue>& values)
{
    HourlyQuestion hourly(filter, grouping, dialect, values);
    std::string counted;
    if (withHours && hourly.sound()) {
        counted = hourly.Sql();
    } else {
        counted = "select " + Key(grouping, dialect, "Stored") + " as k, count(*) as n from Events where " +
                  SqlOf(filter, dialect, values) + " group by 1";
    }
    return "select " + Shown(grouping, dialect) + ", n from (" + counted + ") as counted";
}
