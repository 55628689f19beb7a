#include "event_blocks.h"

#include <algorithm>
#include <iterator>

#include "event_record.h"

namespace {

using Asks = EventCondition::Asks;

bool HasBlocks(const EventCondition& condition)
{
    if (condition.asks != Asks::OneOf && condition.asks != Asks::SameText) return false;
    return std::any_of(std::begin(kEventColumns), std::end(kEventColumns), [&](const EventColumn& column) {
        return IsAskedFor(column) && condition.column == column.name;
    });
}

bool IsOneId(const EventCondition& condition)
{
    return condition.column == "Id" && condition.asks == Asks::OneOf;
}

}  // namespace

bool Ids::AreFew() const
{
    return last - first < kFewIds;
}

Ids IdsOf(const EventFilter& filter, Ids ids)
{
    for (const EventCondition& condition : filter.conditions) {
        if (condition.column != "Id" || condition.asks == Asks::OneOf) continue;
        const auto bound = std::get<std::int64_t>(condition.values.front());
        if (condition.asks == Asks::AtLeast) ids.first = std::max(ids.first, bound);
        if (condition.asks == Asks::AtMost) ids.last = std::min(ids.last, bound);
    }
    return ids;
}

bool AsksForBlocks(const EventFilter& filter, Ids ids)
{
    const auto& conditions = filter.conditions;
    return !ids.AreFew() && std::any_of(conditions.begin(), conditions.end(), HasBlocks) &&
           std::none_of(conditions.begin(), conditions.end(), IsOneId);
}
