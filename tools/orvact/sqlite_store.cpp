#include "sqlite_store.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iterator>
#include <thread>
#include <utility>

#include "console.h"

namespace {

constexpr std::int64_t kApplication = 0x4F727645;  // "OrvE", so that no other database is taken for one of ours

// The engine does not look at this: it takes a page for whole wherever it stands.
constexpr const char* kOutOfOrder = "damaged: events stand out of their order, as if parts of the file changed places";

const char* SqlType(ColumnSort sort)
{
    return sort == ColumnSort::Double ? "REAL" : sort == ColumnSort::String ? "TEXT" : "INTEGER";
}

// A statement opens and closes every tree of the table, so one of many rows costs a fifth less than as many of one row.
constexpr std::uint64_t kRowsAtOnce = 32;

std::string InsertSql(std::uint64_t rows)
{
    std::string sql = "insert into Events (Stored, Name, Code";
    std::string marks = "(?, ?, ?";
    for (const EventColumn& column : kEventColumns) {
        sql += std::string(", ") + column.name;
        marks += ", ?";
    }
    marks += ", ?)";
    sql += ", Image) values " + marks;
    for (std::uint64_t row = 1; row < rows; ++row) sql += ", " + marks;
    return sql;
}

// The same for texts that differ in case only, and empty for a text beyond ASCII.
std::string Folded(const std::string& text)
{
    return "case when " + text + " glob '*[^ -~]*' then '' else lower(" + text + ") end";
}

constexpr SqlDialect kDialect = {
    [](std::size_t) { return std::string("?"); },
    [](const std::string& column, const std::string& mark) {
        return "(" + column + " is not null and " + Folded(column) + " in ('', lower(" + mark + ")))";
    },
    "+",
    [](const std::string& time) { return "substr(" + time + ", 1, 13)"; },
    [](const std::string& time) { return "substr(" + time + ", 1, 10)"; },
    [](const std::string& key) { return key + " || ':00Z'"; },
    [](const std::string& key) { return key; },
    [](const EventFilter&, const std::string& where) { return "Events where " + where; },
};

void MakeTable(Database& database)
{
    std::string table =
        "create table Events (Id INTEGER PRIMARY KEY, Stored TEXT NOT NULL, Name TEXT NOT NULL, Code INTEGER NOT NULL";
    for (const EventColumn& column : kEventColumns)
        table += std::string(", ") + column.name + " " + SqlType(column.sort);
    database.Run((table + ", Image BLOB NOT NULL)").c_str());
    database.Run("create index EventsByCode on Events (Code)");
    database.Run("create index EventsByTime on Events (Stored)");
    database.Run(("pragma application_id = " + std::to_string(kApplication)).c_str());
}

constexpr const char* kBlock = "Id >> 17";
constexpr int kBlockBits = 17;
constexpr std::int64_t kBlockSize = std::int64_t{1} << kBlockBits;

void MakeColumnIndexes(Database& database, const std::string& prefix)
{
    for (const EventColumn& column : kEventColumns) {
        if (!IsAskedFor(column)) continue;
        const std::string name = column.name;
        // Contacts have the numbers of channels too.
        const std::string key = column.sort == ColumnSort::String ? Folded(name) : name + ", Code";
        database.Run(("drop index if exists EventsBy" + name).c_str());
        database.Run(("create index EventsBy" + name + " on Events (" + prefix + key + ") where " + name +
                      " is not null")
                         .c_str());
    }
}

void MakeWholeIndexes(Database& database)
{
    MakeColumnIndexes(database, "");
}

void MakeBlockIndexes(Database& database)
{
    MakeColumnIndexes(database, std::string(kBlock) + ", ");
}

// Whoever stores counts what he adds, once for a transaction; what goes is counted by the database, whoever deletes it.
void MakeHours(Database& database)
{
    const auto hour = [](const std::string& time) { return "substr(" + time + ", 1, 13) || ':00:00.000Z'"; };
    const std::string added = "insert into EventHours values (" + hour("new.Stored") +
                              ", new.Code, 1) on conflict do update set Count = Count + 1; ";
    const std::string gone = "update EventHours set Count = Count - 1 where Hour = " + hour("old.Stored") +
                             " and Code = old.Code; delete from EventHours where Hour = " + hour("old.Stored") +
                             " and Code = old.Code and Count = 0; ";
    for (const std::string& sql :
         {std::string("create table EventHours (Hour TEXT NOT NULL, Code INTEGER NOT NULL, Count INTEGER NOT NULL, "
                      "PRIMARY KEY (Hour, Code)) without rowid"),
          "insert into EventHours select " + hour("Stored") + ", Code, count(*) from Events group by 1, 2",
          "create trigger EventsGone after delete on Events begin " + gone + "end",
          "create trigger EventsMoved after update of Stored, Code on Events begin " + gone + added + "end"}) {
        database.Run(sql.c_str());
    }
}

// Each step turns a version into the next one. All versions hold the same events.
using Step = void (*)(Database&);
constexpr Step kSteps[] = {MakeTable, MakeWholeIndexes, MakeHours, MakeBlockIndexes};
constexpr std::int64_t kVersion = std::size(kSteps);
constexpr std::int64_t kFirstWithHours = 3;
constexpr std::int64_t kFirstWithBlocks = 4;

// Binds values in their order.
struct Binder {
    Statement& statement;
    int parameter = 1;

    void operator()(std::int64_t number) { statement.Bind(parameter++, number); }
    void operator()(std::int32_t number) { statement.Bind(parameter++, std::int64_t{number}); }
    void operator()(double number) { statement.Bind(parameter++, number); }
    void operator()(std::string_view text) { statement.Bind(parameter++, text); }
    void operator()(std::u16string_view text) { statement.Bind(parameter++, text); }
    void operator()(orv::TimePoint time)
    {
        statement.BindCopy(parameter++, StoredTime(time.time_since_epoch().count()));
    }
    void operator()(std::nullptr_t) { statement.BindNull(parameter++); }
};

// Events as their rows are bound, packed one after the other, so that the thread of the database has nothing else to do.
class PackedRows final : public EventBatch {
public:
    void Add(const NewEvent& event) override
    {
        if (event.stored != stored_ || text_.empty()) text_ = StoredTime(event.stored);
        stored_ = event.stored;
        Text(text_);
        Text(orv::ToUtf8(event.action.Name()));
        (*this)(std::int64_t{event.record.code});
        for (const EventColumn& column : kEventColumns) VisitColumn(event.record, column, *this);
        Put('i', event.image.size());
        data_ += event.image;
    }

    void operator()(std::int64_t number) { Put('n', number); }
    void operator()(std::int32_t number) { Put('n', std::int64_t{number}); }
    void operator()(double number) { Put('d', number); }
    void operator()(std::u16string_view text) { Text(orv::ToUtf8(text)); }
    void operator()(std::nullptr_t) { data_ += '0'; }

    // Binds the values of that many rows from that place on; gives the place of the next.
    std::size_t Bind(std::size_t place, std::uint64_t many, Statement& rows) const
    {
        const int last = static_cast<int>(many) * kParameters;
        for (int parameter = 1; parameter <= last; ++parameter) place = BindValue(place, parameter, rows);
        return place;
    }

private:
    static constexpr int kParameters = 3 + static_cast<int>(kColumnCount) + 1;

    void Text(std::string_view text)
    {
        Put('t', text.size());
        data_ += text;
    }

    template <class T>
    void Put(char kind, T value)
    {
        data_ += kind;
        data_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    template <class T>
    T Get(std::size_t& place) const
    {
        T value;
        std::memcpy(&value, data_.data() + place, sizeof value);
        place += sizeof value;
        return value;
    }

    std::size_t BindValue(std::size_t place, int parameter, Statement& row) const
    {
        const char kind = data_[place++];
        if (kind == '0') row.BindNull(parameter);
        if (kind == 'n') row.Bind(parameter, Get<std::int64_t>(place));
        if (kind == 'd') row.Bind(parameter, Get<double>(place));
        if (kind != 't' && kind != 'i') return place;
        const auto size = Get<std::size_t>(place);
        const std::string_view bytes = std::string_view(data_).substr(place, size);
        kind == 't' ? row.Bind(parameter, bytes) : row.BindBytes(parameter, bytes);
        return place + size;
    }

    std::int64_t stored_ = 0;  // the time of the last event, as a number and a text
    std::string text_;
};

// One bound on each side in all: of two, the planner takes the second for a reason to leave a better index aside. Gives
// the ids that the bounds leave.
Ids BoundIds(EventFilter& filter, Ids ids)
{
    using Asks = EventCondition::Asks;
    ids = IdsOf(filter, ids);
    std::erase_if(filter.conditions, [](const EventCondition& condition) {
        return condition.column == "Id" && condition.asks != Asks::OneOf;
    });
    filter.Add("Id", Asks::AtLeast, {ids.first});
    filter.Add("Id", Asks::AtMost, {ids.last});
    return ids;
}

// The blocks that hold an event of those ids, one after the other. Ids may leave gaps of any size.
class Blocks {
public:
    Blocks(const Database& database, bool newestFirst, Ids ids)
        : newestFirst_(newestFirst),
          next_(newestFirst ? ids.last : ids.first),
          end_((newestFirst ? ids.first : ids.last) >> kBlockBits),
          edge_(database.get(), newestFirst ? "select max(Id) from Events where Id <= ?"
                                            : "select min(Id) from Events where Id >= ?")
    {}

    bool Next()
    {
        if (ended_) return false;
        edge_.Bind(1, next_);
        edge_.Step();
        ended_ = edge_.IsNull(0);
        number_ = edge_.Integer(0) >> kBlockBits;
        edge_.Reset();
        if (ended_ || (newestFirst_ ? number_ < end_ : number_ > end_)) return false;
        ended_ = number_ == end_;
        // Not beyond the greatest number: a block after this one was asked for.
        if (!ended_) next_ = newestFirst_ ? number_ * kBlockSize - 1 : (number_ + 1) * kBlockSize;
        return true;
    }
    std::int64_t number() const { return number_; }

private:
    bool newestFirst_;
    std::int64_t next_;
    std::int64_t end_;
    Statement edge_;
    std::int64_t number_ = 0;
    bool ended_ = false;
};

// False when `take` ended it.
bool TakeAll(Statement& rows, const std::vector<EventValue>& values, const std::function<bool(const Statement&)>& take)
{
    Binder bind{rows};
    for (const EventValue& value : values) std::visit(bind, value);
    while (rows.Step()) {
        if (!take(rows)) return false;
    }
    rows.Reset();
    return true;
}

class Row final : public EventRow {
public:
    explicit Row(const Statement& statement) : statement_(statement) {}

    bool IsNull(int column) const override { return statement_.IsNull(column); }
    std::int64_t Integer(int column) const override { return statement_.Integer(column); }
    double Real(int column) const override { return statement_.Real(column); }
    std::string Text(int column) const override { return statement_.Text(column); }
    std::u16string Wide(int column) const override { return statement_.Wide(column); }
    std::string Bytes(int column) const override { return statement_.Bytes(column); }

private:
    const Statement& statement_;
};

}  // namespace

SqliteStore::SqliteStore(const std::string& path, Use use)
    : database_(path, use == Use::Write), conveyor_([this](std::size_t number) {
          if (number > 0) return Conveyor::Work();  // a file has one writer
          return Conveyor::Work([this](EventBatch& batch, Conveyor::Turn&) { StoreBatch(batch); });
      })
{
    const bool empty = database_.Number("select count(*) from sqlite_master") == 0;
    if (empty && use == Use::Read) throw DatabaseError(kWithoutTables);
    if (!empty) CheckVersion();
    if (const std::int64_t missing = database_.MissingBytes()) {
        throw DatabaseError("damaged: the file lacks its last " +
                            (missing == 1 ? "byte" : std::to_string(missing) + " bytes"));
    }
    const std::int64_t version = use == Use::Write ? kVersion : database_.Number("pragma user_version");
    hasHours_ = version >= kFirstWithHours;
    hasBlocks_ = version >= kFirstWithBlocks;
    if (use == Use::Read) return;
    database_.Run("pragma cache_size = -24000");  // KiB; new texts go to any place of their index
    if (database_.Number("pragma user_version") < kVersion) GoForward();
    // What a statement of many rows would have to undo, 4 KiB for each page that it changes. The step to another version
    // came before: it sorts all events.
    database_.Run("pragma temp_store = memory");
    insert_.emplace(database_.get(), InsertSql(1));
    insertMany_.emplace(database_.get(), InsertSql(kRowsAtOnce));
    count_.emplace(database_.get(),
                   "insert into EventHours values (?, ?, ?) on conflict do update set Count = Count + excluded.Count");
}

void SqliteStore::CheckVersion()
{
    if (database_.Number("pragma application_id") != kApplication) {
        throw DatabaseError("a database, but not one of events");
    }
    const std::int64_t version = database_.Number("pragma user_version");
    if (version < 1 || version > kVersion) throw DatabaseError("an event database of another version of orvact");
}

void SqliteStore::GoForward()
{
    database_.Run("begin immediate");
    // Another program may have been faster.
    if (database_.Number("select count(*) from sqlite_master") != 0) CheckVersion();
    for (std::int64_t version = database_.Number("pragma user_version"); version < kVersion; ++version) {
        kSteps[version](database_);
    }
    database_.Run(("pragma user_version = " + std::to_string(kVersion)).c_str());
    database_.Run("commit");
}

std::unique_ptr<EventBatch> SqliteStore::NewBatch()
{
    return std::make_unique<PackedRows>();
}

void SqliteStore::StoreBatch(const EventBatch& batch)
{
    const auto& rows = static_cast<const PackedRows&>(batch);
    database_.Run("begin immediate");
    std::size_t place = 0;
    for (std::uint64_t left = batch.count; left > 0;) {
        const std::uint64_t count = left < kRowsAtOnce ? 1 : kRowsAtOnce;
        Statement& insert = count == 1 ? *insert_ : *insertMany_;
        place = rows.Bind(place, count, insert);
        insert.Step();
        insert.Reset();
        left -= count;
    }
    for (const auto& [hour, count] : HoursOf(batch.minutes)) {
        Binder bind{*count_};
        bind(orv::TimePoint(std::chrono::milliseconds(hour.first)));
        bind(std::int64_t{hour.second});
        bind(static_cast<std::int64_t>(count));
        count_->Step();
        count_->Reset();
    }
    database_.Run("commit");
}

std::int64_t SqliteStore::LastId()
{
    if (!last_) {
        // One statement, so that both are of the same moment. Each is the end of a tree, so the second costs nothing.
        Statement ends(database_.get(), "select (select max(Id) from Events), "
                                        "(select Id from Events order by Stored desc limit 1)");
        ends.Step();
        last_ = ends.Integer(0);
        if (ends.Integer(1) > *last_) throw DatabaseError(kOutOfOrder);
    }
    return *last_;
}

void SqliteStore::Select(const EventFilter& filter, Order order, const Take& take)
{
    SelectRange(filter, 0, order, take);
}

void SqliteStore::SelectAdded(const EventFilter& filter, const Take& take)
{
    const std::int64_t before = LastId();
    last_.reset();
    SelectRange(filter, before, Order::OldestFirst, take);
}

void SqliteStore::SelectRange(EventFilter filter, std::int64_t after, Order order, const Take& take)
{
    const Ids ids = BoundIds(filter, {after + 1, LastId()});
    Ask(filter, order, ids, [&](const EventFilter& asked, std::vector<EventValue>& values) {
        return "select " + StoredEvent::ColumnList() + " from Events where " + SqlOf(asked, kDialect, values) +
               " order by Id" + (order == Order::NewestFirst ? " desc" : "");
    }, [&, last = std::int64_t{0}](const Statement& row) mutable {
        const StoredEvent event{Row(row)};
        if (last != 0 && (event.id > last) != (order == Order::OldestFirst)) throw DatabaseError(kOutOfOrder);
        last = event.id;
        return take(event);
    });
}

void SqliteStore::Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take)
{
    Ask(filter, Order::OldestFirst, {0, LastId()}, [&](const EventFilter& asked, std::vector<EventValue>& values) {
        const Counted counted = hasHours_ ? Counted::ByHour : Counted::Nowhere;
        return CountSql(asked, grouping, kDialect, counted, values);
    }, [&](const Statement& row) {
        take(orv::ToUtf8(row.Wide(0)), static_cast<std::uint64_t>(row.Integer(1)));
        return true;
    });
}

// The rows of those ids, of all events at once or of one block after the other.
void SqliteStore::Ask(EventFilter filter, Order order, Ids ids, const MakeSql& makeSql, const TakeRow& take)
{
    const bool inBlocks = hasBlocks_ && AsksForBlocks(filter, ids);
    if (inBlocks) {
        // The first, so that its value is the first.
        filter.conditions.insert(filter.conditions.begin(), {kBlock, EventCondition::Asks::OneOf, {std::int64_t{0}}});
    }
    std::vector<EventValue> values;
    const std::string sql = makeSql(filter, values);
    Statement rows(database_.get(), sql);
    if (!inBlocks) {
        TakeAll(rows, values, take);
        return;
    }
    Blocks blocks(database_, order == Order::NewestFirst, ids);
    for (bool more = true; more && blocks.Next();) {
        values.front() = blocks.number();
        more = TakeAll(rows, values, take);
    }
}

void SqliteStore::WaitForMore()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

// In small steps, so that nobody else waits long for his turn.
std::string SqliteStore::Prune(std::int64_t before)
{
    Statement step(database_.get(),
                   "delete from Events where Id in (select Id from Events where Stored < ? limit 1000)");
    std::int64_t gone = 0;
    for (std::int64_t last = 1; last > 0 && !Interrupted(); gone += last) {
        step.BindCopy(1, StoredTime(before));
        step.Step();
        step.Reset();
        last = sqlite3_changes(database_.get());
    }
    return std::to_string(gone) + (gone == 1 ? " event is gone" : " events are gone");
}
