// Counts of events by action, class, day, hour, user or channel.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "action_view.h"
#include "event_record.h"
#include "event_store.h"

// The class of an action by its code; "" when the catalogue does not know it.
std::string ClassOf(std::uint32_t code);
// Whom an event names: the first of User1, ClientAccount, User2 that its columns hold; "" for nobody.
std::string UserOf(const TOrvEventData& record);
// What an event is about, by the role in the action: "video input 7", "output contact 3"; "" for nothing.
std::string ChannelOf(const Action& action);

enum class GroupsForm { Table, Json, Csv };

class EventGroups {
public:
    static const std::vector<std::string>& Keys();  // what there is to group by

    explicit EventGroups(const std::string& key) : key_(key) {}

    void Add(const StoredEvent& event, const Action& action) { ++counts_[GroupOf(event, action)]; }
    // Has the store count. False when it cannot: the action has to be read to know the group.
    bool Count(EventStore& store, const EventFilter& filter);
    bool empty() const { return counts_.empty(); }
    // Hours and days in their order, others with the most events first.
    void Print(GroupsForm form) const;

private:
    std::string GroupOf(const StoredEvent& event, const Action& action) const;
    std::optional<EventGrouping> Grouping() const;

    std::string key_;
    std::map<std::string, std::uint64_t> counts_;
};
