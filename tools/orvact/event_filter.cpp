#include "event_filter.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <limits>
#include <set>

#include "catalogue_view.h"
#include "report.h"
#include "text.h"

namespace {

using Asks = EventCondition::Asks;

bool ParseNumber(std::string_view text, std::uint32_t& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

bool ParseId(std::string_view text, std::int64_t& id)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    return error == std::errc() && end == text.data() + text.size();
}

bool AddCodes(const std::vector<std::string>& wanted, EventFilter& filter)
{
    std::vector<EventValue> codes;
    for (const std::string& text : wanted) {
        std::uint32_t code = 0;
        if (!ParseNumber(text, code)) code = ActionCode(text);
        if (code == 0 && text != "0") {
            std::vector<std::string> names;
            for (const ActionView& action : Actions()) names.push_back(action.name);
            ReportUnknown("action", text, names);
            return false;
        }
        codes.emplace_back(std::int64_t{code});
    }
    if (!codes.empty()) filter.Add("Code", Asks::OneOf, codes);
    return true;
}

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
        std::vector<std::string> names;
        for (const ClassView& view : Classes()) names.push_back(view.name);
        ReportUnknown("class", name, names);
        return false;
    }
    filter.Add("Code", Asks::OneOf, codes);
    return true;
}

// Z, or hours and minutes east of Greenwich: +02:00, +0200 or +02. Taken off the text.
bool TakeOffset(std::string_view& text, std::int64_t& minutes)
{
    minutes = 0;
    if (text.ends_with('Z') || text.ends_with('z')) {
        text.remove_suffix(1);
        return true;
    }
    const std::size_t sign = text.find_first_of("+-");
    if (sign == std::string_view::npos) return true;
    std::string digits(text.substr(sign + 1));
    if (digits.size() == 5 && digits[2] == ':') digits.erase(2, 1);
    if (digits.size() == 2) digits += "00";
    std::uint32_t number = 0;
    if (digits.size() != 4 || !ParseNumber(digits, number) || number / 100 > 14 || number % 100 > 59) return false;
    minutes = (text[sign] == '-' ? -1 : 1) * static_cast<std::int64_t>(number / 100 * 60 + number % 100);
    text = text.substr(0, sign);
    return true;
}

orv::TimePoint TimeAt(std::int64_t milliseconds)  // since 1970 UTC
{
    return orv::TimePoint(std::chrono::milliseconds(milliseconds));
}

// A date, and behind a T or a blank the hour, with minutes, seconds and milliseconds as far as they are given.
bool ParseTime(const std::string& text, orv::TimePoint& stored)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    unsigned clock[4] = {};
    int end = 0;
    if (std::sscanf(text.c_str(), "%4d-%2u-%2u%n", &year, &month, &day, &end) != 3) return false;
    std::string_view rest = std::string_view(text).substr(static_cast<std::size_t>(end));
    std::int64_t offset = 0;
    if (!TakeOffset(rest, offset)) return false;
    const char separators[] = {'T', ':', ':', '.'};
    for (int i = 0; i < 4 && !rest.empty(); ++i) {
        const std::string_view digits = rest.substr(1, i == 3 ? 3 : 2);
        const bool separated = rest[0] == separators[i] || (i == 0 && (rest[0] == ' ' || rest[0] == 't'));
        if (!separated || digits.size() != (i == 3 ? 3u : 2u) || !ParseNumber(digits, clock[i])) return false;
        rest.remove_prefix(1 + digits.size());
    }
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!rest.empty() || !date.ok() || clock[0] > 23 || clock[1] > 59 || clock[2] > 59) return false;
    const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    const std::int64_t minutes = (days * 24 + clock[0]) * 60 + clock[1] - offset;
    stored = TimeAt((minutes * 60 + clock[2]) * 1000 + clock[3]);
    return true;
}

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
    const bool sound = (first.empty() || ParseId(first, from)) && (last.empty() || ParseId(last, to));
    if (!sound || (first.empty() && last.empty())) {
        Complain("id", "'" + Visible(ids) + "' is no range of events; give 5, 5..9, 5.. or ..9");
        return false;
    }
    filter.Add("Id", Asks::AtLeast, {from});
    filter.Add("Id", Asks::AtMost, {to});
    return true;
}

bool IsAscii(std::u16string_view text)
{
    for (const char16_t unit : text) {
        if (unit < 0x20 || unit > 0x7E) return false;
    }
    return true;
}

void AddText(const std::string& column, std::u16string_view wanted, EventFilter& filter)
{
    if (wanted.empty() || !IsAscii(wanted)) return;
    filter.Add(column, Asks::SameText, {std::u16string(wanted)});
}

class NecessaryColumns {
public:
    NecessaryColumns(const Action& pattern, const ParameterView& parameter, EventFilter& filter)
        : pattern_(pattern), parameter_(parameter), filter_(filter)
    {}

    void Add()
    {
        switch (parameter_.type) {
        case ORV_KIND_Boolean:
        case ORV_KIND_Numeric32Bit: return AddFirst(ColumnSort::Int32, std::int64_t{Value<std::int32_t>()});
        case ORV_KIND_Numeric64Bit: return AddFirst(ColumnSort::Int64, Value<std::int64_t>());
        case ORV_KIND_NumericDouble: return AddFirst(ColumnSort::Double, Value<double>());
        case ORV_KIND_DateTime:
            return AddFirst(ColumnSort::Date, static_cast<std::int64_t>(Value<orv::DateTime>().value));
        case ORV_KIND_String: {
            const EventColumn* column = First();
            if (column && column->sort == ColumnSort::String) AddText(column->name, Value<std::u16string>(), filter_);
            return;
        }
        case ORV_KIND_EventType: {
            const orv::EventType type = Value<orv::EventType>();
            return AddIdentity(type.id, 0, type.name);
        }
        case ORV_KIND_MediaChannel: {
            const orv::Channel channel = Value<orv::Channel>();
            return AddIdentity(channel.id, channel.number, channel.name);
        }
        default: return;  // halves of guids and whatever else the columns show badly
        }
    }

private:
    template <class T>
    T Value() const
    {
        return pattern_.Get<T>(parameter_.name).value_or(T());
    }

    // The first column of a plain parameter is the one that it fills.
    const EventColumn* First() const
    {
        for (const EventColumn& column : kEventColumns) {
            const std::uint32_t lower = column.bit - 1;
            if ((parameter_.columns & column.bit) && !(parameter_.columns & lower)) return &column;
        }
        return nullptr;
    }

    const EventColumn* FirstOf(ColumnSort sort) const
    {
        for (const EventColumn& column : kEventColumns) {
            if ((parameter_.columns & column.bit) && column.sort == sort && column.index < 4) return &column;
        }
        return nullptr;
    }

    void AddFirst(ColumnSort sort, const EventValue& value)
    {
        const EventColumn* column = First();
        if (column && column->sort == sort) filter_.Add(column->name, Asks::OneOf, {value});
    }

    // The first field that the pattern fills decides alone, as in the library.
    void AddIdentity(std::uint64_t id, std::uint32_t number, const std::u16string& text)
    {
        const EventColumn* column = FirstOf(id != 0       ? ColumnSort::Int64
                                            : number != 0 ? ColumnSort::Int32
                                                          : ColumnSort::String);
        if (!column) return;
        if (id != 0) return filter_.Add(column->name, Asks::OneOf, {static_cast<std::int64_t>(id)});
        if (number != 0) {
            return filter_.Add(column->name, Asks::OneOf, {std::int64_t{static_cast<std::int32_t>(number)}});
        }
        AddText(column->name, text, filter_);
    }

    const Action& pattern_;
    const ParameterView& parameter_;
    EventFilter& filter_;
};

void AddParameters(const Action& pattern, EventFilter& filter)
{
    const ActionView* declared = FindAction(pattern.Code());
    if (!declared) return AddText("Name", pattern.Name(), filter);
    std::uint32_t taken = 0;
    for (const ParameterView& parameter : declared->parameters) {
        // An earlier parameter may have taken the column, and a value of another kind is converted for it.
        const bool sure = parameter.columns != 0 && (parameter.columns & taken) == 0 &&
                          pattern.KindOf(parameter.name) == parameter.type;
        taken |= parameter.columns;
        if (sure) NecessaryColumns(pattern, parameter, filter).Add();
    }
}

}  // namespace

bool ParseAge(std::string_view text, std::int64_t& milliseconds)
{
    constexpr std::string_view kUnits = "smhdw";
    constexpr std::int64_t kLengths[] = {1000, 60'000, 3'600'000, 86'400'000, 604'800'000};
    const std::size_t unit = text.empty() ? std::string_view::npos : kUnits.find(text.back());
    std::uint32_t number = 0;
    if (unit == std::string_view::npos || !ParseNumber(text.substr(0, text.size() - 1), number)) return false;
    milliseconds = number * kLengths[unit];
    return true;
}

bool AddConditions(const EventsListOptions& options, EventFilter& filter)
{
    return AddIds(options.ids, filter) && AddCodes(options.codes, filter) && AddClasses(options.classes, filter) &&
           AddTime(options.since, Asks::AtLeast, filter) && AddTime(options.until, Asks::AtMost, filter);
}

void AddNecessary(const std::vector<Pattern>& patterns, EventFilter& filter)
{
    std::set<std::int64_t> codes;
    for (const Pattern& pattern : patterns) codes.insert(std::int64_t{pattern.action.Code()});
    filter.Add("Code", Asks::OneOf, std::vector<EventValue>(codes.begin(), codes.end()));
    if (patterns.size() == 1) AddParameters(patterns.front().action, filter);
}
