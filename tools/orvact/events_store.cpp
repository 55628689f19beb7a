// Stores actions in an event database.
#include "action_reader.h"
#include "commands.h"
#include "console.h"
#include "event_database.h"
#include "progress.h"
#include "text.h"

namespace {

constexpr std::uint64_t kEventsInTransaction = 1000;

// Gives what could not be stored because it is no event.
std::size_t StoreAll(ActionReader& reader, EventDatabase& database)
{
    Progress progress(reader.size());
    std::size_t refused = 0;
    Action action{nullptr};
    for (Record record; reader.Next(action, record);) {
        if (action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION) {
            ++refused;
            reader.Report(record, "a match action is a pattern, not an event");
        } else {
            database.Store(action);
        }
        // What waits for more keeps nothing back and locks nobody out.
        if (database.uncommitted() >= kEventsInTransaction || reader.MayWait()) database.Commit();
        progress.Show(reader.taken(), database.committed() + database.uncommitted());
    }
    database.Commit();
    return refused;
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
    ActionReader reader;
    if (!sound || !reader.Open(options.file, source)) return kUsage;
    std::uint64_t committed = 0;
    try {
        EventDatabase database(options.database, EventDatabase::Use::Write);
        CatchInterrupts();
        std::size_t refused = 0;
        try {
            refused = StoreAll(reader, database);
        } catch (const DatabaseError&) {
            committed = database.committed();
            throw;
        }
        const std::size_t left = refused + reader.unreadable();
        Print(Events(database.committed()) + " stored in " + options.database +
              (left > 0 ? ", " + std::to_string(left) + " left out" : "") + "\n");
        if (Interrupted()) {
            PrintError("orvact: interrupted in front of the end of the input\n");
            return kInterrupted;
        }
        if (reader.failed()) return kUsage;
        return left > 0 ? kUnreadable : kDone;
    } catch (const DatabaseError& error) {
        PrintError("orvact: " + options.database + ": " + error.what() + "\n");
        if (committed > 0) PrintError("orvact: " + Events(committed) + " stored before that\n");
        return kUsage;
    }
}
