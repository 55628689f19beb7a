#include "objects/parameter.h"

#include <array>
#include <cstring>
#include <utility>

#include "platform/system_string.h"
#include "ulmo/guid_tools.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// A lock a value would cost an allocation; values that happen to share one only wait for each other.
template <std::size_t count>
std::array<Ulmo::CriticalSection, count>& LockPool()
{
    static std::array<Ulmo::CriticalSection, count> pool;
    return pool;
}

}  // namespace

ParameterName ParameterName::Copy(std::u16string_view name)
{
    ParameterName result;
    if (name.empty()) return result;
    auto* copy = new char16_t[name.size() + 1];
    std::memcpy(copy, name.data(), name.size() * sizeof(char16_t));
    copy[name.size()] = 0;
    result.text_ = copy;
    result.length_ = static_cast<std::uint32_t>(name.size());
    result.owned_ = true;
    return result;
}

ParameterName::ParameterName(const ParameterName& other) : ParameterName()
{
    *this = other.owned_ ? Copy(other.view()) : Shared(other.view());
}

TOrvParameter::TOrvParameter(const TOrvParameter& other)
    : kind_(other.kind_),
      enumType_(other.enumType_),
      small_(other.small_),
      lock_(other.lock_),
      large_(other.large_),
      real_(other.real_),
      guid_(other.guid_),
      wide_(other.wide_),
      name_(other.name_)
{
    if (other.rare_) {
        const Ulmo::CriticalSectionGuard guard(other.Lock());
        rare_ = std::make_unique<Rare>(*other.rare_);
    }
}

TOrvParameter& TOrvParameter::operator=(const TOrvParameter& other)
{
    if (this != &other) *this = TOrvParameter(other);
    return *this;
}

void TOrvParameter::Reset(ParameterName name)
{
    kind_ = 0;
    enumType_ = 0;
    small_ = 0;
    lock_ = ChooseLock(this);
    large_ = 0;
    real_ = 0;
    guid_ = {};
    wide_.clear();
    name_ = std::move(name);
    rare_.reset();
}

void TOrvParameter::SetBoolean(bool value)
{
    SetKindAndEnum(ORV_KIND_Boolean, 0);
    small_ = value;
}

void TOrvParameter::SetInt32(std::int32_t value, std::uint32_t enumType)
{
    SetKindAndEnum(ORV_KIND_Numeric32Bit, enumType);
    small_ = value;
}

void TOrvParameter::SetInt64(std::int64_t value)
{
    SetKindAndEnum(ORV_KIND_Numeric64Bit, 0);
    large_ = value;
}

void TOrvParameter::SetDouble(double value)
{
    SetKindAndEnum(ORV_KIND_NumericDouble, 0);
    real_ = value;
}

void TOrvParameter::SetString(std::u16string_view value)
{
    SetKindAndEnum(ORV_KIND_String, 0);
    wide_.assign(value);
}

void TOrvParameter::SetDateTime(TUlmoDateTime value)
{
    SetKindAndEnum(ORV_KIND_DateTime, 0);
    large_ = static_cast<std::int64_t>(value.value);
}

void TOrvParameter::SetGuid(const TOrvGuid& value)
{
    SetKindAndEnum(ORV_KIND_Guid, 0);
    guid_ = value;
}

void TOrvParameter::SetEventType(std::uint64_t id, std::u16string_view name)
{
    SetKindAndEnum(ORV_KIND_EventType, 0);
    large_ = static_cast<std::int64_t>(id);
    wide_.assign(name);
}

void TOrvParameter::SetMediaChannel(std::uint64_t id, std::uint32_t number, std::u16string_view name)
{
    SetKindAndEnum(ORV_KIND_MediaChannel, 0);
    large_ = static_cast<std::int64_t>(id);
    small_ = static_cast<std::int32_t>(number);
    wide_.assign(name);
}

void TOrvParameter::SetResource(const TOrvGuid& guid, std::u16string_view name)
{
    SetKindAndEnum(ORV_KIND_Resource, 0);
    guid_ = guid;
    wide_.assign(name);
}

void TOrvParameter::SetRect(std::int64_t packed)
{
    SetKindAndEnum(ORV_KIND_Rect, 0);
    large_ = packed;
}

void TOrvParameter::SetResultDataText(std::u16string_view internalForm)
{
    SetKindAndEnum(ORV_KIND_ResultDataSet, 0);
    wide_.assign(internalForm);
}

bool TOrvParameter::SameOtherValue(const TOrvParameter& other) const
{
    switch (kind_) {
    case ORV_KIND_Numeric64Bit:
    case ORV_KIND_DateTime:
    case ORV_KIND_Rect: return large_ == other.large_;
    case ORV_KIND_NumericDouble: return real_ == other.real_;
    case ORV_KIND_ResultDataSet: return Ulmo::SameText(wide_, other.wide_);
    case ORV_KIND_Guid: return Ulmo::GuidTools::Equal(guid_, other.guid_);
    case ORV_KIND_EventType: return large_ == other.large_ && Ulmo::SameText(wide_, other.wide_);
    case ORV_KIND_MediaChannel:
        return small_ == other.small_ && large_ == other.large_ && Ulmo::SameText(wide_, other.wide_);
    case ORV_KIND_Resource: return Ulmo::GuidTools::Equal(guid_, other.guid_) && Ulmo::SameText(wide_, other.wide_);
    default: return false;
    }
}

TOrvParameter::Rare& TOrvParameter::MakeRare()
{
    if (!rare_) rare_ = std::make_unique<Rare>();
    return *rare_;
}

Ulmo::CriticalSection& TOrvParameter::Lock() const
{
    return LockPool<kLockCount>()[lock_];
}

TOrvParameter::Rare::Rare(const Rare& other) : narrow(other.narrow)
{
    items.reserve(other.items.size());
    for (TOrvResultDataItem item : other.items) {
        const auto* name = reinterpret_cast<const char16_t*>(item.name);
        if (name) {
            item.name =
                reinterpret_cast<OrvBStr>(Platform::NewSystemString({name, Platform::SystemStringLength(name)}));
        }
        items.push_back(item);
    }
}

TOrvParameter::Rare::~Rare()
{
    FreeItems();
}

void TOrvParameter::Rare::FreeItems()
{
    for (const TOrvResultDataItem& item : items) {
        Platform::FreeSystemString(reinterpret_cast<char16_t*>(item.name));
    }
    items.clear();
}

}  // namespace OrvPLC
