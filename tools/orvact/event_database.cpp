#include "event_database.h"

#include <chrono>

#include "forms.h"
#include "iso_time.h"
#include "text.h"

namespace {

constexpr std::int64_t kApplication = 0x4F727645;  // "OrvE", so that no other database is taken for one of ours
constexpr std::int64_t kVersion = 1;

const char* SqlType(ColumnSort sort)
{
    return sort == ColumnSort::Double ? "REAL" : sort == ColumnSort::String ? "TEXT" : "INTEGER";
}

std::string InsertSql()
{
    std::string sql = "insert into Events (Stored, Name, Code";
    std::string marks = "?, ?, ?";
    for (const EventColumn& column : kEventColumns) {
        sql += std::string(", ") + column.name;
        marks += ", ?";
    }
    return sql + ", Image) values (" + marks + ", ?)";
}

}  // namespace

void RowFilter::Add(const std::string& condition, std::vector<SqlValue> more)
{
    sql += (sql.empty() ? " where " : " and ") + condition;
    for (SqlValue& value : more) values.push_back(std::move(value));
}

EventDatabase::EventDatabase(const std::string& path, Use use) : database_(path, use == Use::Write)
{
    if (use == Use::Write && database_.Number("select count(*) from sqlite_master") == 0) Create();
    if (database_.Number("pragma application_id") != kApplication) {
        throw DatabaseError("a database, but not one of events");
    }
    if (database_.Number("pragma user_version") != kVersion) {
        throw DatabaseError("an event database of another version of orvact");
    }
    if (use == Use::Write) insert_.emplace(database_.get(), InsertSql());
}

void EventDatabase::Create()
{
    database_.Run("begin immediate");
    // Another program may have been faster.
    if (database_.Number("select count(*) from sqlite_master") == 0) {
        std::string table =
            "create table Events (Id INTEGER PRIMARY KEY, Stored TEXT NOT NULL, Name TEXT NOT NULL, "
            "Code INTEGER NOT NULL";
        for (const EventColumn& column : kEventColumns)
            table += std::string(", ") + column.name + " " + SqlType(column.sort);
        database_.Run((table + ", Image BLOB NOT NULL)").c_str());
        database_.Run("create index EventsByCode on Events (Code)");
        database_.Run("create index EventsByTime on Events (Stored)");
        database_.Run(("pragma application_id = " + std::to_string(kApplication)).c_str());
        database_.Run(("pragma user_version = " + std::to_string(kVersion)).c_str());
    }
    database_.Run("commit");
}

void EventDatabase::Store(const Action& action)
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
    if (uncommitted_ == 0) database_.Run("begin immediate");
    int parameter = 1;
    insert_->Bind(parameter++, StoredTime(Now()));
    insert_->Bind(parameter++, orv::ToUtf8(action.Name()));
    insert_->Bind(parameter++, std::int64_t{(*record)->code});
    for (const EventColumn& column : kEventColumns) BindColumn(*insert_, parameter++, *record->get(), column);
    insert_->BindBytes(parameter, image.record);
    insert_->Step();
    insert_->Reset();
    ++uncommitted_;
}

void EventDatabase::Commit()
{
    if (uncommitted_ == 0) return;
    database_.Run("commit");
    committed_ += uncommitted_;
    uncommitted_ = 0;
}

void EventDatabase::Select(const RowFilter& filter, bool newestFirst,
                           const std::function<bool(const StoredEvent&)>& take)
{
    Statement rows(database_.get(), "select " + StoredEvent::ColumnList() + " from Events" + filter.sql +
                                        " order by Id" + (newestFirst ? " desc" : ""));
    int parameter = 1;
    for (const SqlValue& value : filter.values) rows.Bind(parameter++, value);
    while (rows.Step()) {
        if (!take(StoredEvent(rows))) return;
    }
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
