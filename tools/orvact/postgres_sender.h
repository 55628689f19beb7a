// Storing on a PostgreSQL server: what keeps a connection, and what sends batches over one.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "event_conveyor.h"
#include "postgres.h"
#include "postgres_rows.h"

namespace Postgres {

// A connection that, with --retry, is made again whenever the server was away.
class Link {
public:
    using Say = std::function<void(std::string message)>;

    Link(std::string home, bool retry) : home_(std::move(home)), retry_(retry) {}

    Connection& operator*() { return *connection_; }
    Connection* operator->() { return &*connection_; }
    bool retry() const { return retry_; }
    void Open() { connection_.emplace(home_); }
    // Tries until the server is there. Throws when the user wants no more of it.
    void Reopen(const std::string& reason, const Say& say);

    // Does it, and with --retry once more whenever the server goes away.
    template <class Work>
    void Persistently(const Work& work, const Say& say)
    {
        for (;;) {
            try {
                return work();
            } catch (const ConnectionLost& lost) {
                if (!retry_) throw;
                Reopen(lost.what(), say);
            }
        }
    }

private:
    std::string home_;
    bool retry_;
    std::optional<Connection> connection_;
};

// What all senders of a store know.
struct Sending {
    std::string home;
    bool retry;
    bool numbered;
    std::int64_t recorder;
    std::string recorderName;
};

// Sends batches. A batch is written down in EventBatches in its own transaction, so it can be looked for when the
// answer to its commit was lost, and is never there twice.
class Sender {
public:
    // Throws ConnectionLost when there is no server, or no place there.
    explicit Sender(const Sending& sending);

    void Send(const CopiedRows& batch, Conveyor::Turn& turn);

private:
    void CopyAll(const CopiedRows& batch);
    void Commit(const CopiedRows& batch);
    void StoreAfterLoss(const CopiedRows& batch, const std::string& reason, Conveyor::Turn& turn);
    bool IsStored(const CopiedRows& batch);
    bool LearnWhetherStored(const CopiedRows& batch, const std::string& reason);
    std::string LockOf(const CopiedRows& batch) const;
    std::string Counting(const std::string& table, const std::string& time, const EventCounts& counts) const;

    const Sending& sending_;
    Link link_;
    std::chrono::year_month month_{};  // whose partition is there
    bool doubtful_ = false;            // a commit is under way
};

constexpr const char* kNotice = "orvact_events";

}  // namespace Postgres
