#include "forms/binary_writer.h"

#include <cstring>
#include <limits>
#include <string_view>

#include "catalogue/value_kind.h"
#include "platform/system_string.h"
#include "ulmo/copy_units.h"

namespace OrvPLC {

namespace {

using Output = TOrvBinaryCursor::Output;

// A field that does not fit in whole is left out, and so is all behind it: the room is negative from there on.
template <class Value>
Output PutField(Output output, const Value& value)
{
    const std::int64_t left = output.room - static_cast<std::int64_t>(sizeof value);
    if (left < 0) return {output.position, left};
    std::memcpy(output.position, &value, sizeof value);
    return {output.position + sizeof value, left};
}

// Count, units and terminator are one field.
Output PutText(Output output, std::u16string_view text)
{
    constexpr char16_t kEnd = 0;
    const auto count = static_cast<std::uint32_t>(text.size() + 1);
    const std::size_t bytes = text.size() * sizeof(char16_t);
    const std::size_t size = sizeof count + bytes + sizeof kEnd;
    const std::int64_t left = output.room - static_cast<std::int64_t>(size);
    if (left < 0) return {output.position, left};
    std::memcpy(output.position, &count, sizeof count);
    Ulmo::CopyUnits(output.position + sizeof count, text.data(), text.size());
    std::memcpy(output.position + sizeof count + bytes, &kEnd, sizeof kEnd);
    return {output.position + size, left};
}

// A number that is no kind has no payload.
Output PutPayload(Output output, const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: return PutField(output, value.Small());
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: return PutField(output, value.Large());
    case ValueKind::NumericDouble: return PutField(output, value.Real());
    case ValueKind::String:
    case ValueKind::ResultDataSet: return PutText(output, value.Wide());
    case ValueKind::Guid: return PutField(output, value.Guid());
    case ValueKind::EventType: return PutField(PutText(output, value.Wide()), value.Large());
    case ValueKind::MediaChannel:
        return PutField(PutField(PutText(output, value.Wide()), value.Large()), value.Small());
    case ValueKind::Resource: return PutField(PutText(output, value.Wide()), value.Guid());
    case ValueKind::None: break;
    }
    return output;
}

Output PutRecord(Output output, std::u16string_view name, const TOrvParameter& parameter)
{
    output = PutText(output, name);
    output = PutField(output, parameter.Kind());
    output = PutField(output, parameter.EnumType());
    return PutPayload(output, parameter);
}

}  // namespace

// Parameters go out in the order of the map's keys, not in that of the catalogue.
void TOrvBinaryCursor::Write(const TOrvAction& action)
{
    const TOrvParameter* description = action.DescriptionParameter();
    Output output = PutText(PutField(output_, action.Kind()), action.Name());
    output = PutField(output, static_cast<std::uint32_t>(action.Parameters().Size() + (description ? 1 : 0)));
    if (description)
        output = PutRecord(output, action.DescriptionName(), *description);  // an empty one as well, deliberately
    action.Parameters().ForEachByKey([&output](std::u16string_view, std::u16string_view name,
                                               const TOrvParameter& value,
                                               std::size_t) { output = PutRecord(output, name, value); });
    output_ = output;
}

void TOrvAction::WriteBinary(TOrvBinaryCursor& cursor) const
{
    cursor.Write(*this);
}

// Null and 0 when there is no memory for it, or when a 32-bit size cannot tell its length.
void ORV_CALL TOrvMessage::StoreToBinary(void** block, std::uint32_t* size)
{
    TOrvBinaryCursor measure(nullptr, 0);
    WriteBinary(measure);
    const std::int64_t required = measure.Required();
    // Both walks see the same object, so the second fits exactly.
    const bool countable = required <= std::numeric_limits<std::uint32_t>::max();
    *block = countable ? Platform::AllocateTaskMemory(static_cast<std::size_t>(required)) : nullptr;
    *size = *block ? static_cast<std::uint32_t>(required) : 0;
    if (!*block) return;
    TOrvBinaryCursor cursor(*block, required);
    WriteBinary(cursor);
}

}  // namespace OrvPLC
