#include "postgres_sender.h"

#include <algorithm>
#include <thread>

#include "console.h"
#include "postgres_schema.h"

namespace Postgres {

namespace {

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

void Link::Reopen(const std::string& reason, const Say& say)
{
    say(reason + "; tries again until the server is there");
    for (Patience patience; patience.Wait();) {
        try {
            return Open();
        } catch (const ConnectionLost&) {
        }
    }
    throw DatabaseError("interrupted while the server was away");
}

Sender::Sender(const Sending& sending) : sending_(sending), link_(sending.home, sending.retry)
{
    link_.Open();
}

void Sender::Send(const CopiedRows& batch, Conveyor::Turn& turn)
{
    doubtful_ = false;
    bool waited = false;
    try {
        CopyAll(batch);
        turn.Wait();
        waited = true;
        Commit(batch);
    } catch (const ConnectionLost& lost) {
        if (!waited) turn.Wait();
        StoreAfterLoss(batch, lost.what(), turn);
    }
}

// In a transaction that stays open.
void Sender::CopyAll(const CopiedRows& batch)
{
    const std::chrono::year_month month = MonthOf(batch.stored());
    if (month != month_) MakePartitions(*link_, batch.stored());
    month_ = month;
    link_->BeginCopy("begin; select pg_advisory_xact_lock(" + LockOf(batch) + "); copy Events (" + batch.Columns() +
                     ") from stdin (format binary)");
    batch.Send([this](std::string_view piece) { link_->PutCopy(piece); });
    link_->EndCopy();
}

// What other transactions of this program wait for is done last, when those before it are committed.
void Sender::Commit(const CopiedRows& batch)
{
    if (sending_.numbered) {
        const std::int64_t before = batch.first() - 1;
        const Result changed = link_->Run("update Recorders set Last = $1 where Id = $2 and Last = $3",
                                          {before + static_cast<std::int64_t>(batch.count), sending_.recorder, before});
        if (changed.changed() != 1)
            throw DatabaseError("another program stores as recorder " + sending_.recorderName + " too");
    }
    doubtful_ = true;
    link_->Script("insert into EventBatches (Recorder, First, FirstId, Stored) values (" +
                  std::to_string(sending_.recorder) + ", " + std::to_string(batch.first()) + ", " +
                  std::to_string(batch.firstId()) + ", '" + StoredTime(batch.stored()) + "'); " +
                  Counting("EventHours", "Hour", HoursOf(batch.minutes)) +
                  Counting("EventMinutes", "Minute", batch.minutes) + "notify " + kNotice + "; commit");
    doubtful_ = false;
}

// In the order of their keys, so that two recorders of one name never wait for each other in a circle.
std::string Sender::Counting(const std::string& table, const std::string& time, const EventCounts& counts) const
{
    std::string rows;
    for (const auto& [key, count] : counts) {
        rows += (rows.empty() ? "('" : ", ('") + StoredTime(key.first) + "', " + std::to_string(key.second) + ", " +
                std::to_string(sending_.recorder) + ", " + std::to_string(count) + ")";
    }
    return "insert into " + table + " values " + rows + " on conflict (" + time +
           ", Code, Recorder) do update set Count = " + table + ".Count + excluded.Count; ";
}

// What the transaction of a batch holds as long as it is under way.
std::string Sender::LockOf(const CopiedRows& batch) const
{
    return std::to_string(sending_.recorder) + ", " + std::to_string(batch.first() & 0x7FFFFFFF);
}

bool Sender::IsStored(const CopiedRows& batch)
{
    // The session that was lost may still be at its commit.
    link_->Run("select pg_advisory_xact_lock_shared(" + LockOf(batch) + ")");
    return link_->Number("select count(*) from EventBatches where Recorder = $1 and First = $2",
                         {sending_.recorder, batch.first()}) != 0;
}

// The server went away with a batch on its way: it is there as a whole or not at all.
void Sender::StoreAfterLoss(const CopiedRows& batch, const std::string& reason, Conveyor::Turn& turn)
{
    if (!link_.retry()) {
        if (!doubtful_ || !LearnWhetherStored(batch, reason)) throw DatabaseError(reason);
        return;
    }
    const auto say = [&](std::string message) { turn.Say(std::move(message)); };
    link_.Reopen(reason, say);
    link_.Persistently(
        [&] {
            if (IsStored(batch)) return;
            CopyAll(batch);
            Commit(batch);
        },
        say);
}

bool Sender::LearnWhetherStored(const CopiedRows& batch, const std::string& reason)
{
    Patience patience;
    for (int attempt = 0; attempt < 5 && patience.Wait(); ++attempt) {
        try {
            link_.Open();
            return IsStored(batch);
        } catch (const ConnectionLost&) {
        }
    }
    throw DatabaseError(reason + "; whether the " + std::to_string(batch.count) +
                        " events of the last batch are stored is not known");
}

}  // namespace Postgres
