// Reading a value as another kind, and turning it into one.
#include "objects/parameter.h"

#include <limits>
#include <utility>

#include "catalogue/boundary.h"
#include "catalogue/value_kind.h"
#include "ulmo/date_time.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

// Doubles outside the range of the target stop at its limits and NaN gives 0: the plain cast would be undefined there.
template <class Integer>
Integer Truncate(double value)
{
    constexpr auto low = std::numeric_limits<Integer>::min();
    constexpr auto high = std::numeric_limits<Integer>::max();
    if (!(value == value)) return 0;
    if (value <= static_cast<double>(low)) return low;
    if (value >= static_cast<double>(high)) return high;
    return static_cast<Integer>(value);
}

}  // namespace

bool TOrvParameter::ReadBoolean(bool& value) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: value = small_ != 0; return true;
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime: value = numbers_.large != 0; return true;
    case ValueKind::NumericDouble: value = numbers_.real != 0.0; return true;
    // Only the text counts: a channel with an id but without a name is false. Deliberate.
    case ValueKind::String:
    case ValueKind::EventType:
    case ValueKind::MediaChannel:
    case ValueKind::Resource:
    case ValueKind::ResultDataSet: value = length_ != 0; return true;
    case ValueKind::None:
    case ValueKind::Guid:
    case ValueKind::Rect: break;
    }
    return false;
}

bool TOrvParameter::ReadInt32(std::int32_t& value) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::MediaChannel: value = small_; return true;
    // The low half, whatever the high one holds. Deliberate.
    case ValueKind::Numeric64Bit: value = static_cast<std::int32_t>(numbers_.large & 0xFFFFFFFF); return true;
    case ValueKind::NumericDouble: value = Truncate<std::int32_t>(numbers_.real); return true;
    case ValueKind::String: value = Ulmo::ScanInt32(Wide()); return true;
    // A date as a number says only whether it is set. Deliberate, here and in the next two reads.
    case ValueKind::DateTime: value = numbers_.large != 0; return true;
    case ValueKind::None:
    case ValueKind::Guid:
    case ValueKind::EventType:
    case ValueKind::Resource:
    case ValueKind::Rect:
    case ValueKind::ResultDataSet: break;
    }
    return false;
}

bool TOrvParameter::ReadInt64(std::int64_t& value) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: value = small_; return true;
    // Of a channel the id, where the read of 32 bits gives its number.
    case ValueKind::Numeric64Bit:
    case ValueKind::EventType:
    case ValueKind::MediaChannel:
    case ValueKind::Rect: value = numbers_.large; return true;
    case ValueKind::NumericDouble: value = Truncate<std::int64_t>(numbers_.real); return true;
    case ValueKind::String: value = Ulmo::ScanInt64(Wide()); return true;
    case ValueKind::DateTime: value = numbers_.large != 0; return true;
    case ValueKind::None:
    case ValueKind::Guid:
    case ValueKind::Resource:
    case ValueKind::ResultDataSet: break;
    }
    return false;
}

bool TOrvParameter::ReadDouble(double& value) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit: value = small_; return true;
    case ValueKind::Numeric64Bit: value = static_cast<double>(numbers_.large); return true;
    case ValueKind::NumericDouble: value = numbers_.real; return true;
    case ValueKind::String: value = Ulmo::ScanDouble(Wide()); return true;
    case ValueKind::DateTime: value = numbers_.large != 0 ? 1.0 : 0.0; return true;
    case ValueKind::None:
    case ValueKind::Guid:
    case ValueKind::EventType:
    case ValueKind::MediaChannel:
    case ValueKind::Resource:
    case ValueKind::Rect:
    case ValueKind::ResultDataSet: break;
    }
    return false;
}

bool TOrvParameter::ReadDateTime(TUlmoDateTime& value) const
{
    if (kind_ == ORV_KIND_Numeric64Bit || kind_ == ORV_KIND_DateTime) {
        value = DateTime();
        return true;
    }
    if (kind_ != ORV_KIND_String) return false;
    const auto parsed = Ulmo::TryFromText(Wide());
    if (parsed) value = *parsed;
    return parsed.has_value();
}

bool TOrvParameter::ReadGuid(TOrvGuid& value) const
{
    if (kind_ != ORV_KIND_Guid && kind_ != ORV_KIND_Resource) return false;
    value = guid_;
    return true;
}

bool TOrvParameter::ReadRect(std::int64_t& packed) const
{
    if (kind_ != ORV_KIND_Numeric64Bit && kind_ != ORV_KIND_Rect) return false;
    packed = numbers_.large;
    return true;
}

bool TOrvParameter::ReadEventType(TOrvEventTypeValue& value) const
{
    if (kind_ != ORV_KIND_EventType) return false;
    value.id = static_cast<std::uint64_t>(numbers_.large);
    value.name = Boundary(Wide().data());
    return true;
}

bool TOrvParameter::ReadMediaChannel(TOrvChannelValue& value) const
{
    if (kind_ != ORV_KIND_MediaChannel) return false;
    value.id = static_cast<std::uint64_t>(numbers_.large);
    value.name = Boundary(Wide().data());
    value.number = static_cast<std::uint32_t>(small_);
    return true;
}

bool TOrvParameter::ReadResource(TOrvResourceValue& value) const
{
    if (kind_ != ORV_KIND_Resource) return false;
    value.guid = guid_;
    value.name = Boundary(Wide().data());
    return true;
}

const std::int32_t* TOrvParameter::Int32InPlace()
{
    return ConvertInPlace(ORV_KIND_Numeric32Bit) ? &small_ : nullptr;
}

const std::int64_t* TOrvParameter::Int64InPlace()
{
    return ConvertInPlace(ORV_KIND_Numeric64Bit) ? &numbers_.large : nullptr;
}

const double* TOrvParameter::DoubleInPlace()
{
    return ConvertInPlace(ORV_KIND_NumericDouble) ? &numbers_.real : nullptr;
}

const TUlmoDateTime* TOrvParameter::DateTimeInPlace() const
{
    // The record is one 64-bit number, so it may be seen in place.
    return kind_ == ORV_KIND_DateTime ? reinterpret_cast<const TUlmoDateTime*>(&numbers_.large) : nullptr;
}

bool TOrvParameter::ConvertInPlace(std::uint32_t kind)
{
    if (kind == ORV_KIND_Numeric64Bit && kind_ == ORV_KIND_DateTime) return Retype(kind, 0);
    return kind == kind_ || ConvertTo(kind);
}

bool TOrvParameter::Retype(std::uint32_t kind, std::uint32_t enumType)
{
    if (kind != kind_ && !ConvertTo(kind)) return false;
    SetKindAndEnum(kind, enumType);
    return true;
}

bool TOrvParameter::ConvertTo(std::uint32_t kind)
{
    switch (ValueKind{kind}) {
    case ValueKind::Boolean: {
        bool truth = false;
        if (!ReadBoolean(truth)) return false;
        small_ = truth;
        return true;
    }
    case ValueKind::Numeric32Bit: return ReadInt32(small_);
    case ValueKind::Numeric64Bit: return ReadInt64(numbers_.large);
    case ValueKind::NumericDouble: return ReadDouble(numbers_.real);
    case ValueKind::String: {
        std::u16string text;
        if (!AppendText(text)) return false;
        SetText(text);
        return true;
    }
    case ValueKind::DateTime: return ConvertToDateTime();
    // In the cases without a conversion the field is the right one already, and only the kind changes.
    case ValueKind::Guid: return kind_ == ORV_KIND_Resource;
    case ValueKind::EventType: return ConvertToEventType();
    case ValueKind::MediaChannel: return ConvertToMediaChannel();
    case ValueKind::Resource: return kind_ == ORV_KIND_String;  // without a guid
    case ValueKind::Rect: return kind_ == ORV_KIND_Numeric64Bit;
    case ValueKind::ResultDataSet: return kind_ == ORV_KIND_String;
    case ValueKind::None: break;
    }
    return false;
}

bool TOrvParameter::ConvertToDateTime()
{
    TUlmoDateTime value{};
    if (!ReadDateTime(value)) return false;
    numbers_.large = static_cast<std::int64_t>(value.value);
    return true;
}

bool TOrvParameter::ConvertToEventType()
{
    if (kind_ == ORV_KIND_Numeric32Bit) {
        // A String keeps the id that the value had before it was a String; a number keeps the name. Deliberate.
        numbers_.large = small_;
    } else if (kind_ != ORV_KIND_String) {
        return false;
    }
    small_ = 0;
    return true;
}

bool TOrvParameter::ConvertToMediaChannel()
{
    switch (kind_) {
    case ORV_KIND_Numeric32Bit: SetText({}); break;
    case ORV_KIND_Numeric64Bit:
        small_ = static_cast<std::int32_t>(numbers_.large & 0xFFFFFFFF);
        SetText({});
        break;
    case ORV_KIND_String: small_ = 0; break;
    default: return false;
    }
    numbers_.large = 0;
    return true;
}

}  // namespace OrvPLC
