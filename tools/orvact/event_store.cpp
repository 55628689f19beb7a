#include "event_store.h"

#include <chrono>
#include <optional>

#include "forms.h"
#include "iso_time.h"
#include "postgres_store.h"
#include "sqlite_store.h"

void EventStore::Store(const Action& action)
{
    // The image first: filling the record converts values in the action.
    const Encoded image = WriteBinary(action);
    if (!image.problem.empty()) throw DatabaseError("the action " + image.problem);
    std::optional<orv::EventRecord> record;
    try {
        record.emplace(action.Handle());
    } catch (const orv::Error& error) {
        throw DatabaseError(std::string("the action gives no record: ") + error.what());
    }
    const std::int64_t now = Now();
    Append({now, action, *record->get(), image.record});
    ++added_[{HourOf(now), record->get()->code}];
    ++uncommitted_;
}

void EventStore::Commit()
{
    if (uncommitted_ == 0) return;
    CommitAll();
    committed_ += uncommitted_;
    uncommitted_ = 0;
    added_.clear();
}

bool IsServer(const std::string& home)
{
    return home.starts_with("postgresql://") || home.starts_with("postgres://");
}

std::string HomeName(const std::string& home)
{
    if (!IsServer(home)) return home;
    const std::size_t user = home.find("//") + 2;
    std::string name = home;
    // An @ that was not written as %40 belongs to the password too.
    const std::size_t host = name.rfind('@');
    const std::size_t colon = name.find(':', user);
    if (host != std::string::npos && colon < host) name.erase(colon, host - colon);
    return name.substr(0, name.find('?'));
}

std::unique_ptr<EventStore> OpenEventStore(const std::string& home, EventStore::Use use, const StoreOptions& options)
{
    if (IsServer(home)) return OpenPostgresStore(home, use, options);
    if (options.retry || options.numbered || !options.recorder.empty()) {
        throw DatabaseError("--retry, --recorder and --numbered are for a server, postgresql://...");
    }
    return std::make_unique<SqliteStore>(home, use);
}

std::int64_t Now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

std::string StoredTime(std::int64_t milliseconds)
{
    return ClockText(orv::TimePoint(std::chrono::milliseconds(milliseconds))) + "Z";
}

Action Restored(const StoredEvent& event)
{
    try {
        return Action::Restored(event.record);
    } catch (const orv::Error&) {
        return Action();
    }
}
