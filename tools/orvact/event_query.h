// What the options of a command ask of an event database, and the events that fit.
#pragma once

#include <cstdint>
#include <functional>

#include "commands.h"
#include "event_database.h"
#include "patterns.h"
#include "progress.h"

class EventQuery {
public:
    // Reports what is no code, class, time, range, number or pattern; sound() is false then.
    explicit EventQuery(const EventsListOptions& options);

    bool sound() const { return sound_; }

    // Called for each event that fits, oldest first, with its action, which is empty where the event cannot be
    // restored.
    using Take = std::function<void(const StoredEvent&, const Action&)>;
    // Both return the greatest id that there was. The first walks over the newest only when --limit says so, and shows
    // how far it is; the second over what was stored behind `after`, whatever --limit says.
    std::int64_t Run(EventDatabase& database, const Take& take);
    std::int64_t RunAfter(EventDatabase& database, std::int64_t after, const Take& take);

private:
    bool Fits(const Action& action) const { return rules_.Size() == 0 || !rules_.Match(action).empty(); }
    std::int64_t FirstOfNewest(EventDatabase& database) const;
    std::int64_t Walk(EventDatabase& database, std::int64_t after, const Take& take, Progress* progress);

    RowFilter filter_;
    orv::RuleSet rules_;
    std::size_t limit_ = 0;
    bool sound_ = false;
};

// Runs work over a database; its faults are reported. Returns the exit code.
int OverDatabase(const std::string& path, const std::function<int()>& work);
