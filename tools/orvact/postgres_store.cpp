#include "postgres_store.h"

#include <unistd.h>

#include <algorithm>
#include <limits>

#include "event_blocks.h"
#include "postgres_rows.h"
#include "postgres_schema.h"
#include "postgres_sender.h"
#include "report.h"

namespace Postgres {

namespace {

constexpr std::uint64_t kBatch = 15'000;
constexpr std::int64_t kNumbers = 100'000;  // taken for a program that shares the name of its recorder
constexpr std::size_t kSenders = 3;
constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();

// The rows of one block after the other, of those that hold events: ids may leave gaps of any size. With an order in
// `condition` they come in that of their ids, as the one loop is run inside the other.
std::string RowsInBlocks(Ids ids, bool newestFirst, const std::string& condition)
{
    const std::string bits = std::to_string(kBlockBits);
    const std::string edge = std::string("select ") + (newestFirst ? "max" : "min") + "(Id) >> " + bits +
                             " from Events where Id between " + std::to_string(ids.first) + " and " +
                             std::to_string(ids.last);
    const std::string begin = "(Block << " + bits + ")";
    // By the last id of the block: there is none behind it in the last block of all.
    const std::string beyond =
        newestFirst ? " and Id < " + begin : " and Id > " + begin + " + " + std::to_string((1 << kBlockBits) - 1);
    return "(with recursive Blocks (Block) as (" + edge + " union all select (" + edge + beyond +
           ") from Blocks where Block is not null) select Found.* from Blocks, lateral (select * from Events where " +
           kBlock + " = Block and " + condition + ") as Found) as Events";
}

std::string WholeRows(const EventFilter&, const std::string& condition)
{
    return "Events where " + condition;
}

std::string Rows(const EventFilter& filter, const std::string& condition, bool newestFirst = false)
{
    const Ids ids = IdsOf(filter);
    return AsksForBlocks(filter, ids) ? RowsInBlocks(ids, newestFirst, condition) : WholeRows(filter, condition);
}

constexpr SqlDialect kDialect = {
    [](std::size_t number) { return "$" + std::to_string(number); },
    [](const std::string& column, const std::string& mark) {
        return "(" + column + " is not null and " + Folded(column) + " in ('', lower(" + mark + " collate \"C\")))";
    },
    "0 + ",  // else it also reads all entries of the code, to combine them with the few of the text
    [](const std::string& time) { return "date_trunc('hour', " + time + ", 'UTC')"; },
    [](const std::string& time) { return "date_trunc('day', " + time + ", 'UTC')"; },
    [](const std::string& key) { return "to_char(" + key + " at time zone 'UTC', 'YYYY-MM-DD\"T\"HH24\":00Z\"')"; },
    [](const std::string& key) { return "to_char(" + key + " at time zone 'UTC', 'YYYY-MM-DD')"; },
    [](const EventFilter& filter, const std::string& where) { return Rows(filter, where); },
};

std::string HostName()
{
    char name[256] = "";
    gethostname(name, sizeof name - 1);
    return *name ? name : "unknown";
}

}  // namespace

class Store final : public EventStore {
public:
    Store(const std::string& home, Use use, const StoreOptions& options)
        : sending_{home, options.retry, options.numbered, 0, {}},
          connection_(home, options.retry),
          conveyor_([this](std::size_t number) { return NewWorker(number); },
                    [this](const std::string& message) { Say(message); })
    {
        sending_.recorderName = options.recorder.empty() ? HostName() : options.recorder;
        connection_.Open();
        if (use == Use::Write) {
            Persistently([&] {
                MakeSchema(*connection_);
                RegisterRecorder();
            });
        } else {
            version_ = CheckSchema(*connection_);
        }
    }

    std::uint64_t batch() const override { return kBatch; }
    std::uint64_t known() const override { return sending_.numbered ? static_cast<std::uint64_t>(known_) : 0; }

    std::int64_t LastId() override
    {
        BeginMoment();
        return connection_->Number("select max(Id) from Events");
    }

    void Select(const EventFilter& filter, Order order, const Take& take) override
    {
        BeginMoment();
        std::vector<EventValue> values;
        const bool newestFirst = order == Order::NewestFirst;
        const std::string condition =
            SqlOf(filter, kDialect, values) + (newestFirst ? " order by Id desc" : " order by Id");
        const std::string rows = hasBlocks() ? Rows(filter, condition, newestFirst) : WholeRows(filter, condition);
        // The newest are asked for when a few of them will do.
        Walk(rows, values, newestFirst, take);
    }

    void SelectAdded(const EventFilter& filter, const Take& take) override
    {
        const std::string before = moment_;
        EndMoment();
        BeginMoment();
        std::vector<EventValue> values;
        std::string where = SqlOf(filter, kDialect, values);
        values.emplace_back(before);
        // What was under way at that moment may have been added since, with any number.
        where += " and " + Added(values.size());
        if (version_ >= kFirstWithBatches) {
            const std::int64_t first = FirstAdded(before);
            values.emplace_back(first);
            where += " and Id >= " + kDialect.mark(values.size());
            if (first == kNone) return EndMoment();
        }
        Walk(WholeRows(filter, where + " order by Id"), values, false, take);
        EndMoment();
    }

    void Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take) override
    {
        BeginMoment();
        std::vector<EventValue> values;
        SqlDialect dialect = kDialect;
        if (!hasBlocks()) dialect.rows = WholeRows;
        const std::string sql = CountSql(filter, grouping, dialect, counted(), values);
        const Result groups = connection_->Run(sql, values);
        for (int row = 0; row < groups.rows(); ++row) {
            take(std::string(groups.Bytes(row, 0)), static_cast<std::uint64_t>(groups.Integer(row, 1)));
        }
    }

    void WaitForMore() override
    {
        EndMoment();  // who waits inside a transaction hears nothing
        if (!listening_) connection_->Script(std::string("listen ") + kNotice);
        listening_ = true;
        connection_->WaitForNotice(std::chrono::milliseconds(500));
    }

    std::string Prune(std::int64_t before) override
    {
        std::string list;
        for (const std::string& month : DropPartitions(*connection_, before))
            list += (list.empty() ? "" : ", ") + month;
        return list.empty() ? "no month is that old" : "the events of " + list + " are gone";
    }

private:
    // ---- reading

    bool hasBlocks() const { return version_ >= kFirstWithBlocks; }

    Counted counted() const
    {
        if (version_ >= kFirstWithMinutes) return Counted::ByHourAndMinute;
        return version_ >= kFirstWithHours ? Counted::ByHour : Counted::Nowhere;
    }

    void BeginMoment()
    {
        if (reading_) return;
        // The server compiles a question that it takes for a long one, which lasts longer than most answers here.
        connection_->Script("begin isolation level repeatable read read only; set local jit = off");
        moment_ = connection_->Text("select pg_current_snapshot()::text");
        reading_ = true;
    }

    void EndMoment()
    {
        if (reading_) connection_->Script("commit");
        reading_ = false;
    }

    // What was under way in a snapshot, or came later.
    static std::string Added(std::size_t number)
    {
        const std::string mark = kDialect.mark(number) + "::pg_snapshot";
        return "Xact >= pg_snapshot_xmin(" + mark + ") and not pg_visible_in_snapshot(Xact, " + mark + ")";
    }

    std::int64_t FirstAdded(const std::string& snapshot)
    {
        return connection_->Number(
            "select coalesce(min(FirstId), " + std::to_string(kNone) + ") from EventBatches where " + Added(1),
            {snapshot});
    }

    // In pieces, so that any number of rows takes little memory.
    void Walk(const std::string& rows, const std::vector<EventValue>& values, bool few, const Take& take)
    {
        connection_->Script(std::string("set local cursor_tuple_fraction = ") + (few ? "0.0001" : "1"));
        connection_->Run(
            "declare EventRows no scroll cursor for select " +
                StoredEvent::ColumnList("to_char(Stored at time zone 'UTC', 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')") +
                " from " + rows,
            values);
        for (bool more = true; more;) more = TakePiece(take);
        connection_->Script("close EventRows");
    }

    // False behind the last row, or when no more are wanted.
    bool TakePiece(const Take& take)
    {
        const Result piece = connection_->Run("fetch 500 from EventRows");
        for (int row = 0; row < piece.rows(); ++row) {
            if (!take(StoredEvent(Row(piece, row)))) return false;
        }
        return piece.rows() > 0;
    }

    // ---- storing

    void Say(const std::string& message) { Complain("retry", message, {}, HomeName(sending_.home)); }

    template <class Work>
    void Persistently(const Work& work)
    {
        connection_.Persistently(work, [this](const std::string& message) { Say(message); });
    }

    void RegisterRecorder()
    {
        const std::string& name = sending_.recorderName;
        connection_->Run("insert into Recorders (Name) values ($1) on conflict do nothing", {name});
        const Result row = connection_->Run("select Id, Last from Recorders where Name = $1", {name});
        sending_.recorder = row.Integer(0, 0);
        known_ = row.Integer(0, 1);
        if (sending_.numbered) next_ = known_ + 1;
    }

    std::unique_ptr<EventBatch> NewBatch() override
    {
        return std::make_unique<CopiedRows>(static_cast<std::int32_t>(sending_.recorder));
    }

    void Prepare(EventBatch& batch) override
    {
        const auto count = static_cast<std::int64_t>(batch.count);
        Persistently([&] {
            TakeNumbers(count);
            const Result ids = TakeIds(count);
            static_cast<CopiedRows&>(batch).Number(next_, ids.Integer(0, 0), ids.Integer(0, 1));
        });
        next_ += count;
    }

    // Numbers that nobody else gets. Those that are not used are left out.
    void TakeNumbers(std::int64_t count)
    {
        if (sending_.numbered || end_ - next_ >= count) return;
        const std::int64_t last = connection_->Number(
            "update Recorders set Last = Last + $1 where Id = $2 returning Last", {kNumbers, sending_.recorder});
        next_ = last - kNumbers + 1;
        end_ = last + 1;
    }

    // So many ids one behind the other: the first, and how far one is from the next.
    Result TakeIds(std::int64_t count)
    {
        return connection_->Run(
            "select setval('EventIds', first + ($1 - 1) * step) - ($1 - 1) * step, step from (select "
            "nextval('EventIds') as first, seqincrement as step from pg_sequence, pg_advisory_xact_lock(1332901446) "
            "where seqrelid = 'EventIds'::regclass) as taken",
            {count});
    }

    // Several batches are sent at once, as one process of the server is slower than the tool.
    Conveyor::Work NewWorker(std::size_t number)
    {
        if (number == kSenders) return {};
        std::shared_ptr<Sender> sender;
        const auto open = [&] { sender = std::make_shared<Sender>(sending_); };
        try {
            number == 0 ? Persistently(open) : open();
        } catch (const ConnectionLost&) {
            if (number == 0) throw;
            return {};  // a server that takes no more connections is no reason to wait
        }
        return [sender](EventBatch& batch, Conveyor::Turn& turn) {
            sender->Send(static_cast<const CopiedRows&>(batch), turn);
        };
    }

    Conveyor& conveyor() override { return conveyor_; }

    Sending sending_;
    Link connection_;

    std::int64_t version_ = kCurrentVersion;
    bool reading_ = false;  // in the transaction of a moment
    std::string moment_;    // what is seen in it, as the server writes it
    bool listening_ = false;

    std::int64_t known_ = 0;  // numbers of the recorder that are there already
    std::int64_t next_ = 1;   // number of the next event
    std::int64_t end_ = 0;    // behind the numbers that are ours
    Conveyor conveyor_;
};

}  // namespace Postgres

std::unique_ptr<EventStore> OpenPostgresStore(const std::string& home, EventStore::Use use, const StoreOptions& options)
{
    return std::make_unique<Postgres::Store>(home, use, options);
}
