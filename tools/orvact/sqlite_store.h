// Events in an SQLite file: one table, Events.
#pragma once

#include <optional>

#include "event_blocks.h"
#include "event_store.h"
#include "sqlite.h"

class SqliteStore final : public EventStore {
public:
    SqliteStore(const std::string& path, Use use);

    std::uint64_t batch() const override { return 15'000; }
    std::int64_t LastId() override;
    void Select(const EventFilter& filter, Order order, const Take& take) override;
    void SelectAdded(const EventFilter& filter, const Take& take) override;
    void Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take) override;
    void WaitForMore() override;
    std::string Prune(std::int64_t before) override;

private:
    void CheckVersion();
    void GoForward();
    std::unique_ptr<EventBatch> NewBatch() override;
    Conveyor& conveyor() override { return conveyor_; }
    void StoreBatch(const EventBatch& batch);
    void SelectRange(EventFilter filter, std::int64_t after, Order order, const Take& take);
    using MakeSql = std::function<std::string(const EventFilter& filter, std::vector<EventValue>& values)>;
    using TakeRow = std::function<bool(const Statement& row)>;  // false ends it
    void Ask(EventFilter filter, Order order, Ids ids, const MakeSql& makeSql, const TakeRow& take);

    Database database_;
    std::optional<Statement> insert_;      // one row
    std::optional<Statement> insertMany_;  // kRowsAtOnce of them
    std::optional<Statement> count_;
    bool hasHours_ = false;
    bool hasBlocks_ = false;
    std::optional<std::int64_t> last_;  // the greatest id of the moment that is read
    Conveyor conveyor_;                 // whose thread has the database as long as something is on its way
};
