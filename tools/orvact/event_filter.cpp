#include "event_filter.h"

#include <limits>

#include "catalogue_view.h"
#include "event_store.h"
#include "event_time.h"
#include "report.h"
#include "text.h"
#include "whole_number.h"

namespace {

using Asks = EventCondition::Asks;

// By code or by name. Code 0 is that of actions that the catalogue does not know.
bool AddCodes(const std::vector<std::string>& wanted, EventFilter& filter)
{
    std::vector<EventValue> codes;
    for (const std::string& text : wanted) {
        std::uint32_t code = 0;
        if (!ParseWhole(text, code)) code = ActionCode(text);
        if (code == 0 && text != "0") {
            ReportUnknown("action", text, ActionNames());
            return false;
        }
        codes.emplace_back(std::int64_t{code});
    }
    if (!codes.empty()) filter.Add("Code", Asks::OneOf, codes);
    return true;
}

// All wanted classes together are one condition.
bool AddClasses(const std::vector<std::string>& wanted, EventFilter& filter)
{
    if (wanted.empty()) return true;
    const std::vector<ActionView> actions = Actions();
    std::vector<EventValue> codes;
    for (const std::string& name : wanted) {
        const std::size_t before = codes.size();
        for (const ActionView& action : actions) {
            if (LowerCaseAscii(action.className) == LowerCaseAscii(name)) codes.emplace_back(std::int64_t{action.code});
        }
        if (codes.size() > before) continue;
        ReportUnknown("class", name, ClassNames());
        return false;
    }
    // A class is its codes: the rows hold no class.
    filter.Add("Code", Asks::OneOf, codes);
    return true;
}

// An age counts back from now.
bool AddTime(const std::string& time, Asks asks, EventFilter& filter)
{
    if (time.empty()) return true;
    orv::TimePoint stored;
    std::int64_t age = 0;
    if (ParseAge(time, age)) {
        stored = TimeAt(Now() - age);
    } else if (!ParseTime(time, stored)) {
        Complain("time", "'" + Visible(time) +
                             "' is no time; give a date such as 2026-11-21, 2026-11-21T07:30 (UTC) or "
                             "2026-11-21T07:30+02:00, or an age such as 90s, 15m, 2h, 3d or 1w");
        return false;
    }
    filter.Add("Stored", asks, {stored});
    return true;
}

// "5", "5..9", "5.." or "..9".
bool AddIds(const std::string& ids, EventFilter& filter)
{
    if (ids.empty()) return true;
    const std::size_t dots = ids.find("..");
    const std::string first = ids.substr(0, dots);
    const std::string last = dots == std::string::npos ? first : ids.substr(dots + 2);
    std::int64_t from = 0;
    std::int64_t to = std::numeric_limits<std::int64_t>::max();
    const bool sound = (first.empty() || ParseWhole(first, from)) && (last.empty() || ParseWhole(last, to));
    if (!sound || (first.empty() && last.empty())) {
        Complain("id", "'" + Visible(ids) + "' is no range of events; give 5, 5..9, 5.. or ..9");
        return false;
    }
    filter.Add("Id", Asks::AtLeast, {from});
    filter.Add("Id", Asks::AtMost, {to});
    return true;
}

}  // namespace

bool AddConditions(const EventsListOptions& options, EventFilter& filter)
{
    return AddIds(options.ids, filter) && AddCodes(options.codes, filter) && AddClasses(options.classes, filter) &&
           AddTime(options.since, Asks::AtLeast, filter) && AddTime(options.until, Asks::AtMost, filter);
}
