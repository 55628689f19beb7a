// Reads event databases: lists what fits, follows what is added, shows one event in full, and removes old ones.
#include "action_page.h"
#include "commands.h"
#include "console.h"
#include "event_query.h"
#include "event_results.h"
#include "event_time.h"
#include "report.h"
#include "table.h"
#include "text.h"

namespace {

int ListFound(const EventsListOptions& options)
{
    const auto store = OpenEventStore(options.database, EventStore::Use::Read);
    EventQuery query(options);
    if (!query.sound()) return kUsage;
    const auto results = ResultsFor(options, store->LastId(), false);
    if (!results) return kUsage;
    bool found = false;
    if (const EventFilter* filter = query.ForStore(); !filter || !results->Count(*store, *filter, found)) {
        query.Run(*store, [&](const StoredEvent& event, const Action& action) {
            found = true;
            results->Add(event, action);
        });
    }
    results->Finish();
    if (!results->sound()) return kUnreadable;
    return found ? kDone : kNoMatch;
}

// Runs until Ctrl+C, or until nobody reads the results any more.
int Follow(const EventsListOptions& options)
{
    const auto store = OpenEventStore(options.database, EventStore::Use::Read);
    EventQuery query(options);
    if (!query.sound()) return kUsage;
    const auto results = ResultsFor(options, store->LastId(), true);
    if (!results) return kUsage;
    const auto add = [&](const StoredEvent& event, const Action& action) { results->Add(event, action); };
    CatchInterrupts();
    if (!options.limit.empty()) query.Run(*store, add);
    // Ends as well when nobody reads the pipe any more: then nothing can be written.
    while (FlushOutput() && !Interrupted()) {
        store->WaitForMore();
        query.RunAdded(*store, add);
    }
    return results->sound() ? kDone : kUnreadable;
}

void ShowColumns(const StoredEvent& event)
{
    Table table(6);
    for (const EventColumn& column : kEventColumns) {
        if (IsFilled(event.record, column)) table.Row({column.name, ColumnText(event.record, column)});
    }
    Indented("columns:", "");
    table.Write();
    Indented("image: ", std::to_string(event.record.imageSize) + " bytes");
}

void PrintDescription(const StoredEvent& event)
{
    Table table(6);
    const auto take = [&](const orv::EventLine& line) {
        if (!line.whole) table.Row({Visible(orv::ToUtf8(line.label)), Visible(orv::ToUtf8(line.value))});
    };
    try {
        orv::DescribeEvent(event.record, take, Action::kEveryPriority);
    } catch (const orv::Error&) {
        // An event that cannot be restored has been reported already.
    }
    Indented("described:", "");
    table.Write();
}

int ShowRow(const EventsShowOptions& options)
{
    const auto store = OpenEventStore(options.database, EventStore::Use::Read);
    EventFilter filter;
    filter.Add("Id", EventCondition::Asks::OneOf, {options.id});
    bool found = false;
    bool restored = false;
    store->Select(filter, EventStore::Order::OldestFirst, [&](const StoredEvent& event) {
        found = true;
        const Action action = Restored(event);
        restored = static_cast<bool>(action);
        if (action) {
            PrintAction(action, "event " + std::to_string(event.id));
        } else {
            Complain("unwritten", "cannot be restored", {}, "event " + std::to_string(event.id));
        }
        PrintDescription(event);
        ShowColumns(event);
        Indented("stored: ", Visible(event.stored));
        return false;
    });
    if (!found) {
        return Complain(
            "unknown",
            "no event " + std::to_string(options.id) + "; the last one is " + std::to_string(store->LastId()), {},
            HomeName(options.database));
    }
    return restored ? kDone : kUnreadable;
}

}  // namespace

int ListEvents(const EventsListOptions& options)
{
    return OverStore(options.database, [&] { return ListFound(options); });
}

int FollowEvents(const EventsListOptions& options)
{
    return OverStore(options.database, [&] { return Follow(options); });
}

int PruneEvents(const EventsPruneOptions& options)
{
    std::int64_t age = 0;
    if (!ParseAge(options.keep, age)) {
        return Complain("time", "--keep " + Visible(options.keep) + ": expected an age such as 90d");
    }
    return OverStore(options.database, [&] {
        CatchInterrupts();
        OpenEventStore(options.database, EventStore::Use::Read);  // what is to be pruned must be there
        const auto store = OpenEventStore(options.database, EventStore::Use::Write);
        Print(store->Prune(Now() - age) + "\n");
        return Interrupted() ? kInterrupted : kDone;
    });
}

int ShowEvent(const EventsShowOptions& options)
{
    return OverStore(options.database, [&] { return ShowRow(options); });
}
