#include "event_groups.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "console.h"
#include "csv.h"
#include "table.h"
#include "text.h"

namespace {

std::string Text(const TOrvEventText& field)
{
    if (!field.text) return {};
    return orv::ToUtf8({reinterpret_cast<const char16_t*>(field.text), static_cast<std::size_t>(field.length)});
}

std::string Text(const orv::Channel& channel)
{
    if (channel.number != 0) return std::to_string(channel.number);
    if (channel.id != 0) return "id " + std::to_string(channel.id);
    return channel.name.empty() ? "0" : "\"" + orv::ToUtf8(channel.name) + "\"";
}

}  // namespace

std::string ClassOf(std::uint32_t code)
{
    const ActionView* view = FindAction(code);
    return view ? view->className : std::string();
}

std::string UserOf(const TOrvEventData& record)
{
    enum { kFirstUser, kSecondUser, kHost, kAccount };
    for (const int field : {kFirstUser, kAccount, kSecondUser}) {
        const std::string user = Text(record.userField[field]);
        if (!user.empty()) return user;
    }
    return {};
}

std::string ChannelOf(const Action& action)
{
    if (!action) return {};
    struct Role {
        const char* name;
        std::optional<orv::Channel> (Action::*get)() const;
    };
    constexpr Role kRoles[] = {{"video input ", &Action::VideoInput},
                               {"input contact ", &Action::InputContact},
                               {"output contact ", &Action::OutputContact},
                               {"video output ", &Action::VideoOutput}};
    for (const Role& role : kRoles) {
        if (const auto channel = (action.*role.get)()) return role.name + Text(*channel);
    }
    return {};
}

const std::vector<std::string>& EventGroups::Keys()
{
    static const std::vector<std::string> keys = {"class", "action", "hour", "day", "user", "channel"};
    return keys;
}

std::string EventGroups::GroupOf(const StoredEvent& event, const Action& action) const
{
    if (key_ == "class") return ClassOf(event.record.code);
    if (key_ == "action") return event.name;
    // The stored time reads as ISO 8601 in UTC, whose beginning is the hour and the day.
    if (key_ == "hour") return event.stored.substr(0, 13) + ":00Z";
    if (key_ == "day") return event.stored.substr(0, 10);
    return key_ == "user" ? UserOf(event.record) : ChannelOf(action);
}

// Nothing for what only the action tells.
std::optional<EventGrouping> EventGroups::Grouping() const
{
    if (key_ == "class") return EventGrouping::Code;
    if (key_ == "action") return EventGrouping::Name;
    if (key_ == "hour") return EventGrouping::Hour;
    if (key_ == "day") return EventGrouping::Day;
    return key_ == "user" ? std::optional(EventGrouping::User) : std::nullopt;
}

bool EventGroups::Count(EventStore& store, const EventFilter& filter)
{
    const auto grouping = Grouping();
    if (!grouping) return false;
    store.Count(filter, *grouping, [&](const std::string& group, std::uint64_t count) {
        // Several codes make one class, so counts are added.
        counts_[key_ == "class" ? ClassOf(static_cast<std::uint32_t>(std::stoll(group))) : group] += count;
    });
    return true;
}

void EventGroups::Print(GroupsForm form) const
{
    std::vector<std::pair<std::string, std::uint64_t>> groups(counts_.begin(), counts_.end());
    if (key_ != "hour" && key_ != "day") {
        std::stable_sort(groups.begin(), groups.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
    }
    if (form == GroupsForm::Csv) ::Print(CsvLine({key_, "count"}));
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    Table table;
    table.NumbersIn(0);
    for (const auto& [name, count] : groups) {
        if (form == GroupsForm::Csv) ::Print(CsvLine({name, std::to_string(count)}));
        rows.push_back({{key_, name}, {"count", count}});
        table.Row({std::to_string(count), name.empty() ? "(none)" : Visible(name)});
    }
    if (form == GroupsForm::Table) table.Write();
    if (form == GroupsForm::Json) {
        ::Print(rows.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
    }
}
