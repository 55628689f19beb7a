// What the options of a command ask of an event store, and the events that fit.
#pragma once

#include <cstdint>
#include <functional>

#include "commands.h"
#include "event_store.h"
#include "patterns.h"
#include "progress.h"

class EventQuery {
public:
    // Reports what is no code, class, time, range, number or pattern; sound() is false then.
    explicit EventQuery(const EventsListOptions& options);

    bool sound() const { return sound_; }
    // Null unless the store can tell by its rows alone which events fit.
    const EventFilter* ForStore() const { return rules_.Size() == 0 && limit_ == 0 ? &filter_ : nullptr; }

    // Called for each event that fits, oldest first, with its action, which is empty where the event cannot be
    // restored.
    using Take = std::function<void(const StoredEvent&, const Action&)>;
    // The first walks over the newest only when --limit says so, and shows how far it is; the second over what was
    // added since the last walk, whatever --limit says.
    void Run(EventStore& store, const Take& take);
    void RunAdded(EventStore& store, const Take& take);

private:
    bool Fits(const Action& action) const { return rules_.Size() == 0 || !rules_.Match(action).empty(); }
    std::int64_t FirstOfNewest(EventStore& store, std::int64_t last) const;
    bool Offer(const StoredEvent& event, const Take& take) const;

    EventFilter filter_;
    orv::RuleSet rules_;
    std::size_t limit_ = 0;
    bool sound_ = false;
};

// Runs work over a store; its faults are reported. Returns the exit code.
int OverStore(const std::string& home, const std::function<int()>& work);
