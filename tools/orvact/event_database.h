// The event database: one table, a column of it for each of the event record, and the binary form of the action.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "action_view.h"
#include "event_record.h"
#include "sqlite.h"

// What a query asks of the rows: conditions joined by "and", with the values of their question marks.
struct RowFilter {
    std::string sql;
    std::vector<SqlValue> values;

    void Add(const std::string& condition, std::vector<SqlValue> more);
};

class EventDatabase {
public:
    enum class Use { Read, Write };

    // Throws DatabaseError when there is none (Read), or the file is something else.
    EventDatabase(const std::string& path, Use use);

    // Stores an action with the time of now. Opens a transaction, which stays open until Commit.
    void Store(const Action& action);
    void Commit();  // nothing when no transaction is open
    std::uint64_t committed() const { return committed_; }
    std::uint64_t uncommitted() const { return uncommitted_; }

    // Calls back for each row that fits, until the answer is false; newest first or oldest first.
    void Select(const RowFilter& filter, bool newestFirst, const std::function<bool(const StoredEvent&)>& take);
    std::int64_t LastId() { return database_.Number("select max(Id) from Events"); }

private:
    void Create();

    Database database_;
    std::optional<Statement> insert_;
    std::uint64_t committed_ = 0;
    std::uint64_t uncommitted_ = 0;
};

// A time as the database holds it: "2026-11-21T07:52:18.000Z", in the order of time when sorted as text.
std::string StoredTime(std::int64_t milliseconds);  // since 1970 UTC
std::int64_t Now();

// The action of a row, by the restoring export; empty when the library gives none.
Action Restored(const StoredEvent& event);
