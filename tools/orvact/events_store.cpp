// Stores actions as events.
#include <deque>
#include <memory>

#include "action_reader.h"
#include "commands.h"
#include "console.h"
#include "event_store.h"
#include "progress.h"
#include "text.h"

namespace {

// How far the input was read when events were sent.
struct Mark {
    std::uint64_t sent;  // events, up to there
    std::string place;   // of the last one
    std::uint64_t taken;
};

struct Stored {
    std::deque<Mark> sent;    // on their way
    std::string place;        // of the last event that is in the database for good
    std::uint64_t taken = 0;  // of the input up to there
    std::uint64_t committed = 0;
    std::size_t refused = 0;  // patterns, which are no events
    std::uint64_t known = 0;  // passed over

    void Settle(std::uint64_t count)
    {
        committed = count;
        for (; !sent.empty() && sent.front().sent <= committed; sent.pop_front()) {
            place = std::move(sent.front().place);
            taken = sent.front().taken;
        }
    }
};

void StoreAll(ActionReader& reader, EventStore& store, Stored& stored)
{
    Progress progress(reader.size(), "event");
    Action action;
    Place place;
    const auto commit = [&](bool wait) {
        if (store.uncommitted() > 0) {
            stored.sent.push_back({store.sent() + store.uncommitted(), TextOf(place), reader.taken()});
        }
        wait ? store.Finish() : store.Commit();
        stored.Settle(store.committed());
    };
    for (Record record; reader.Next(action, record);) {
        if (action.IsMatchAction()) {
            ++stored.refused;
            Report(record.place, Severity::Error,
                   {"not-an-event", "a match action is a pattern, not an event", {}, 0, 0, {}});
        } else if (stored.known < store.known()) {
            ++stored.known;
        } else {
            store.Store(action);
            place = record.place;
        }
        // What waits for more keeps nothing back and locks nobody out.
        const bool pauses = reader.MayWait();
        if (pauses || store.IsFull()) commit(pauses);
        progress.Show(stored.taken, stored.committed);
    }
    commit(true);
}

std::string Events(std::uint64_t count)
{
    return std::to_string(count) + (count == 1 ? " event" : " events");
}

}  // namespace

int StoreEvents(const EventsStoreOptions& options)
{
    bool sound = true;
    const Form* source = SourceForm(options.from, sound);
    // What stands in the database must be what was meant.
    ActionReader reader(Strictness::Unread);
    reader.HideProgress();
    if (!sound || !reader.Open(options.files, source)) return kUsage;
    std::unique_ptr<EventStore> store;
    Stored stored;
    const auto sayWhereToGoOn = [&] {
        if (!stored.place.empty()) Complain("stored", "the last event stored is that of " + stored.place);
    };
    try {
        store = OpenEventStore(options.database, EventStore::Use::Write,
                               {options.retry, options.recorder, options.numbered});
        CatchInterrupts();
        StoreAll(reader, *store, stored);
    } catch (const DatabaseError& error) {
        if (store) {
            store->Stop();
            stored.Settle(store->committed());
        }
        Complain("database", error.what(), {}, HomeName(options.database));
        if (store && IsServer(options.database)) Complain("stored", Events(store->committed()) + " stored");
        sayWhereToGoOn();
        return kUsage;
    }
    const std::size_t left = stored.refused + reader.unreadable();
    Print(Events(store->committed()) + " stored in " + HomeName(options.database) +
          (stored.known > 0 ? ", " + std::to_string(stored.known) + " were there" : "") +
          (left > 0 ? ", " + std::to_string(left) + " left out" : "") + "\n");
    if (Interrupted()) {
        Complain("interrupted", "interrupted before the end of the input");
        sayWhereToGoOn();
        return kInterrupted;
    }
    if (reader.failed()) return kUsage;
    return left > 0 ? kUnreadable : kDone;
}
