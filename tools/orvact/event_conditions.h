// What a question asks of the rows of an event store, and how its conditions are written in SQL. One translator, and
// what differs between the databases stands in a dialect.
#pragma once

#include <OrvActions.hpp>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

// A value that a condition compares with; a time is one of Stored.
using EventValue = std::variant<std::int64_t, double, std::string, std::u16string, orv::TimePoint>;

struct EventCondition {
    enum class Asks {
        OneOf,  // the column has one of the values
        AtLeast,
        AtMost,
        Below,
        SameText  // the value in any case; a text beyond ASCII passes always, as the library compares by other rules
    };
    std::string column;
    Asks asks;
    std::vector<EventValue> values;
};

// All of the conditions hold.
struct EventFilter {
    std::vector<EventCondition> conditions;

    void Add(std::string column, EventCondition::Asks asks, std::vector<EventValue> values)
    {
        conditions.push_back({std::move(column), asks, std::move(values)});
    }
};

// How a database writes what is not written alike in all of them.
struct SqlDialect {
    std::string (*mark)(std::size_t number);  // the place of a value, counted from 1
    std::string (*sameText)(const std::string& column, const std::string& mark);
    // A prefix for a column, so that the planner does not use its index: for planners that choose it although another
    // index narrows the search more.
    const char* withoutIndex;
    // Of a column with times, what is the same in an hour or a day; and how that is shown.
    std::string (*hour)(const std::string& time);
    std::string (*day)(const std::string& time);
    std::string (*shownHour)(const std::string& key);
    std::string (*shownDay)(const std::string& key);
    // The rows of Events for which `where` holds, which is the SQL of the filter: what follows "from".
    std::string (*rows)(const EventFilter& filter, const std::string& where);
};

// The conditions joined by "and", "true" for none; their values in the order of their marks are appended.
std::string SqlOf(const EventFilter& filter, const SqlDialect& dialect, std::vector<EventValue>& values);
