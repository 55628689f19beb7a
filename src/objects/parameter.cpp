#include "objects/parameter.h"

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "catalogue/boundary.h"
#include "catalogue/value_kind.h"
#include "ulmo/copy_units.h"
#include "ulmo/guid_tools.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

const TOrvParameter::EmptyText TOrvParameter::kNoText = {{0}, 0};

TOrvParameter::TOrvParameter(const TOrvParameter& other) : TOrvParameter()
{
    CopyFields(other);
    SetText(other.Wide());
    if (other.GetSide()) CopySide(other);
}

TOrvParameter::TOrvParameter(TOrvParameter&& other)
{
    other.LeaveTextOfRoom();
    CopyFields(other);
    length_ = std::exchange(other.length_, 0);
    text_ = std::exchange(other.text_, NoText());
}

TOrvParameter& TOrvParameter::operator=(const TOrvParameter& other)
{
    if (this != &other) *this = TOrvParameter(other);
    return *this;
}

TOrvParameter& TOrvParameter::operator=(TOrvParameter&& other)
{
    if (this == &other) return *this;
    char16_t* const own = Units();
    if (Suits(own, other.length_)) {
        Ulmo::CopyUnits(own, other.Units(), other.length_ + 1);
        other.ReplaceUnits(own);
    } else {
        other.LeaveTextOfRoom();
        if (IsOnHeap(own)) ::operator delete(&HeaderOf(own));
    }
    delete GetSide();
    CopyFields(other);
    length_ = std::exchange(other.length_, 0);
    text_ = std::exchange(other.text_, NoText());
    return *this;
}

void TOrvParameter::CopySide(const TOrvParameter& other)
{
    const Ulmo::CriticalSectionGuard guard(other.Lock());
    auto copy = std::make_unique<Side>(*other.GetSide());
    copy->units = Units();
    text_ = reinterpret_cast<std::uintptr_t>(copy.release()) | kToSide;
}

void TOrvParameter::FreeMemory() noexcept
{
    char16_t* const units = Units();
    if (IsOnHeap(units)) ::operator delete(&HeaderOf(units));
    delete GetSide();
}

char16_t* TOrvParameter::UnitsElsewhere() const noexcept
{
    if (Leads(kToHeapText)) return reinterpret_cast<char16_t*>(text_ - kToHeapText);
    return Leads(kToSide) ? GetSide()->units : reinterpret_cast<char16_t*>(NoText());
}

char16_t* TOrvParameter::NewText(std::size_t units)
{
    if (units >= TextHeader::kOnHeap) throw std::length_error("the text of a parameter is too long");
    void* const memory = ::operator new(TextRoom::BytesFor(units));
    auto* const header = new (memory) TextHeader{static_cast<std::uint32_t>(units) | TextHeader::kOnHeap};
    return reinterpret_cast<char16_t*>(header + 1);
}

void TOrvParameter::ReplaceUnits(char16_t* units) noexcept
{
    char16_t* const old = Units();
    if (old != units && IsOnHeap(old)) ::operator delete(&HeaderOf(old));
    if (Side* const side = GetSide()) {
        side->units = units;
    } else {
        text_ = LeadingTo(units);
    }
}

void TOrvParameter::ReplaceText(std::u16string_view text)
{
    char16_t* units = Units();
    if (Suits(units, text.size())) {
        if (!text.empty()) std::memmove(units, text.data(), text.size() * sizeof(char16_t));
        units[text.size()] = 0;
    } else if (text.empty()) {
        ReplaceUnits(reinterpret_cast<char16_t*>(NoText()));
    } else {
        units = NewText(text.size());
        Ulmo::CopyUnits(units, text.data(), text.size());
        units[text.size()] = 0;
        ReplaceUnits(units);
    }
    length_ = static_cast<std::uint32_t>(text.size());
}

void TOrvParameter::LeaveTextOfRoom()
{
    LeaveRoom();
    char16_t* const units = Units();
    if (IsOnHeap(units)) return;
    if (length_ == 0) return ReplaceUnits(reinterpret_cast<char16_t*>(NoText()));
    char16_t* const copy = NewText(length_);
    Ulmo::CopyUnits(copy, units, length_ + 1);
    ReplaceUnits(copy);
}

// A heap block that would stay mostly empty is given back instead of being reused.
bool TOrvParameter::Suits(char16_t* units, std::size_t length) noexcept
{
    const std::size_t room = RoomOf(units);
    return length <= room && room != 0 && (!IsOnHeap(units) || room / 4 <= length);
}

// The guid lies where the numbers are. What was the large number comes back when the guid goes.
void TOrvParameter::ChangeLayout()
{
    if (HoldsGuid(kind_)) {
        numbers_ = {LargeBesideGuid(), 0};
        return;
    }
    if (numbers_.large != 0 || GetSide()) MakeSide().large = numbers_.large;
    guid_ = {};
}

bool TOrvParameter::SameOtherValue(const TOrvParameter& other) const
{
    switch (ValueKind{kind_}) {
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: return Large() == other.Large();
    case ValueKind::NumericDouble: return Real() == other.Real();
    case ValueKind::ResultDataSet: return Ulmo::SameText(Wide(), other.Wide());
    case ValueKind::Guid: return Ulmo::GuidTools::Equal(guid_, other.guid_);
    case ValueKind::EventType: return Large() == other.Large() && Ulmo::SameText(Wide(), other.Wide());
    case ValueKind::MediaChannel:
        return small_ == other.small_ && Large() == other.Large() && Ulmo::SameText(Wide(), other.Wide());
    case ValueKind::Resource: return Ulmo::GuidTools::Equal(guid_, other.guid_) && Ulmo::SameText(Wide(), other.Wide());
    case ValueKind::None:
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::String: break;
    }
    return false;
}

TOrvParameter::Side& TOrvParameter::MakeSide()
{
    if (Side* const side = GetSide()) return *side;
    auto* const side = new Side(Units());
    text_ = reinterpret_cast<std::uintptr_t>(side) | kToSide;
    return *side;
}

// A lock for each value would cost an allocation; values that happen to share one only wait for each other.
Ulmo::CriticalSection& TOrvParameter::Lock() const
{
    constexpr std::size_t kCount = 64;
    static std::array<Ulmo::CriticalSection, kCount> pool;
    return pool[(reinterpret_cast<std::uintptr_t>(this) >> 3) % kCount];
}

TOrvParameter::Side::Side(const Side& other) : units(nullptr), large(other.large), narrow(other.narrow)
{
    items.reserve(other.items.size());
    for (TOrvResultDataItem item : other.items) {
        if (item.name) item.name = NewBStr(ViewOf(item.name));
        items.push_back(item);
    }
}

TOrvParameter::Side::~Side()
{
    FreeItems();
}

void TOrvParameter::Side::FreeItems()
{
    for (const TOrvResultDataItem& item : items) FreeBStr(item.name);
    items.clear();
}

}  // namespace OrvPLC
