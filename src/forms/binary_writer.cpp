#include "forms/binary_writer.h"

#include <cstring>
#include <limits>
#include <string_view>

#include "catalogue/value_kind.h"
#include "platform/system_string.h"
#include "ulmo/copy_units.h"

namespace OrvPLC {

namespace {

using Place = TOrvBinaryCursor::Place;

// A field that does not fit in whole is left out, and so is all behind it: the room is negative from there on.
template <class Value>
Place PutField(Place place, const Value& value)
{
    const std::int64_t left = place.room - static_cast<std::int64_t>(sizeof value);
    if (left < 0) return {place.position, left};
    std::memcpy(place.position, &value, sizeof value);
    return {place.position + sizeof value, left};
}

// Count, units and terminator are one field.
Place PutText(Place place, std::u16string_view text)
{
    constexpr char16_t kEnd = 0;
    const auto count = static_cast<std::uint32_t>(text.size() + 1);
    const std::size_t bytes = text.size() * sizeof(char16_t);
    const std::size_t size = sizeof count + bytes + sizeof kEnd;
    const std::int64_t left = place.room - static_cast<std::int64_t>(size);
    if (left < 0) return {place.position, left};
    std::memcpy(place.position, &count, sizeof count);
    Ulmo::CopyUnits(place.position + sizeof count, text.data(), text.size());
    std::memcpy(place.position + sizeof count + bytes, &kEnd, sizeof kEnd);
    return {place.position + size, left};
}

// A kind that does not exist has no payload.
Place PutPayload(Place place, const TOrvParameter& value)
{
    switch (ValueKind{value.Kind()}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: return PutField(place, value.Small());
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: return PutField(place, value.Large());
    case ValueKind::NumericDouble: return PutField(place, value.Real());
    case ValueKind::String:
    case ValueKind::ResultDataSet: return PutText(place, value.Wide());
    case ValueKind::Guid: return PutField(place, value.Guid());
    case ValueKind::EventType: return PutField(PutText(place, value.Wide()), value.Large());
    case ValueKind::MediaChannel: return PutField(PutField(PutText(place, value.Wide()), value.Large()), value.Small());
    case ValueKind::Resource: return PutField(PutText(place, value.Wide()), value.Guid());
    case ValueKind::None: break;
    }
    return place;
}

Place PutRecord(Place place, std::u16string_view name, const TOrvParameter& parameter)
{
    place = PutText(place, name);
    place = PutField(place, parameter.Kind());
    place = PutField(place, parameter.EnumType());
    return PutPayload(place, parameter);
}

}  // namespace

// The walk is that of the map: the catalogue is not asked and its order plays no part.
void TOrvBinaryCursor::Write(const TOrvAction& action)
{
    const TOrvParameter* description = action.DescriptionParameter();
    Place place = PutText(PutField(place_, action.Kind()), action.Name());
    place = PutField(place, static_cast<std::uint32_t>(action.Parameters().Size() + (description ? 1 : 0)));
    if (description)
        place = PutRecord(place, action.DescriptionName(), *description);  // an empty one as well, deliberately
    action.Parameters().ForEachByKey([&place](std::u16string_view, std::u16string_view name, const TOrvParameter& value,
                                              std::size_t) { place = PutRecord(place, name, value); });
    place_ = place;
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
    const bool countable = required <= std::numeric_limits<std::uint32_t>::max();
    *block = countable ? Platform::AllocateTaskMemory(static_cast<std::size_t>(required)) : nullptr;
    *size = *block ? static_cast<std::uint32_t>(required) : 0;
    if (!*block) return;
    TOrvBinaryCursor cursor(*block, required);
    WriteBinary(cursor);
}

}  // namespace OrvPLC
