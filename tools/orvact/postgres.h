// A connection to a PostgreSQL server. Every fault is a DatabaseError: one line, without the password.
#pragma once

#include <libpq-fe.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "event_store.h"

namespace Postgres {

// The server is gone, or was not there at all.
class ConnectionLost : public DatabaseError {
public:
    using DatabaseError::DatabaseError;
};

// An answer; its values are in the binary format.
class Result {
public:
    explicit Result(PGresult* result) : result_(result) {}

    int rows() const { return PQntuples(result_.get()); }
    std::uint64_t changed() const;  // rows, by an update
    bool IsNull(int row, int column) const { return PQgetisnull(result_.get(), row, column) != 0; }
    std::int64_t Integer(int row, int column) const;  // of 16, 32 or 64 bits, or a truth value
    double Real(int row, int column) const;
    std::string_view Bytes(int row, int column) const;  // also of a text
    PGresult* get() const { return result_.get(); }

private:
    struct Clear {
        void operator()(PGresult* result) const { PQclear(result); }
    };
    std::unique_ptr<PGresult, Clear> result_;
};

class Connection {
public:
    // A connection string in any form that the client library knows.
    explicit Connection(const std::string& home);

    // One statement; $1, $2, ... are the values. The server infers their types.
    Result Run(const std::string& sql, const std::vector<EventValue>& values = {});
    void Script(const std::string& sql);  // several statements without values
    std::int64_t Number(const std::string& sql, const std::vector<EventValue>& values = {});  // the first; 0 for null
    std::string Text(const std::string& sql);

    // Begins what `sql` ends with, a copy from here; then its data, and the end.
    void BeginCopy(const std::string& sql);
    void PutCopy(std::string_view data);
    void EndCopy();

    void WaitForNotice(std::chrono::milliseconds atMost);  // or less, when a signal comes

private:
    Result Checked(PGresult* result);
    [[noreturn]] void Fail(const PGresult* result);

    struct Close {
        void operator()(PGconn* connection) const { PQfinish(connection); }
    };
    std::unique_ptr<PGconn, Close> connection_;
};

}  // namespace Postgres
