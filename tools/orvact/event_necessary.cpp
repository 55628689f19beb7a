#include "event_necessary.h"

#include <cstdint>
#include <set>

#include "catalogue_view.h"
#include "event_record.h"

namespace {

using Asks = EventCondition::Asks;

// Printable: the databases compare what else there is in their own ways.
bool IsAscii(std::u16string_view text)
{
    for (const char16_t unit : text) {
        if (unit < 0x20 || unit > 0x7E) return false;
    }
    return true;
}

void AddText(const std::string& column, std::u16string_view wanted, EventFilter& filter)
{
    // An empty text leaves its column empty, and beyond ASCII the database compares by other rules than the library.
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

// For an action that the catalogue does not know only the name is certain.
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

void AddNecessary(const std::vector<Pattern>& patterns, EventFilter& filter)
{
    std::set<std::int64_t> codes;
    for (const Pattern& pattern : patterns) codes.insert(std::int64_t{pattern.action.Code()});
    filter.Add("Code", Asks::OneOf, std::vector<EventValue>(codes.begin(), codes.end()));
    if (patterns.size() == 1) AddParameters(patterns.front().action, filter);
}
