#include "objects/parameter_map.h"

#include <algorithm>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// For texts that come later; an object with many parameters rarely has long ones in all of them.
constexpr std::size_t kUsualTextBytesPerSlot = 20;
constexpr std::size_t kMostUsualTextBytes = 376;

}  // namespace

std::size_t ParameterMap::UsualTextBytes(const TOrvActionInternalInfo* entry)
{
    return std::min(SlotCount(entry) * kUsualTextBytesPerSlot, kMostUsualTextBytes);
}

ParameterMap::~ParameterMap()
{
    // Slots are raw memory, in which only those that are present were constructed. Every object ends here, and most
    // have few slots, so this walk is the plainest one.
    TOrvParameter* slot = &Slot(0);
    for (std::uint64_t left = present_; left != 0; left >>= 1, ++slot) {
        if (left & 1) slot->~TOrvParameter();
    }
    if (more_) FreeMore();
}

// A function of its own, so that the end of a usual object saves no registers for it.
[[gnu::noinline]] void ParameterMap::FreeMore() noexcept
{
    more_.reset();
}

std::size_t ParameterMap::Size() const noexcept
{
    return static_cast<std::size_t>(std::popcount(present_)) + (more_ ? more_->nodes.size() : 0);
}

std::size_t ParameterMap::TextBytes() const
{
    // Texts of nodes are not counted: they live on the heap.
    std::size_t bytes = 0;
    ForEachSlot([&](const TOrvParameter& slot, std::size_t) { bytes += TextRoom::Reserve(slot.Wide().size()); });
    return bytes;
}

ParameterMap::More& ParameterMap::NeedMore()
{
    if (!more_) more_ = std::make_unique<More>();
    return *more_;
}

const ParameterMap::Nodes& ParameterMap::GetNodes() const
{
    static const Nodes none;
    return more_ ? more_->nodes : none;
}

std::size_t ParameterMap::DeclaredSlot(std::u16string_view name) const
{
    if (!entry_) return kNotFound;
    const std::size_t position = entry_->FindParameter(name);
    return position < slotCount_ ? position : kNotFound;
}

ParameterMap::Node* ParameterMap::FindNode(std::u16string_view key) const
{
    if (!more_) return nullptr;
    const auto node = more_->nodes.find(key);
    return node == more_->nodes.end() ? nullptr : &node->second;
}

TOrvParameter* ParameterMap::Find(std::u16string_view name)
{
    const std::size_t position = PlaceOf(name).position;
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    if (!more_ || more_->nodes.empty()) return nullptr;
    Node* const node = FindNode(Ulmo::LowerCase(name));
    return node ? &node->value : nullptr;
}

// All parameters are past the last slot where a name repeats.
TOrvParameter* ParameterMap::FindDeclaredNode(std::size_t position) const
{
    Node* const node = FindNode(entry_->Parameters[position].LowerName.view());
    return node ? &node->value : nullptr;
}

const TOrvParameter* ParameterMap::FindKey(std::u16string_view key) const
{
    const std::size_t position = DeclaredSlot(key);
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    const Node* const node = FindNode(key);
    return node ? &node->value : nullptr;
}

ParameterMap::Place ParameterMap::PlaceOf(std::u16string_view name) const
{
    // Only a hint: whatever another reading thread has stored, the name is compared before the hint counts.
    const std::size_t expected = next_.load(std::memory_order_relaxed);
    if (expected < slotCount_ && entry_->IsSpelt(expected, name)) {
        next_.store(static_cast<std::uint8_t>(expected + 1), std::memory_order_relaxed);
        return {expected, true};
    }
    const std::size_t position = DeclaredSlot(name);
    if (position == kNotFound) return {kNotFound, false};
    next_.store(static_cast<std::uint8_t>(position + 1), std::memory_order_relaxed);
    return {position, entry_->IsSpelt(position, name)};
}

void ParameterMap::Put(std::u16string_view name, TOrvParameter&& value)
{
    const Place place = PlaceOf(name);
    if (place.position == kNotFound) return PutInNode(name, std::move(value));
    if (place.spelt) {
        PutInSlot(place.position, std::move(value));
        DropSpelling(place.position);
    } else {
        // What may fail comes before the value changes.
        Spelling spelling = MakeSpelling(place.position, name);
        PutInSlot(place.position, std::move(value));
        TakeSpelling(std::move(spelling));
    }
}

bool ParameterMap::CopyOne(const ParameterMap& other, std::u16string_view name)
{
    const std::size_t position = other.DeclaredSlot(name);
    if (position != kNotFound) {
        if (!other.Has(position)) return false;
        Put(other.NameOf(position), TOrvParameter(other.Slot(position)));
        return true;
    }
    const Node* const node = other.FindNode(Ulmo::LowerCase(name));
    if (node) Put(node->name, TOrvParameter(node->value));
    return node != nullptr;
}

void ParameterMap::PutInSlot(std::size_t position, TOrvParameter&& value)
{
    if (Has(position)) {
        Slot(position) = std::move(value);
        return;
    }
    new (&Slot(position)) TOrvParameter(std::move(value));
    present_ |= std::uint64_t{1} << position;
}

void ParameterMap::PutInNode(std::u16string_view name, TOrvParameter&& value)
{
    Node node{std::u16string(name), std::move(value)};
    // A node that exists stays where it is, so the value in it keeps its address.
    NeedMore().nodes.insert_or_assign(Ulmo::LowerCase(name), std::move(node));
}

bool ParameterMap::Remove(std::u16string_view name)
{
    const std::size_t position = DeclaredSlot(name);
    if (position != kNotFound) {
        if (!Has(position)) return false;
        Slot(position).~TOrvParameter();
        // Its text, if it was in the room, is lost to the room until the object ends.
        present_ &= ~(std::uint64_t{1} << position);
        DropSpelling(position);
        return true;
    }
    return more_ && more_->nodes.erase(Ulmo::LowerCase(name)) != 0;
}

std::u16string_view ParameterMap::SpellingOf(std::size_t position, std::u16string_view usual) const
{
    for (const Spelling& spelling : more_->spellings) {
        if (spelling.position == position) return spelling.name;
    }
    return usual;
}

ParameterMap::Spelling ParameterMap::MakeSpelling(std::size_t position, std::u16string_view name)
{
    std::vector<Spelling>& spellings = NeedMore().spellings;
    spellings.reserve(spellings.size() + 1);
    return {position, std::u16string(name)};
}

void ParameterMap::TakeSpelling(Spelling spelling) noexcept
{
    EraseSpelling(spelling.position);
    more_->spellings.push_back(std::move(spelling));
}

void ParameterMap::EraseSpelling(std::size_t position) noexcept
{
    std::erase_if(more_->spellings, [position](const Spelling& spelling) { return spelling.position == position; });
}

bool ParameterMap::SameNodes(const ParameterMap& other) const
{
    const Nodes& nodes = GetNodes();
    const Nodes& others = other.GetNodes();
    return std::equal(nodes.begin(), nodes.end(), others.begin(), others.end(), [](const auto& a, const auto& b) {
        return Ulmo::SameText(a.first, b.first) && a.second.value.SameValue(b.second.value);
    });
}

bool ParameterMap::SameUnderOtherDeclaration(const ParameterMap& other) const
{
    if (Size() != other.Size()) return false;
    // As many here as there, and each has its counterpart: then no key is left over. The walk cannot be stopped, so
    // after the first difference it looks nothing up any more.
    bool same = true;
    ForEachByKey([&](std::u16string_view key, std::u16string_view, const TOrvParameter& value, std::size_t) {
        const TOrvParameter* counterpart = same ? other.Find(key) : nullptr;
        same = counterpart && counterpart->SameValue(value);
    });
    return same;
}

void ParameterMap::CopyFrom(const ParameterMap& other)
{
    if (entry_ != other.entry_) {
        other.ForEachByKey([this](std::u16string_view, std::u16string_view name, const TOrvParameter& value,
                                  std::size_t) { Put(name, TOrvParameter(value)); });
        return;
    }
    // A bit is set after its value stands, so a failure leaves only values that are whole.
    other.ForEachSlot([this](const TOrvParameter& slot, std::size_t position) {
        new (&Slot(position)) TOrvParameter(slot, room_);
        present_ |= std::uint64_t{1} << position;
    });
    if (other.more_) more_ = std::make_unique<More>(*other.more_);
}

}  // namespace OrvPLC
