#include "objects/parameter_record.h"

#include <utility>

#include "objects/message.h"
#include "platform/system_string.h"

namespace OrvPLC {

namespace {

void ReplaceText(OrvBStr& text, std::u16string_view wide)
{
    // Made before the old one goes: without memory the record stays sound.
    char16_t* made = Platform::NewSystemString(wide);
    Platform::FreeSystemString(reinterpret_cast<char16_t*>(std::exchange(text, reinterpret_cast<OrvBStr>(made))));
}

// Zero units inside a system string belong to it.
std::u16string_view TextOf(const TOrvParameterValue& record)
{
    if (!record.text) return {};
    const char16_t* text = Units(record.text);
    return {text, Platform::SystemStringLength(text)};
}

void FillPayload(TOrvParameterValue& record, const TOrvParameter& value)
{
    auto& payload = record.payload;
    switch (value.Kind()) {
    case ORV_KIND_Boolean: payload.boolean = value.Small() != 0; break;
    case ORV_KIND_Numeric32Bit: payload.int32 = value.Small(); break;
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_Rect: payload.int64 = value.Large(); break;
    case ORV_KIND_NumericDouble: payload.real = value.Real(); break;
    case ORV_KIND_String:
    case ORV_KIND_ResultDataSet: ReplaceText(record.text, value.Wide()); break;
    case ORV_KIND_DateTime: payload.dateTime = value.DateTime(); break;
    case ORV_KIND_Guid: payload.guid = value.Guid(); break;
    case ORV_KIND_EventType:
        payload.eventType = {static_cast<std::uint64_t>(value.Large()), Boundary(value.Wide().data())};
        break;
    case ORV_KIND_MediaChannel: value.ReadMediaChannel(payload.channel); break;
    case ORV_KIND_Resource: value.ReadResource(payload.resource); break;
    default: break;
    }
}

}  // namespace

void FillRecord(TOrvParameterValue& record, const TOrvParameter& value)
{
    FillPayload(record, value);
    record.kind = value.Kind();
    record.enum_type = value.EnumType();
}

void SetFromRecordOfAnyKind(TOrvParameter& value, const TOrvParameterValue& record)
{
    const auto& payload = record.payload;
    switch (record.kind) {
    case ORV_KIND_Boolean: value.SetBoolean(payload.boolean != 0); break;
    case ORV_KIND_Numeric32Bit: value.SetInt32(payload.int32); break;
    case ORV_KIND_Numeric64Bit: value.SetInt64(payload.int64); break;
    case ORV_KIND_NumericDouble: value.SetDouble(payload.real); break;
    case ORV_KIND_String: value.SetString(TextOf(record)); break;
    case ORV_KIND_DateTime: value.SetDateTime(payload.dateTime); break;
    case ORV_KIND_Guid: value.SetGuid(payload.guid); break;
    case ORV_KIND_EventType: value.SetEventType(payload.eventType.id, TerminatedView(payload.eventType.name)); break;
    case ORV_KIND_MediaChannel:
        value.SetMediaChannel(payload.channel.id, payload.channel.number, TerminatedView(payload.channel.name));
        break;
    case ORV_KIND_Resource: value.SetResource(payload.resource.guid, TerminatedView(payload.resource.name)); break;
    case ORV_KIND_Rect: value.SetRect(payload.int64); break;
    case ORV_KIND_ResultDataSet: value.SetResultDataText(TextOf(record)); break;
    default: break;
    }
    value.SetKindAndEnum(value.Kind(), record.enum_type);
}

}  // namespace OrvPLC
