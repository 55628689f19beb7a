#include "event_conditions.h"

#include <algorithm>

namespace {

class Translation {
public:
    Translation(const EventFilter& filter, const SqlDialect& dialect, std::vector<EventValue>& values)
        : narrow_(std::any_of(filter.conditions.begin(), filter.conditions.end(), AsksForText)),
          dialect_(dialect),
          values_(values)
    {}

    std::string Of(const EventCondition& condition)
    {
        using Asks = EventCondition::Asks;
        // A text is rarer than a code, so its index is the one to use.
        const bool other = narrow_ && condition.column == "Code";
        switch (condition.asks) {
        case Asks::OneOf:
            return (other ? dialect_.withoutIndex : "") + condition.column + " in (" + Marks(condition.values) + ")";
        case Asks::AtLeast: return condition.column + " >= " + Marks(condition.values);
        case Asks::AtMost: return condition.column + " <= " + Marks(condition.values);
        case Asks::Below: return condition.column + " < " + Marks(condition.values);
        case Asks::SameText: break;
        }
        return dialect_.sameText(condition.column, Marks(condition.values));
    }

private:
    static bool AsksForText(const EventCondition& condition)
    {
        return condition.asks == EventCondition::Asks::SameText && condition.column != "Name";
    }

    std::string Marks(const std::vector<EventValue>& values)
    {
        std::string marks;
        for (const EventValue& value : values) {
            values_.push_back(value);
            marks += (marks.empty() ? "" : ", ") + dialect_.mark(values_.size());
        }
        return marks;
    }

    bool narrow_;  // a text is asked for, which has an index
    const SqlDialect& dialect_;
    std::vector<EventValue>& values_;
};

}  // namespace

std::string SqlOf(const EventFilter& filter, const SqlDialect& dialect, std::vector<EventValue>& values)
{
    Translation translation(filter, dialect, values);
    std::string sql;
    for (const EventCondition& condition : filter.conditions) {
        sql += (sql.empty() ? "" : " and ") + translation.Of(condition);
    }
    return sql.empty() ? "true" : sql;
}
