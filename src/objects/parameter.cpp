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

// Has no room and is not on the heap, so nobody writes to it and nobody frees it.
const TOrvParameter::EmptyText TOrvParameter::kNoText = {{0}, 0};

// Delegates, so that the destructor runs if a later step fails.
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
    // The text comes into this value's memory, and the other is made to point there too: what is taken over from it
    // below, its pointer or its side, then leads to the text here.
    if (Suits(own, other.length_)) {
        Ulmo::CopyUnits(own, other.Units(), other.length_ + 1);
        other.ReplaceUnits(own);
    } else {
        // The only step that may fail, and nothing has changed yet.
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
    // Another thread may be building the narrow text or the items at this moment.
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
    // The highest bit of the room marks a text on the heap.
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
        // The new text may be a part of the present one.
        if (!text.empty()) std::memmove(units, text.data(), text.size() * sizeof(char16_t));
        units[text.size()] = 0;
    } else if (text.empty()) {
        ReplaceUnits(reinterpret_cast<char16_t*>(NoText()));
    } else {
        // For the same reason the old text is freed after it was copied from.
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
    // A zero needs no side: without one LargeBesideGuid() gives 0.
    if (numbers_.large != 0 || GetSide()) MakeSide().large = numbers_.large;
    guid_ = {};
}

bool TOrvParameter::SameOtherValue(const TOrvParameter& other) const
{
    if (kind_ != other.kind_) return false;
    const auto sameText = [&] { return Ulmo::SameText(Wide(), other.Wide()); };
    switch (ValueKind{kind_}) {
    case ValueKind::Numeric64Bit:
    case ValueKind::DateTime:
    case ValueKind::Rect: return Large() == other.Large();
    case ValueKind::NumericDouble: return Real() == other.Real();
    case ValueKind::String:
    case ValueKind::ResultDataSet: return sameText();
    case ValueKind::Guid: return Ulmo::GuidTools::Equal(guid_, other.guid_);
    case ValueKind::EventType: return Large() == other.Large() && sameText();
    case ValueKind::Resource: return Ulmo::GuidTools::Equal(guid_, other.guid_) && sameText();
    // Of one kind, so their small numbers differ.
    case ValueKind::Boolean:
    case ValueKind::Numeric32Bit:
    case ValueKind::MediaChannel:
    case ValueKind::None: break;
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

// A lock for each value would cost an allocation; values that happen to share one only wait for each other. The three
// low bits tell nothing, since addresses of values are multiples of eight.
Ulmo::CriticalSection& TOrvParameter::Lock() const
{
    constexpr std::size_t kCount = 64;
    static std::array<Ulmo::CriticalSection, kCount> pool;
    return pool[(reinterpret_cast<std::uintptr_t>(this) >> 3) % kCount];
}

// Delegates, so that the destructor frees the names that were copied before memory ran out.
TOrvParameter::Side::Side(const Side& other) : Side(static_cast<char16_t*>(nullptr))
{
    large = other.large;
    narrow = other.narrow;
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
