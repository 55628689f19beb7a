// Where events are kept: a row for each, with a column for each of the event record and the binary form of the action.
// There are two homes, a file (SQLite) and a server (PostgreSQL), with the same rows and the same answers.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "action_view.h"
#include "event_conditions.h"
#include "event_conveyor.h"
#include "event_record.h"

// What a home says when it cannot: one line, without the password.
class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What a reader is told of a home in which nothing was stored yet.
inline constexpr const char* kWithoutTables = "a database without events; orvact events store makes the tables";

// An event on its way into a store; all of it is borrowed for the call.
struct NewEvent {
    std::int64_t stored;  // milliseconds since 1970 UTC
    const Action& action;
    const TOrvEventData& record;
    const std::string& image;
};

// How a server takes events; a file has one writer, and nothing that goes away.
struct StoreOptions {
    bool retry = false;     // when the server goes away, wait for it and go on
    std::string recorder;   // who stores; "" for the name of the host
    bool numbered = false;  // the input begins with the first event of the recorder
};

class EventStore {
public:
    enum class Use { Read, Write };
    enum class Order { OldestFirst, NewestFirst };
    // Called for each row; false ends it.
    using Take = std::function<bool(const StoredEvent&)>;

    virtual ~EventStore() = default;
    EventStore(const EventStore&) = delete;
    EventStore& operator=(const EventStore&) = delete;

    // Takes an action with the time of now.
    void Store(const Action& action);
    // Sends what was taken on its way, as one transaction. It is there for others, and for good, when committed()
    // counts it, in the order in which it was taken. Throws when something that was sent before could not be stored.
    void Commit();
    void Finish();         // the same, and waits until all is committed
    void Stop() noexcept;  // leaves out what is not committed; committed() is final then
    std::uint64_t uncommitted() const { return batch_ ? batch_->count : 0; }  // since the last Commit
    std::uint64_t sent() const { return sent_; }
    std::uint64_t committed() { return conveyor().committed(); }
    // Whether it is time for a Commit: several batches are on their way at once, and all of them are held in memory.
    bool IsFull() const { return batch_ && (batch_->count >= batch() || batch_->imageBytes >= kMostBytes); }
    virtual std::uint64_t known() const { return 0; }  // of a numbered input, how many were stored before

    // What is read is the state of one moment: that of the first question, until SelectAdded moves on.
    virtual std::int64_t LastId() = 0;
    virtual void Select(const EventFilter& filter, Order order, const Take& take) = 0;
    // Moves to the moment of now, and calls back for what was added since the moment before, each event once.
    virtual void SelectAdded(const EventFilter& filter, const Take& take) = 0;
    // How many events of each group fit. Groups come in no order, and one may come in parts.
    using TakeGroup = std::function<void(const std::string& group, std::uint64_t count)>;
    virtual void Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take) = 0;
    // Until something may have been added, or for a part of a second.
    virtual void WaitForMore() = 0;

    // Forgets what was stored before that time; says what that was.
    virtual std::string Prune(std::int64_t before) = 0;

protected:
    EventStore() = default;

    static constexpr std::uint64_t kMostBytes = 1536 * 1024;

    virtual std::uint64_t batch() const = 0;  // how many small events are best committed together
    virtual std::unique_ptr<EventBatch> NewBatch() = 0;
    virtual void Prepare(EventBatch&) {}  // before it is sent, in the order of sending
    virtual Conveyor& conveyor() = 0;

private:
    std::unique_ptr<EventBatch> batch_;
    std::int64_t now_ = 0;
    std::uint64_t sent_ = 0;
};

// Throws DatabaseError when there is none (Read), when it is something else, or cannot be reached.
std::unique_ptr<EventStore> OpenEventStore(const std::string& home, EventStore::Use use,
                                           const StoreOptions& options = {});
bool IsServer(const std::string& home);
// How a home is shown: a connection string without its password and options.
std::string HomeName(const std::string& home);

// A time as it is shown: "2026-11-21T07:52:18.000Z", in the order of time when sorted as text.
std::string StoredTime(std::int64_t milliseconds);  // since 1970 UTC
std::int64_t Now();

// The action of a row, by the restoring export; empty when the library gives none.
Action Restored(const StoredEvent& event);
