#include "objects/parameter_record.h"

#include <utility>

#include "catalogue/boundary.h"
#include "catalogue/value_kind.h"

namespace OrvPLC {

namespace {

void ReplaceText(OrvBStr& text, std::u16string_view wide)
{
    // The new text is made before the old one is freed, so that the record stays sound when memory runs out.
    FreeBStr(std::exchange(text, NewBStr(wide)));
}

// Only the members that the kind uses; the others stay as the caller left them.
void FillPayload(TOrvParameterValue& record, const TOrvParameter& value)
{
    auto& payload = record.payload;
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean: payload.boolean = value.Small() != 0; break;
    case ValueKind::Numeric32Bit: payload.int32 = value.Small(); break;
    case ValueKind::Numeric64Bit:
    case ValueKind::Rect: payload.int64 = value.Large(); break;
    case ValueKind::NumericDouble: payload.real = value.Real(); break;
    case ValueKind::String:
    case ValueKind::ResultDataSet: ReplaceText(record.text, value.Wide()); break;
    case ValueKind::DateTime: payload.dateTime = value.DateTime(); break;
    case ValueKind::Guid: payload.guid = value.Guid(); break;
    case ValueKind::EventType:
        payload.eventType = {static_cast<std::uint64_t>(value.Large()), Boundary(value.Wide().data())};
        break;
    case ValueKind::MediaChannel: value.ReadMediaChannel(payload.channel); break;
    case ValueKind::Resource: value.ReadResource(payload.resource); break;
    case ValueKind::None: break;
    }
}

// A function of its own for what is more than a number, so that a number needs no register saved.
template <class Set>
[[gnu::noinline]] void SetApart(TOrvParameter& value, const TOrvParameterValue& record, Set set)
{
    set(value, record);
    value.SetEnumType(record.enum_type);
}

}  // namespace

void FillRecord(TOrvParameterValue& record, const TOrvParameter& value)
{
    // Kind and enum come last: if there is no memory for the text the record is still what it was.
    FillPayload(record, value);
    record.kind = value.Kind();
    record.enum_type = value.EnumType();
}

void SetFromRecordOfAnyKind(TOrvParameter& value, const TOrvParameterValue& record)
{
    if (value.Kind() != ORV_KIND_None) __builtin_unreachable();  // so that no setter has to look at it
    const auto& payload = record.payload;
    const auto apart = [&](auto set) { SetApart(value, record, set); };
    switch (ValueKind{record.kind}) {
    case ValueKind::Boolean: value.SetBoolean(payload.boolean != 0); break;
    case ValueKind::Numeric32Bit: value.SetInt32(payload.int32); break;
    case ValueKind::Numeric64Bit: value.SetInt64(payload.int64); break;
    case ValueKind::NumericDouble: value.SetDouble(payload.real); break;
    case ValueKind::DateTime: value.SetDateTime(payload.dateTime); break;
    case ValueKind::Rect: value.SetRect(payload.int64); break;
    case ValueKind::Guid: return apart([](auto& v, auto& r) { v.SetGuid(r.payload.guid); });
    case ValueKind::String: return apart([](auto& v, auto& r) { v.SetString(ViewOf(r.text)); });
    case ValueKind::ResultDataSet: return apart([](auto& v, auto& r) { v.SetResultDataText(ViewOf(r.text)); });
    case ValueKind::MediaChannel: return apart([](auto& v, auto& r) { SetFromRecord(v, r.payload.channel); });
    case ValueKind::Resource: return apart([](auto& v, auto& r) { SetFromRecord(v, r.payload.resource); });
    case ValueKind::EventType:
        return apart([](auto& v, auto& r) {
            v.SetEventType(r.payload.eventType.id, TerminatedView(r.payload.eventType.name));
        });
    case ValueKind::None: break;
    }
    value.SetEnumType(record.enum_type);
}

}  // namespace OrvPLC
