// What events list makes of the events that it finds: lines for people, a form, JSON, a table, groups or a number.
#pragma once

#include <memory>

#include "commands.h"
#include "event_store.h"

class EventResults {
public:
    virtual ~EventResults() = default;
    // The action is empty when the event cannot be restored.
    virtual void Add(const StoredEvent& event, const Action& action) = 0;
    // Has the store count what fits, `found` when there is any. False when it cannot; then all of it is to be added.
    virtual bool Count(EventStore& store, const EventFilter& filter, bool& found);
    virtual void Finish() {}
    bool sound() const { return sound_; }  // everything could be written

protected:
    bool sound_ = true;
};

// What the options ask for. Null, with a report, if the form does not exist, or needs an end that `follow` does not
// have. `last` is the greatest id.
std::unique_ptr<EventResults> ResultsFor(const EventsListOptions& options, std::int64_t last, bool endless);
