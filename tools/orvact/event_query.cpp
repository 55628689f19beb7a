#include "event_query.h"

#include <algorithm>

#include "console.h"
#include "event_blocks.h"
#include "event_filter.h"
#include "event_necessary.h"
#include "report.h"
#include "text.h"
#include "whole_number.h"

namespace {

// "" for all.
bool ParseLimit(const std::string& text, std::size_t& limit)
{
    limit = 0;
    if (text.empty()) return true;
    if (ParseWhole(text, limit) && limit > 0) return true;
    Complain("limit", "--limit " + Visible(text) + ": expected how many events to list, 1 or more");
    return false;
}

}  // namespace

EventQuery::EventQuery(const EventsListOptions& options)
{
    std::vector<Pattern> patterns;
    if (!ParseLimit(options.limit, limit_)) return;
    if (!options.pattern.empty() && !ReadPatterns(options.pattern, patterns)) return;
    if (!AddConditions(options, filter_)) return;
    if (!patterns.empty()) AddNecessary(patterns, filter_);
    rules_ = RulesOf(patterns);
    sound_ = true;
}

// The id of the oldest of the newest so many that fit: those before it are passed over. What comes often is found among
// the last few events; only what is not is looked for in all of them.
std::int64_t EventQuery::FirstOfNewest(EventStore& store, std::int64_t last) const
{
    std::int64_t first = 0;
    std::size_t found = 0;
    const auto walk = [&](Ids ids) {
        EventFilter filter = filter_;
        filter.Add("Id", EventCondition::Asks::AtLeast, {ids.first});
        filter.Add("Id", EventCondition::Asks::AtMost, {ids.last});
        store.Select(filter, EventStore::Order::NewestFirst, [&](const StoredEvent& event) {
            // Without a pattern the rows decide, and nothing has to be restored.
            if (rules_.Size() > 0 && !Fits(Restored(event))) return true;
            first = event.id;
            return ++found < limit_;
        });
    };
    const std::int64_t old = std::max<std::int64_t>(last - kFewIds, 0);
    walk({old + 1, last});
    if (found < limit_ && old > 0) walk({0, old});
    return first;
}

bool EventQuery::Offer(const StoredEvent& event, const Take& take) const
{
    const Action action = Restored(event);
    const bool fits = Fits(action);
    if (fits) take(event, action);
    return fits;
}

void EventQuery::Run(EventStore& store, const Take& take)
{
    const std::int64_t last = store.LastId();
    Progress progress(static_cast<std::uint64_t>(last), "event");
    std::uint64_t found = 0;
    EventFilter filter = filter_;
    if (limit_ > 0) {
        filter.Add("Id", EventCondition::Asks::AtLeast, {FirstOfNewest(store, last)});
        filter.Add("Id", EventCondition::Asks::AtMost, {last});
    }
    store.Select(filter, EventStore::Order::OldestFirst, [&](const StoredEvent& event) {
        if (ShowsPassing()) progress.Show(static_cast<std::uint64_t>(event.id), found);
        found += Offer(event, take) ? 1 : 0;
        return true;
    });
}

void EventQuery::RunAdded(EventStore& store, const Take& take)
{
    store.SelectAdded(filter_, [&](const StoredEvent& event) {
        Offer(event, take);
        return true;
    });
}

int OverStore(const std::string& home, const std::function<int()>& work)
{
    try {
        return work();
    } catch (const DatabaseError& error) {
        return Complain("database", error.what(), {}, HomeName(home));
    } catch (const orv::Error& error) {
        return Complain("database", error.what(), {}, HomeName(home));
    }
}
