#include "postgres_store.h"

#include <unistd.h>

#include <algorithm>
#include <optional>
#include <thread>

#include "console.h"
#include "postgres_rows.h"
#include "postgres_schema.h"
#include "report.h"

namespace Postgres {

namespace {

constexpr std::uint64_t kBatch = 10'000;
constexpr std::int64_t kNumbers = 100'000;  // taken for a program that shares the name of its recorder
constexpr std::size_t kPiece = 1 << 18;     // bytes of a copy on their way at once
constexpr const char* kNotice = "orvact_events";

constexpr SqlDialect kDialect = {
    [](std::size_t number) { return "$" + std::to_string(number); },
    [](const std::string& column, const std::string& mark) {
        return "(" + column + " is not null and " + Folded(column) + " in ('', lower(" + mark + " collate \"C\")))";
    },
    "",
    [](const std::string& time) { return "date_trunc('hour', " + time + ", 'UTC')"; },
    [](const std::string& time) { return "date_trunc('day', " + time + ", 'UTC')"; },
    [](const std::string& key) { return "to_char(" + key + " at time zone 'UTC', 'YYYY-MM-DD\"T\"HH24\":00Z\"')"; },
    [](const std::string& key) { return "to_char(" + key + " at time zone 'UTC', 'YYYY-MM-DD')"; },
};

std::string HostName()
{
    char name[256] = "";
    gethostname(name, sizeof name - 1);
    return *name ? name : "unknown";
}

// Waits longer from time to time; false when the user wants no more of it.
class Patience {
public:
    bool Wait()
    {
        using namespace std::chrono;
        const auto end = steady_clock::now() + pause_;
        while (steady_clock::now() < end) {
            if (Interrupted()) return false;
            std::this_thread::sleep_for(milliseconds(50));
        }
        pause_ = std::min(2 * pause_, milliseconds(15'000));
        return true;
    }

private:
    std::chrono::milliseconds pause_{250};
};

}  // namespace

// Events are numbered by their recorder before they are sent, so a batch can be looked for when the answer to its
// commit was lost, and is never there twice.
class Store final : public EventStore {
public:
    Store(const std::string& home, Use use, const StoreOptions& options) : home_(home), options_(options)
    {
        connection_.emplace(home);
        if (use == Use::Write) {
            Persistently([&] {
                MakeSchema(*connection_);
                RegisterRecorder();
            });
        } else {
            hasHours_ = CheckSchema(*connection_);
        }
    }

    std::uint64_t batch() const override { return kBatch; }
    std::uint64_t known() const override { return options_.numbered ? static_cast<std::uint64_t>(known_) : 0; }

    std::int64_t LastId() override
    {
        BeginMoment();
        return connection_->Number("select max(Id) from Events");
    }

    void Select(const EventFilter& filter, Order order, const Take& take) override
    {
        BeginMoment();
        std::vector<EventValue> values;
        const std::string where = SqlOf(filter, kDialect, values);
        Walk(where, values, order, take);
    }

    void SelectAdded(const EventFilter& filter, const Take& take) override
    {
        const std::string before = moment_;
        EndMoment();
        BeginMoment();
        std::vector<EventValue> values;
        std::string where = SqlOf(filter, kDialect, values);
        values.emplace_back(before);
        const std::string mark = kDialect.mark(values.size()) + "::pg_snapshot";
        // What was under way at that moment may have been added since, with any number.
        where += " and Xact >= pg_snapshot_xmin(" + mark + ") and not pg_visible_in_snapshot(Xact, " + mark + ")";
        Walk(where, values, Order::OldestFirst, take);
        EndMoment();
    }

    void Count(const EventFilter& filter, EventGrouping grouping, const TakeGroup& take) override
    {
        BeginMoment();
        std::vector<EventValue> values;
        const std::string sql = CountSql(filter, grouping, kDialect, hasHours_, values);
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

    void BeginMoment()
    {
        if (reading_) return;
        connection_->Script("begin isolation level repeatable read read only");
        moment_ = connection_->Text("select pg_current_snapshot()::text");
        reading_ = true;
    }

    void EndMoment()
    {
        if (reading_) connection_->Script("commit");
        reading_ = false;
    }

    // In pieces, so that any number of rows takes little memory.
    void Walk(const std::string& where, const std::vector<EventValue>& values, Order order, const Take& take)
    {
        // The newest are asked for when a few of them will do.
        const bool few = order == Order::NewestFirst;
        connection_->Script(std::string("set local cursor_tuple_fraction = ") + (few ? "0.0001" : "1"));
        connection_->Run(
            "declare EventRows no scroll cursor for select " +
                StoredEvent::ColumnList("to_char(Stored at time zone 'UTC', 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')") +
                " from Events where " + where + " order by Id" + (few ? " desc" : ""),
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

    std::string RecorderName() const { return options_.recorder.empty() ? HostName() : options_.recorder; }

    void RegisterRecorder()
    {
        connection_->Run("insert into Recorders (Name) values ($1) on conflict do nothing", {RecorderName()});
        const Result row = connection_->Run("select Id, Last from Recorders where Name = $1", {RecorderName()});
        recorder_ = row.Integer(0, 0);
        known_ = row.Integer(0, 1);
        if (options_.numbered) next_ = known_ + 1;
    }

    // Numbers that nobody else gets. Those that are not used are left out.
    void TakeNumbers()
    {
        if (options_.numbered || end_ - next_ >= static_cast<std::int64_t>(kBatch)) return;
        const std::int64_t last = connection_->Number(
            "update Recorders set Last = Last + $1 where Id = $2 returning Last", {kNumbers, recorder_});
        next_ = last - kNumbers + 1;
        end_ = last + 1;
    }

    void Append(const NewEvent& event) override
    {
        if (first_ == 0) BeginBatch(event.stored);
        copy_.Add(event, static_cast<std::int32_t>(recorder_), next_++);
        // A failure shows at the end of the batch, where it is dealt with.
        if (!sending_ || copy_.data().size() - sent_ < kPiece) return;
        try {
            SendPiece();
        } catch (const DatabaseError&) {
            sending_ = false;
        }
    }

    void BeginBatch(std::int64_t stored)
    {
        stored_ = stored;
        copy_.Clear();
        Persistently([&] {
            TakeNumbers();
            first_ = next_;
            BeginCopy();
        });
    }

    void BeginCopy()
    {
        if (MonthOf(stored_) != month_) MakePartitions(*connection_, stored_);
        month_ = MonthOf(stored_);
        connection_->BeginCopy("begin; select pg_advisory_xact_lock(" + LockOfBatch() + "); copy Events (" +
                               CopiedColumns() + ") from stdin (format binary)");
        sending_ = true;
        sent_ = 0;
        doubtful_ = false;
    }

    void SendPiece()
    {
        connection_->PutCopy(std::string_view(copy_.data()).substr(sent_));
        sent_ = copy_.data().size();
    }

    void CommitAll() override
    {
        copy_.End();
        try {
            if (!sending_) BeginCopy();
            FinishBatch();
        } catch (const ConnectionLost& lost) {
            StoreAfterLoss(lost.what());
        }
        sending_ = false;
        first_ = 0;
    }

    void FinishBatch()
    {
        SendPiece();
        connection_->EndCopy();
        if (options_.numbered) {
            const Result changed = connection_->Run("update Recorders set Last = $1 where Id = $2 and Last = $3",
                                                    {next_ - 1, recorder_, first_ - 1});
            if (changed.changed() != 1)
                throw DatabaseError("another program stores as recorder " + RecorderName() + " too");
        }
        CountHours();
        doubtful_ = true;
        connection_->Script(std::string("notify ") + kNotice + "; commit");
        doubtful_ = false;
    }

    // In the order of their keys, so that two recorders of one name never wait for each other in a circle.
    void CountHours()
    {
        std::string rows;
        for (const auto& [hour, count] : added()) {
            rows += (rows.empty() ? "('" : ", ('") + StoredTime(hour.first) + "', " + std::to_string(hour.second) +
                    ", " + std::to_string(recorder_) + ", " + std::to_string(count) + ")";
        }
        connection_->Script("insert into EventHours values " + rows +
                            " on conflict (Hour, Code, Recorder) do update "
                            "set Count = EventHours.Count + excluded.Count");
    }

    // What the transaction of a batch holds as long as it is under way.
    std::string LockOfBatch() const { return std::to_string(recorder_) + ", " + std::to_string(first_ & 0x7FFFFFFF); }

    bool IsStored()
    {
        // The session that was lost may still be at its commit.
        connection_->Run("select pg_advisory_xact_lock_shared(" + LockOfBatch() + ")");
        return connection_->Number("select count(*) from Events where Recorder = $1 and Sequence = $2",
                                   {recorder_, first_}) != 0;
    }

    // The server went away with a batch on its way: it is there as a whole or not at all.
    void StoreAfterLoss(const std::string& reason)
    {
        const bool doubtful = doubtful_;
        if (!options_.retry) {
            if (!doubtful || !LearnWhetherStored(reason)) throw DatabaseError(reason);
            return;
        }
        Reconnect(reason);
        Persistently([&] { StoreAgain(); });
    }

    void StoreAgain()
    {
        if (IsStored()) return;
        BeginCopy();
        FinishBatch();
    }

    // Does it, and with --retry once more whenever the server goes away.
    template <class Work>
    void Persistently(const Work& work)
    {
        for (;;) {
            try {
                return work();
            } catch (const ConnectionLost& lost) {
                if (!options_.retry) throw;
                Reconnect(lost.what());
            }
        }
    }

    bool LearnWhetherStored(const std::string& reason)
    {
        Patience patience;
        for (int attempt = 0; attempt < 5 && patience.Wait(); ++attempt) {
            try {
                connection_.emplace(home_);
                return IsStored();
            } catch (const ConnectionLost&) {
            }
        }
        throw DatabaseError(reason + "; whether the " + std::to_string(next_ - first_) +
                            " events of the last batch are stored is not known");
    }

    void Reconnect(const std::string& reason)
    {
        Complain("retry", reason + "; tries again until the server is there", {}, HomeName(home_));
        for (Patience patience; patience.Wait();) {
            try {
                connection_.emplace(home_);
                sending_ = false;
                return;
            } catch (const ConnectionLost&) {
            }
        }
        throw DatabaseError("interrupted while the server was away");
    }

    std::string home_;
    StoreOptions options_;
    std::optional<Connection> connection_;

    bool hasHours_ = true;
    bool reading_ = false;  // in the transaction of a moment
    std::string moment_;    // what is seen in it, as the server writes it
    bool listening_ = false;

    std::int64_t recorder_ = 0;
    std::int64_t known_ = 0;   // numbers of the recorder that are there already
    std::int64_t next_ = 1;    // number of the next event
    std::int64_t end_ = 0;     // behind the numbers that are ours
    std::int64_t first_ = 0;   // of the batch; 0 when there is none
    std::int64_t stored_ = 0;  // the time of its first event
    CopyData copy_;            // the whole batch
    std::size_t sent_ = 0;     // of it, in the transaction that is open
    bool sending_ = false;
    bool doubtful_ = false;  // a commit is under way
    std::chrono::year_month month_{};
};

}  // namespace Postgres

std::unique_ptr<EventStore> OpenPostgresStore(const std::string& home, EventStore::Use use, const StoreOptions& options)
{
    return std::make_unique<Postgres::Store>(home, use, options);
}
