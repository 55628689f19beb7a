#include "exports/create_decode.h"

#include <array>
#include <cstring>

#include "catalogue/value_kind.h"
#include "exports/frame.h"
#include "objects/action.h"
#include "objects/orv_plc_exception.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

constexpr std::size_t kMostArguments = ParameterMap::kMaximumSlots;  // no built-in action has as many parameters
constexpr std::uint32_t kAbsentEnumValue = 0x7FFFFFFF;

// Built-in actions are registered first, so their places never change.
const TOrvActionInternalInfo& EntryOf(BuiltInAction action)
{
    return *Catalogue().FindActionByIndex(static_cast<std::uint32_t>(action));
}

// What an argument points at, as the type of its kind.
template <class T>
const T& ValueOf(const CreateArgument& argument)
{
    return *static_cast<const T*>(argument.Pointer());
}

bool CanHaveText(const CreateArgument& argument)
{
    constexpr std::uint32_t kKinds =
        1U << ORV_KIND_String | 1U << ORV_KIND_EventType | 1U << ORV_KIND_MediaChannel | 1U << ORV_KIND_Resource;
    return (kKinds >> argument.Kind() & 1) != 0;
}

// The text of an argument; null for one without and for a narrow one, which has to be converted.
const OrvWChar* TextOf(const CreateArgument& argument)
{
    if (argument.IsUnset() || argument.IsNarrow()) return nullptr;
    switch (argument.Kind()) {
    case ORV_KIND_String: return &ValueOf<OrvWChar>(argument);
    case ORV_KIND_EventType: return ValueOf<TOrvEventTypeValue>(argument).name;
    case ORV_KIND_MediaChannel: return ValueOf<TOrvChannelValue>(argument).name;
    case ORV_KIND_Resource: return ValueOf<TOrvResourceValue>(argument).name;
    default: return nullptr;
    }
}

// A narrow text is in the ANSI code page; its length is not known beforehand.
void SetString(TOrvParameter& value, const CreateArgument& argument, std::size_t length)
{
    if (argument.IsNarrow()) return value.SetString(Ulmo::WideFromAnsi(&ValueOf<char>(argument)));
    value.SetString({Units(&ValueOf<OrvWChar>(argument)), length});
}

void SetEventType(TOrvParameter& value, const TOrvEventTypeValue& record, std::size_t length)
{
    value.SetEventType(record.id, {Units(record.name), length});
}

void SetResource(TOrvParameter& value, const TOrvResourceValue& record, std::size_t length)
{
    value.SetResource(record.guid, {Units(record.name), length});
}

void SetMediaChannel(TOrvParameter& value, const TOrvChannelValue& record, std::size_t length)
{
    value.SetMediaChannel(record.id, record.number, {Units(record.name), length});
}

void SetItems(TOrvParameter& value, const CreateArgument& argument)
{
    value.SetResultDataSet(static_cast<const TOrvResultDataItem*>(argument.Pointer()), argument.Count());
}

// The length is that of the argument's text, and set only where it can have one.
void Set(TOrvParameter& value, const CreateArgument& argument, const std::size_t& length)
{
    if (argument.Kind() == ORV_KIND_String) return SetString(value, argument, length);
    switch (ValueKind{argument.Kind()}) {
    case ValueKind::Boolean: return value.SetBoolean(argument.NumberAs<OrvBool>() != 0);
    case ValueKind::Numeric64Bit: return value.SetInt64(ValueOf<std::int64_t>(argument));
    case ValueKind::NumericDouble: return value.SetDouble(ValueOf<double>(argument));
    case ValueKind::DateTime: return value.SetDateTime(ValueOf<TUlmoDateTime>(argument));
    case ValueKind::Guid: return value.SetGuid(ValueOf<TOrvGuid>(argument));
    case ValueKind::EventType: return SetEventType(value, ValueOf<TOrvEventTypeValue>(argument), length);
    case ValueKind::MediaChannel: return SetMediaChannel(value, ValueOf<TOrvChannelValue>(argument), length);
    case ValueKind::Resource: return SetResource(value, ValueOf<TOrvResourceValue>(argument), length);
    case ValueKind::Rect: return value.SetRect(ValueOf<std::int64_t>(argument));
    case ValueKind::ResultDataSet: return SetItems(value, argument);
    case ValueKind::Numeric32Bit: return value.SetInt32(argument.NumberAs<std::int32_t>(), argument.EnumType());
    case ValueKind::String:  // handled above, as the most frequent of these
    case ValueKind::None: return;
    }
}

// Zero in all outputs of the parameter; an enum has a value of its own for nothing, since 0 is a value of most.
void WriteAbsent(const DecodeOutput& output, const TOrvParameterInternalInfo& declared)
{
    switch (ValueKind{declared.Type}) {
    case ValueKind::Boolean: output.Target<OrvBool>() = 0; return;
    case ValueKind::Numeric32Bit:
        output.Target<std::uint32_t>() = declared.EnumType != 0 ? kAbsentEnumValue : 0;
        return;
    case ValueKind::Numeric64Bit:
    case ValueKind::Rect: output.Target<std::int64_t>() = 0; return;
    case ValueKind::NumericDouble: output.Target<double>() = 0.0; return;
    case ValueKind::DateTime: output.Target<TUlmoDateTime>() = {}; return;
    case ValueKind::Guid: output.Target<TOrvGuid>() = {}; return;
    case ValueKind::EventType: output.Target<TOrvEventTypeValue>() = {}; return;
    case ValueKind::MediaChannel: output.Target<TOrvChannelValue>() = {}; return;
    case ValueKind::Resource: output.Target<TOrvResourceValue>() = {}; return;
    case ValueKind::ResultDataSet: {
        const auto& outputs = output.Target<ResultDataOutput>();
        *outputs.items = nullptr;
        *outputs.count = 0;
        return;
    }
    case ValueKind::String:  // is handed out by pointer
    case ValueKind::None: return;
    }
}

void ReadItems(TOrvParameter& value, const ResultDataOutput& outputs)
{
    TOrvResultDataList list{};
    if (!value.ReadResultDataSet(list)) return;
    *outputs.items = list.items;
    *outputs.count = static_cast<std::uint32_t>(list.count);
}

void ReadEventType(const TOrvParameter& value, TOrvEventTypeValue& record)
{
    if (value.ReadEventType(record)) record.reserved = 0;
}

void ReadBoolean(const TOrvParameter& value, OrvBool& output)
{
    bool truth = false;
    if (value.ReadBoolean(truth)) output = truth;
}

// A value that does not convert leaves the output as it was.
void WriteValue(TOrvParameter& value, const DecodeOutput& output, std::uint32_t kind)
{
    switch (ValueKind{kind}) {
    case ValueKind::Boolean: ReadBoolean(value, output.Target<OrvBool>()); return;
    case ValueKind::Numeric32Bit:
        if (value.Kind() == ORV_KIND_Numeric32Bit) {
            output.Target<std::int32_t>() = value.Small();
        } else {
            value.ReadInt32(output.Target<std::int32_t>());
        }
        return;
    case ValueKind::Numeric64Bit: value.ReadInt64(output.Target<std::int64_t>()); return;
    case ValueKind::NumericDouble: value.ReadDouble(output.Target<double>()); return;
    case ValueKind::DateTime: value.ReadDateTime(output.Target<TUlmoDateTime>()); return;
    case ValueKind::Guid: value.ReadGuid(output.Target<TOrvGuid>()); return;
    case ValueKind::EventType: ReadEventType(value, output.Target<TOrvEventTypeValue>()); return;
    case ValueKind::MediaChannel: value.ReadMediaChannel(output.Target<TOrvChannelValue>()); return;
    case ValueKind::Resource: value.ReadResource(output.Target<TOrvResourceValue>()); return;
    case ValueKind::Rect: value.ReadRect(output.Target<std::int64_t>()); return;
    case ValueKind::ResultDataSet: ReadItems(value, output.Target<ResultDataOutput>()); return;
    case ValueKind::String:  // is handed out by pointer
    case ValueKind::None: return;
    }
}

// As bytes: the type that the caller's pointer has is not known here.
void WritePointer(const DecodeOutput& output, const void* pointer)
{
    std::memcpy(&output.Target<char>(), &pointer, sizeof pointer);
}

// The value becomes what the declaration says, so that there is a value to point at: a text "2.5" becomes the number.
// False where there is no conversion.
bool ConvertToDeclared(TOrvParameter& value, const TOrvParameterInternalInfo& declared)
{
    return value.Kind() == declared.Type || value.Retype(declared.Type, declared.EnumType);
}

// Of the kinds that are handed out by pointer; their values lie in one of three fields.
const void* FieldOf(const TOrvParameter& value)
{
    switch (value.Kind()) {
    case ORV_KIND_Boolean:
    case ORV_KIND_Numeric32Bit: return &value.Small();
    case ORV_KIND_NumericDouble: return &value.Real();
    default: return &value.Large();
    }
}

// A value that does not convert leaves the output as it was.
void WritePointerIntoValue(TOrvParameter& value, const DecodeOutput& output, const TOrvParameterInternalInfo& declared)
{
    switch (declared.Type) {
    // Deliberate: null although the value is there. Callers read such a value by its name.
    case ORV_KIND_MediaChannel:
    case ORV_KIND_Resource: return WritePointer(output, nullptr);
    // Deliberate: a date is not converted, and null is what a value of another kind gives.
    case ORV_KIND_DateTime: return WritePointer(output, value.DateTimeInPlace());
    // A text is made beside the value, which keeps its kind.
    case ORV_KIND_String:
        return WritePointer(output, (value.Kind() == ORV_KIND_String ? value.Wide() : value.MakeWideText()).data());
    default:
        if (ConvertToDeclared(value, declared)) WritePointer(output, FieldOf(value));
    }
}

// Into one output; `value` is null for a parameter that is not set.
void Decode(TOrvParameter* value, const DecodeOutput& output, const TOrvParameterInternalInfo& declared)
{
    const auto form = output.GetForm();
    if (form == DecodeOutput::Form::Value) {
        return value ? WriteValue(*value, output, declared.Type) : WriteAbsent(output, declared);
    }
    if (!value) return WritePointer(output, nullptr);
    if (form == DecodeOutput::Form::NarrowText) return WritePointer(output, value->MakeNarrowText());
    WritePointerIntoValue(*value, output, declared);
}

}  // namespace

TOrvHandle CreateAction(BuiltInAction action, std::initializer_list<CreateArgument> arguments) noexcept
{
    return NewHandle([&] {
        std::array<std::size_t, kMostArguments> lengths;  // the end of a text is looked for once
        std::size_t textBytes = 0;
        std::size_t position = 0;
        for (const CreateArgument& argument : arguments) {
            if (CanHaveText(argument)) {
                const OrvWChar* text = TextOf(argument);
                lengths[position] = text ? Ulmo::TerminatedLength(Units(text)) : 0;
                textBytes += TextRoom::Reserve(lengths[position]);
            }
            ++position;
        }
        ObjectPtr<TOrvAction> object(TOrvAction::CreateWithRoom(EntryOf(action), textBytes));
        ParameterMap::Filling slots(object->Parameters());
        position = 0;
        for (const CreateArgument& argument : arguments) {
            // The arguments are the first parameters of the declaration, one by one.
            if (argument.IsUnset()) {
                slots.Skip();
            } else if (argument.Kind() == ORV_KIND_Numeric32Bit) {
                slots.AddInt32(argument.NumberAs<std::int32_t>(), argument.EnumType());
            } else {
                TOrvParameter& value = slots.Add();
                Set(value, argument, lengths[position]);
                value.LeaveRoom();
            }
            ++position;
        }
        return object.release();
    });
}

OrvBool DecodeAction(TOrvHandle handle, BuiltInAction action, std::initializer_list<DecodeOutput> outputs,
                     const char* function) noexcept
{
    const auto decode = [&](TOrvAction& object) {
        const TOrvActionInternalInfo& entry = EntryOf(action);
        // The code of a built-in action has one entry: codes of extensions begin above all of them.
        if (object.Entry() != &entry) throw OrvPLCException(u"Wrong decode method", ORV_SUBERROR_WRONG_ACTION);
        ParameterMap& parameters = object.Parameters();
        std::size_t position = 0;
        for (const DecodeOutput& output : outputs) {
            Decode(parameters.FindDeclared(position), output, entry.Parameters[position]);
            ++position;
        }
    };
    return OnAction(handle, decode, function);
}

}  // namespace OrvPLC
