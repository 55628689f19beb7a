#include "event_conditions.h"

namespace {

class Translation {
public:
    Translation(const SqlDialect& dialect, std::vector<EventValue>& values) : dialect_(dialect), values_(values) {}

    std::string Of(const EventCondition& condition)
    {
        using Asks = EventCondition::Asks;
        switch (condition.asks) {
        case Asks::OneOf: return condition.column + " in (" + Marks(condition.values) + ")";
        case Asks::Above: return condition.column + " > " + Marks(condition.values);
        case Asks::AtLeast: return condition.column + " >= " + Marks(condition.values);
        case Asks::AtMost: return condition.column + " <= " + Marks(condition.values);
        case Asks::SameText: break;
        }
        return dialect_.sameText(condition.column, Marks(condition.values));
    }

private:
    std::string Marks(const std::vector<EventValue>& values)
    {
        std::string marks;
        for (const EventValue& value : values) {
            values_.push_back(value);
            marks += (marks.empty() ? "" : ", ") + dialect_.mark(values_.size());
        }
        return marks;
    }

    const SqlDialect& dialect_;
    std::vector<EventValue>& values_;
};

}  // namespace

std::string SqlOf(const EventFilter& filter, const SqlDialect& dialect, std::vector<EventValue>& values)
{
    Translation translation(dialect, values);
    std::string sql;
    for (const EventCondition& condition : filter.conditions) {
        sql += (sql.empty() ? "" : " and ") + translation.Of(condition);
    }
    return sql;
}
