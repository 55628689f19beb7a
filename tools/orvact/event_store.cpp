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
    if (!batch_) batch_ = conveyor().TakeStored();
    if (!batch_) batch_ = NewBatch();
    // Reading the clock takes longer than it goes on between a few events; whoever waits for more commits first.
    constexpr std::uint64_t kSameTime = 16;
    if (batch_->count % kSameTime == 0) now_ = Now();
    batch_->Add({now_, action, *record->get(), image.record});
    ++batch_->minutes[{BeginOf(now_, kMinute), record->get()->code}];
    ++batch_->count;
    batch_->imageBytes += image.record.size();
}

void EventStore::Commit()
{
    if (uncommitted() == 0) return;
    Prepare(*batch_);
    sent_ += batch_->count;
    conveyor().Put(std::move(batch_));
}

void EventStore::Finish()
{
    Commit();
    conveyor().Finish();
}

void EventStore::Stop() noexcept
{
    conveyor().Stop();
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
