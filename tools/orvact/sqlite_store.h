// Events in an SQLite file: one table, Events.
#pragma once

#include <optional>

#include "event_store.h"
#include "sqlite.h"

class SqliteStore final : public EventStore {
public:
    SqliteStore(const std::string& path, Use use);

    std::uint64_t batch() const override { return 10'000; }
    std::int64_t LastId() override;
    void Select(const EventFilter& filter, Order order, const Take& take) override;
    void SelectAdded(const EventFilter& filter, const Take& take) override;
    void Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take) override;
    void WaitForMore() override;
    std::string Prune(std::int64_t before) override;

private:
    void CheckVersion();
    void GoForward();
    void Append(const NewEvent& event) override;
    void CommitAll() override;
    void SelectRange(EventFilter filter, std::int64_t after, Order order, const Take& take);

    Database database_;
    std::optional<Statement> insert_;
    std::optional<Statement> count_;
    std::int64_t stored_ = 0;  // the time of the last event, as a number and a text
    std::string storedText_ = StoredTime(0);
    bool hasHours_ = false;
    std::optional<std::int64_t> last_;  // the greatest id of the moment that is read
    bool open_ = false;                 // a transaction
};
