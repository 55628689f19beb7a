// The JSON form of an action: facts of the catalogue, then the parameters under their lower-cased names with enum
// values as words. The description of a match action is not in it.
#include "catalogue/catalogue.h"
#include "catalogue/name_tables.h"
#include "catalogue/settings.h"
#include "catalogue/value_kind.h"
#include "forms/json_writer.h"
#include "forms/message_kinds.h"
#include "forms/stored_form.h"
#include "forms/text_pieces.h"
#include "objects/action.h"
#include "ulmo/guid_tools.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

// What the catalogue does not declare has no priority and is always visible, so without an entry everything is.
template <class Visit>
void ForEachVisible(const TOrvAction& action, std::uint32_t limit, Visit&& visit)
{
    action.Parameters().ForEachByKey(
        [&, entry = action.Entry()](View key, View, const TOrvParameter& value, std::size_t position) {
            if (position == ParameterMap::kNotFound && entry) position = entry->FindParameter(key);
            if (position == ParameterMap::kNotFound || entry->Parameters[position].Priority <= limit) visit(key, value);
        });
}

// An enum's value as its plain name; a number that the enum lacks, and any other, as digits.
void WriteNumber(TOrvJsonWriter& writer, View key, const TOrvParameter& value)
{
    // The enum of Booleans lacks this bit, so a number of that enum stays a number.
    const TOrvEnumInternalInfo* info =
        (value.EnumType() & kEnumIdBit) != 0
            ? Catalogue().FindEnumValue(value.EnumType(), static_cast<std::uint32_t>(value.Small()))
            : nullptr;
    if (info) {
        std::u16string copy;
        writer.WriteString(key, info->Plain().W.Whole(copy));
    } else {
        writer.WriteDecimal(key, value.Small());
    }
}

// Only -1 is no id: an id of 0 is written. Deliberate, here and in a channel.
void WriteEventType(TOrvJsonWriter& writer, View key, const TOrvParameter& value)
{
    const bool hasId = value.Large() != -1;
    if (!hasId && value.Wide().empty()) return;
    writer.OpenObject(key);
    if (hasId) writer.WriteDecimal(u"eventTypeID", value.Large());
    if (!value.Wide().empty()) writer.WriteString(u"eventName", value.Wide());
    writer.CloseObject();
}

void WriteMediaChannel(TOrvJsonWriter& writer, View key, const TOrvParameter& value)
{
    const bool hasId = value.Large() != -1;
    if (!hasId && value.Wide().empty() && value.Small() == 0) return;
    writer.OpenObject(key);
    if (hasId) writer.WriteDecimal(u"channelID", value.Large());
    if (!value.Wide().empty()) writer.WriteString(u"channelName", value.Wide());
    if (value.Small() != 0) writer.WriteDecimal(u"globalNo", value.Small());
    writer.CloseObject();
}

// Without guid and name nothing is written.
void WriteResource(TOrvJsonWriter& writer, View key, const TOrvParameter& value)
{
    if (Ulmo::GuidTools::IsZero(value.Guid()) && value.Wide().empty()) return;
    writer.OpenObject(key);
    // Deliberately not a test of the guid: the number plays no part in a resource and is 0, unless the value was
    // something else before.
    if (value.LargeBesideGuid() != -1) writer.WriteGuid(u"resourceID", value.Guid());
    if (!value.Wide().empty()) writer.WriteString(u"resourceName", value.Wide());
    writer.CloseObject();
}

void WriteRect(TOrvJsonWriter& writer, View key, std::int64_t packed)
{
    constexpr View kWords[] = {u"top", u"left", u"bottom", u"right"};
    writer.OpenObject(key);
    for (unsigned word = 0; word < 4; ++word) writer.WriteDecimal(kWords[word], RectWord(packed, word));
    writer.CloseObject();
}

// A value without content, or of a kind that does not exist, writes nothing, though it counts as a parameter.
void WriteValue(TOrvJsonWriter& writer, View key, const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean: writer.WriteRaw(key, value.Small() != 0 ? u"1" : u"0"); break;
    case ValueKind::Numeric32Bit: WriteNumber(writer, key, value); break;
    case ValueKind::Numeric64Bit: writer.WriteDecimal(key, value.Large()); break;
    case ValueKind::NumericDouble: writer.WriteDouble(key, value.Real()); break;
    case ValueKind::String:
    case ValueKind::ResultDataSet: writer.WriteString(key, value.Wide()); break;
    case ValueKind::DateTime: writer.WriteDate(key, value.DateTime()); break;
    case ValueKind::Guid: writer.WriteGuid(key, value.Guid()); break;
    case ValueKind::EventType: WriteEventType(writer, key, value); break;
    case ValueKind::MediaChannel: WriteMediaChannel(writer, key, value); break;
    case ValueKind::Resource: WriteResource(writer, key, value); break;
    case ValueKind::Rect: WriteRect(writer, key, value.Large()); break;
    case ValueKind::None: break;
    }
}

void WriteFacts(TOrvJsonWriter& writer, TOrvAction& action)
{
    writer.WriteUnsigned(u"classCode", action.GetActionClassCode());
    writer.WriteString(u"className", TerminatedView(action.GetActionClassName()));
    writer.WriteUnsigned(u"code", action.GetActionCode());
    writer.WriteUnsigned(u"flags", action.GetActionFlags());
    writer.WriteString(u"name", TerminatedView(action.GetActionName()));
    std::u16string copy;
    writer.WriteString(u"plainName", action.Entry() ? action.Entry()->Plain().W.Whole(copy) : View(u""));
    writer.WriteUnsigned(u"priority", action.GetActionPriority());
    writer.WriteUnsigned(u"heskMessageClass", SiblingKindOf(action.Kind()));
    writer.WriteUnsigned(u"index", action.GetInternalIndex());
    writer.WriteUnsigned(u"messageClass", action.Kind());
}

// The count stands ahead of what it counts, so there are two walks; and nothing visible means no object at all.
void WriteParameters(TOrvJsonWriter& writer, const TOrvAction& action, std::uint32_t limit)
{
    std::uint32_t count = 0;
    ForEachVisible(action, limit, [&count](View, const TOrvParameter&) { ++count; });
    writer.WriteUnsigned(u"paramsCount", count);
    if (count == 0) return;
    writer.OpenObject(u"params");
    ForEachVisible(action, limit, [&writer](View key, const TOrvParameter& value) { WriteValue(writer, key, value); });
    writer.CloseObject();
}

// For both operations of the interface: null where a value has no text.
void StoreJsonText(const TOrvMessage& message, OrvBStr* text, bool wrap, const std::uint32_t* limit)
{
    TOrvJsonWriter writer(wrap);
    StoreInOperation(text, [&] {
        message.WriteJson(writer, limit);
        return writer.Finish();
    });
}

}  // namespace

void TOrvAction::WriteJson(TOrvJsonWriter& writer, const std::uint32_t* limit) const
{
    writer.OpenObject(u"action");
    WriteFacts(writer, const_cast<TOrvAction&>(*this));  // the interface's getters change nothing
    WriteParameters(writer, *this, limit ? *limit : Settings::PriorityLevel);
    writer.CloseObject();
}

void ORV_CALL TOrvMessage::StoreJson(OrvBStr* text, OrvBool wrap)
{
    StoreJsonText(*this, text, wrap, nullptr);
}

void ORV_CALL TOrvMessage::StoreJsonLimited(OrvBStr* text, OrvBool wrap, std::uint32_t limit)
{
    StoreJsonText(*this, text, wrap, &limit);
}

}  // namespace OrvPLC
