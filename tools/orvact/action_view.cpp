#include "action_view.h"

#include <algorithm>
#include <charconv>

#include "console.h"
#include "text.h"

namespace {

// Lives on the stack of the call that it serves, so it needs no count.
class Collector final : public ITalvecParameterEnumerator {
public:
    std::vector<HeldParameter> found;

    std::int32_t ORV_CALL QueryInterface(const TOrvGuid&, void**) override { return -1; }
    std::uint32_t ORV_CALL AddRef() override { return 1; }
    std::uint32_t ORV_CALL Release() override { return 1; }
    void ORV_CALL OnParameter(const OrvWChar* name, std::uint32_t kind, std::uint32_t enumType) override
    {
        found.push_back({reinterpret_cast<const char16_t*>(name), kind, enumType});
    }
};

std::string StringOf(const Action& action, const OrvWChar* name)
{
    OrvBStr text = nullptr;
    action->GetString(name, &text);
    const std::string narrow = Utf8FromWide(text);
    FreeSystemString(text);
    return narrow;
}

std::string Quoted(const std::string& text)
{
    constexpr std::size_t kWidest = 60;
    return "\"" + Shortened(Visible(text), kWidest) + "\"";
}

std::string ChannelText(const Action& action, const OrvWChar* name)
{
    TOrvChannelValue channel{};
    action->GetMediaChannel(name, &channel);
    std::string text = std::to_string(channel.number);
    if (channel.id != 0) text += ", id " + std::to_string(channel.id);
    if (channel.name && *channel.name) text += ", " + Quoted(Utf8FromWide(channel.name));
    return text;
}

std::string EventTypeText(const Action& action, const OrvWChar* name)
{
    TOrvEventTypeValue type{};
    action->GetEventType(name, &type);
    const std::string text = Quoted(Utf8FromWide(type.name));
    return type.id == 0 ? text : "id " + std::to_string(type.id) + ", " + text;
}

std::string ResourceText(const Action& action, const OrvWChar* name)
{
    TOrvResourceValue resource{};
    action->GetResource(name, &resource);
    const std::string guid = GuidText(resource.guid);
    const bool named = guid.find_first_not_of("0-") == std::string::npos;
    const std::string text = Quoted(Utf8FromWide(resource.name));
    return named ? text : guid + ", " + text;
}

StoredParameter Describe(const Action& action, const ActionView* declared, const HeldParameter& stored)
{
    StoredParameter parameter;
    const std::string name = Utf8FromWide(stored.name);
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

// The position among the declared parameters; others keep their order behind them.
std::size_t Place(const ActionView* declared, const HeldParameter& stored)
{
    const ParameterView* own = declared ? declared->Find(Utf8FromWide(stored.name)) : nullptr;
    return own ? static_cast<std::size_t>(own - declared->parameters.data()) : static_cast<std::size_t>(-1);
}

std::uint32_t FirstValue(std::uint32_t enumType)
{
    TTalvecEnumValuePlainInfo record{};
    Talvec_Action_EnumerateEnumValues(&record, 1, ORV_ENUM_KIND_BY_ID, enumType);
    return record.Value;
}

constexpr TOrvGuid kSampleGuid = {0x0f8fad5b, 0xd9cb, 0x469f, {0xa1, 0x65, 0x70, 0x86, 0x7b, 0x72, 0x8a, 0x1c}};
constexpr TUlmoDateTime kSampleTime = {13310739000000};  // 2022-10-20 11:30 GMT

void SetResultDataSample(const Action& action, const OrvWChar* name)
{
    const TOrvResultDataItem item = {1, 2, 3, 4, 5, NewSystemString(Boundary(u"item"))};
    action->SetResultDataSet(name, &item, 1);
    FreeSystemString(item.name);
}

// A value of the declared type that anybody recognises as a sample.
void SetSample(const Action& action, const ParameterView& parameter)
{
    bool clean = true;
    const std::u16string wideName = WideFromUtf8(parameter.name, clean);
    const OrvWChar* name = Boundary(wideName.c_str());
    const OrvWChar* text = Boundary(u"text");
    const std::int64_t number = 1000;
    const double real = 1.5;
    const std::int64_t rectangle = 10 | 20 << 16 | std::int64_t{110} << 32 | std::int64_t{220} << 48;
    const TOrvEventTypeValue eventType = {1, Boundary(u"event"), 0};
    const TOrvChannelValue channel = {0, nullptr, 1};
    const TOrvResourceValue resource = {kSampleGuid, Boundary(u"resource")};
    switch (parameter.type) {
    case ORV_KIND_Boolean: return action->SetBoolean(name, 1);
    case ORV_KIND_Numeric64Bit: return action->SetInt64(name, &number);
    case ORV_KIND_NumericDouble: return action->SetDouble(name, &real);
    case ORV_KIND_String: return action->SetString(name, text);
    case ORV_KIND_DateTime: return action->SetDateTime(name, &kSampleTime);
    case ORV_KIND_Guid: return action->SetGuid(name, &kSampleGuid);
    case ORV_KIND_EventType: return action->SetEventType(name, &eventType);
    case ORV_KIND_MediaChannel: return action->SetMediaChannel(name, &channel);
    case ORV_KIND_Resource: return action->SetResource(name, &resource);
    case ORV_KIND_Rect: return action->SetRect(name, &rectangle);
    case ORV_KIND_ResultDataSet: return SetResultDataSample(action, name);
    default: break;
    }
    if (parameter.enumType == 0) return action->SetInt32(name, 1);
    action->SetEnum(name, static_cast<std::int32_t>(FirstValue(parameter.enumType)), parameter.enumType);
}

}  // namespace

std::string ValueText(const Action& action, const HeldParameter& held)
{
    const OrvWChar* name = held.Name();
    switch (held.kind) {
    case ORV_KIND_String: return Quoted(StringOf(action, name));
    case ORV_KIND_EventType: return EventTypeText(action, name);
    case ORV_KIND_MediaChannel: return ChannelText(action, name);
    case ORV_KIND_Resource: return ResourceText(action, name);
    case ORV_KIND_DateTime: {
        TUlmoDateTime date{};
        action->GetDateTime(name, &date);
        return DateText(date);
    }
    default: break;
    }
    const std::string text = StringOf(action, name);
    if (held.kind != ORV_KIND_Boolean && held.kind != ORV_KIND_Numeric32Bit) return Visible(text);
    std::int32_t number = 0;
    action->GetInt32(name, &number);
    const std::uint32_t enumType = held.kind == ORV_KIND_Boolean ? 1 : held.enumType;
    const std::string word = enumType ? ValueName(enumType, static_cast<std::uint32_t>(number)) : std::string();
    return word.empty() ? text : text + " " + word;
}

std::string GuidText(const TOrvGuid& g)
{
    char guid[40];
    std::snprintf(guid, sizeof guid, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", static_cast<unsigned>(g.Data1),
                  g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2], g.Data4[3], g.Data4[4], g.Data4[5], g.Data4[6],
                  g.Data4[7]);
    return guid;
}

std::string DateText(TUlmoDateTime date)
{
    const OrvWChar* name = Boundary(u"date");
    const Action carrier(Talvec_Action_CreateActionByName(name));
    carrier->SetDateTime(name, &date);
    const std::string text = StringOf(carrier, name);
    return text.empty() ? "no date" : text;
}

std::string RealText(double number)
{
    char text[40];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

bool SameAction(const Action& a, const Action& b)
{
    OrvBool equal = 0;
    return OrvAct_Equal(a.get(), b.get(), &equal) && equal;
}

std::vector<HeldParameter> HeldParameters(const Action& action)
{
    Collector collector;
    action->EnumerateParameters(&collector);
    return std::move(collector.found);
}

std::vector<StoredParameter> ParametersOf(const Action& action, const ActionView* declared)
{
    std::vector<HeldParameter> held = HeldParameters(action);
    std::stable_sort(held.begin(), held.end(), [&](const HeldParameter& a, const HeldParameter& b) {
        return Place(declared, a) < Place(declared, b);
    });
    std::vector<StoredParameter> parameters;
    for (const HeldParameter& stored : held) parameters.push_back(Describe(action, declared, stored));
    return parameters;
}

std::u16string TextOf(const Action& action, bool plain)
{
    constexpr std::uint32_t kUsual = 500;  // most texts fit at once; a longer one is stored again
    std::uint32_t size = kUsual;
    std::u16string text;
    bool stored = false;
    do {
        text.resize(size);
        stored =
            OrvAct_StoreToTextBufferW(action.get(), reinterpret_cast<OrvWChar*>(text.data()), size, plain, 0, &size);
    } while (!stored && size > text.size());
    text.resize(stored ? size - 1 : 0);
    return text;
}

std::string MatchDescription(const Action& matchAction)
{
    const OrvWChar* text = nullptr;
    OrvMatchAct_GetDescriptionW(matchAction.get(), &text);
    return Utf8FromWide(text);
}

TOrvHandle ReadText(const std::u16string& text, std::uint32_t& consumed)
{
    consumed = 0;
    return OrvAct_CreateFromTextBufferW(Boundary(text.c_str()), static_cast<std::uint32_t>(text.size()), ORV_EXPECT_ANY,
                                        0, &consumed);
}

std::string ExampleText(const ActionView& view)
{
    const Action action(Talvec_Action_CreateActionByCode(view.code));
    if (!action) return {};
    for (const ParameterView& parameter : view.parameters) SetSample(action, parameter);
    const std::u16string text = TextOf(action, false);
    std::uint32_t consumed = 0;
    const Action read(ReadText(text, consumed));
    return read && SameAction(action, read) ? Utf8FromWide(text) : std::string();
}
