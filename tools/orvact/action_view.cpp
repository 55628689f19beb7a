#include "action_view.h"

#include <algorithm>
#include <charconv>

#include "names.h"
#include "settings.h"
#include "text.h"
#include "value_kind.h"

namespace {

std::string Quoted(std::u16string_view text)
{
    return "\"" + Visible(orv::ToUtf8(text)) + "\"";
}

// The number first, which is how people speak of channels; id and name if there are any.
std::string Text(const orv::Channel& channel)
{
    std::string text = std::to_string(channel.number);
    if (channel.id != 0) text += ", id " + std::to_string(channel.id);
    if (!channel.name.empty()) text += ", " + Quoted(channel.name);
    return text;
}

std::string Text(const orv::EventType& type)
{
    const std::string text = Quoted(type.name);
    return type.id == 0 ? text : "id " + std::to_string(type.id) + ", " + text;
}

std::string Text(const orv::Resource& resource)
{
    const std::string text = Quoted(resource.name);
    return orv::IsZero(resource.guid) ? text : orv::ToText(resource.guid) + ", " + text;
}

// Each difference between what is declared and what is held stands beside the type.
StoredParameter Describe(const Action& action, const ActionView* declared, const orv::CarriedParameter& stored)
{
    StoredParameter parameter;
    const std::string name = orv::ToUtf8(stored.name);
    // A parameter may be without a name; a blank in its place would not be seen.
    parameter.name = name.empty() ? "\"\"" : Visible(name);
    parameter.type = TypeName(stored.kind, stored.enumType);
    parameter.value = ValueText(action, stored);
    const ParameterView* own = declared ? declared->Find(name) : nullptr;
    const ParameterView* entry = own ? own : FindGeneralParameter(name);
    if (entry && entry->view != ORV_VIEW_Unavailable) parameter.view = ViewName(entry->view);
    if (entry && entry->type != stored.kind) {
        parameter.type = TypeName(entry->type, entry->enumType) + ", holds " + KindName(stored.kind);
    }
    if (!own && entry) parameter.type += ", general";
    if (!entry && declared) parameter.type += ", not declared";
    return parameter;
}

// The position among the declared parameters; others keep their order after them.
std::size_t PositionOf(const ActionView* declared, const orv::CarriedParameter& stored)
{
    const ParameterView* own = declared ? declared->Find(orv::ToUtf8(stored.name)) : nullptr;
    // The greatest number for the others, so that they come last; the sort is stable.
    return own ? static_cast<std::size_t>(own - declared->parameters.data()) : static_cast<std::size_t>(-1);
}

// 0 for an enum without values.
orv::Enum FirstValue(std::uint32_t enumType)
{
    const std::vector<orv::EnumValueInfo> values = orv::EnumValues(enumType);
    return {values.empty() ? 0 : static_cast<std::int32_t>(values.front().value), enumType};
}

// A value of the declared type that anybody recognises as a sample.
orv::Value Sample(const ParameterView& parameter)
{
    constexpr orv::Guid kGuid = {0x0f8fad5b, 0xd9cb, 0x469f, {0xa1, 0x65, 0x70, 0x86, 0x7b, 0x72, 0x8a, 0x1c}};
    switch (ValueKind{parameter.type}) {
    case ValueKind::Boolean: return true;
    case ValueKind::Numeric64Bit: return std::int64_t{1000};
    case ValueKind::NumericDouble: return 1.5;
    case ValueKind::String: return std::u16string(u"text");
    case ValueKind::DateTime: return orv::DateTime{13310739000000};  // 2022-10-20 11:30 GMT
    case ValueKind::Guid: return kGuid;
    case ValueKind::EventType: return orv::EventType{1, u"event"};
    case ValueKind::MediaChannel: return orv::Channel::Number(1);
    case ValueKind::Resource: return orv::Resource{kGuid, u"resource"};
    case ValueKind::Rect: return orv::Rect{10, 20, 110, 220};
    case ValueKind::ResultDataSet: return orv::ResultData{{1, 2, 3, 4, 5, u"item"}};
    case ValueKind::None:
    case ValueKind::Numeric32Bit: break;
    }
    if (parameter.enumType == 0) return std::int32_t{1};
    return FirstValue(parameter.enumType);
}

}  // namespace

std::string ValueText(const Action& action, const orv::CarriedParameter& held)
{
    switch (ValueKind{held.kind}) {
    case ValueKind::String: return Quoted(action.Get<std::u16string>(held.name).value_or(u""));
    case ValueKind::EventType: return Text(action.Get<orv::EventType>(held.name).value_or(orv::EventType()));
    case ValueKind::MediaChannel: return Text(action.Get<orv::Channel>(held.name).value_or(orv::Channel()));
    case ValueKind::Resource: return Text(action.Get<orv::Resource>(held.name).value_or(orv::Resource()));
    case ValueKind::DateTime: return DateText(action.Get<orv::DateTime>(held.name).value_or(orv::DateTime()));
    case ValueKind::None:
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::Numeric64Bit:
    case ValueKind::NumericDouble:
    case ValueKind::Guid:
    case ValueKind::Rect:
    case ValueKind::ResultDataSet: break;
    }
    const std::string text = Visible(orv::ToUtf8(action.TextOfValue(held.name).value_or(u"")));
    if (held.kind != ORV_KIND_Boolean && held.kind != ORV_KIND_Numeric32Bit) return text;
    const auto number = static_cast<std::uint32_t>(action.Get<std::int32_t>(held.name).value_or(0));
    const std::uint32_t enumType = held.kind == ORV_KIND_Boolean ? 1 : held.enumType;
    const std::string word = enumType ? ValueName(enumType, number) : std::string();
    return word.empty() ? text : text + " " + word;
}

std::string DateText(TUlmoDateTime date)
{
    // The library writes dates only as values of an action.
    Action carrier = Action::Named(u"date");
    carrier.Set(u"date", date);
    const auto text = carrier.TextOfValue(u"date");
    return text && !text->empty() ? orv::ToUtf8(*text) : "no date";
}

std::string RealText(double number)
{
    char text[40];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

std::vector<StoredParameter> ParametersOf(const Action& action, const ActionView* declared)
{
    std::vector<orv::CarriedParameter> held = action.Parameters();
    std::stable_sort(held.begin(), held.end(), [&](const orv::CarriedParameter& a, const orv::CarriedParameter& b) {
        return PositionOf(declared, a) < PositionOf(declared, b);
    });
    std::vector<StoredParameter> parameters;
    for (const orv::CarriedParameter& stored : held) parameters.push_back(Describe(action, declared, stored));
    return parameters;
}

std::string ShownText(const Action& action, bool plain)
{
    try {
        const std::u16string text = plain ? action.PlainText() : action.Text();
        return Visible(orv::ToUtf8(settings.names && !plain ? NameNumbers(text) : text));
    } catch (const orv::Error&) {
        return {};
    }
}

Action ReadText(const std::u16string& text, std::size_t& consumed, std::string& error)
{
    consumed = 0;
    try {
        return Action::TryParse(text, &consumed);
    } catch (const orv::Error& failure) {
        consumed = failure.Position().value_or(0);
        error = Visible(failure.what());
        return Action();
    }
}

Action ExampleAction(const ActionView& view)
{
    Action action = Action::Named(view.name);
    for (const ParameterView& parameter : view.parameters) action.Set(parameter.name, Sample(parameter));
    return action;
}

std::string ExampleText(const ActionView& view)
{
    const Action action = ExampleAction(view);
    const std::u16string text = action.Text();
    std::size_t consumed = 0;
    std::string error;
    const Action read = ReadText(text, consumed, error);
    return read && read == action ? orv::ToUtf8(text) : std::string();
}
