#include "objects/parameter_map.h"

#include <algorithm>
#include <bit>
#include <new>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

std::size_t ParameterMap::SlotCount(const TOrvActionInternalInfo* entry)
{
    return entry && !entry->HasRepeatedNames() ? std::min(entry->Parameters.size(), kMaximumSlots) : 0;
}

ParameterMap::ParameterMap(const TOrvActionInternalInfo* entry, void* slots)
    : entry_(entry), slots_(static_cast<TOrvParameter*>(slots)), slotCount_(SlotCount(entry))
{}

ParameterMap::~ParameterMap()
{
    for (std::uint64_t left = present_; left != 0; left &= left - 1) {
        Slot(static_cast<std::size_t>(std::countr_zero(left))).~TOrvParameter();
    }
}

std::size_t ParameterMap::Size() const noexcept
{
    return static_cast<std::size_t>(std::popcount(present_)) + nodes_.size();
}

std::size_t ParameterMap::DeclaredSlot(std::u16string_view name) const
{
    if (!entry_) return kNotFound;
    const std::size_t position = entry_->FindParameter(name);
    return position < slotCount_ ? position : kNotFound;
}

const TOrvParameter* ParameterMap::FindNode(std::u16string_view key) const
{
    const auto node = nodes_.find(key);
    return node == nodes_.end() ? nullptr : &node->second;
}

TOrvParameter* ParameterMap::Find(std::u16string_view name)
{
    const std::size_t position = DeclaredSlot(name);
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    if (nodes_.empty()) return nullptr;
    return const_cast<TOrvParameter*>(FindNode(Ulmo::LowerCase(name)));
}

TOrvParameter* ParameterMap::FindDeclared(std::size_t position)
{
    if (position < slotCount_) return Has(position) ? &Slot(position) : nullptr;
    return const_cast<TOrvParameter*>(FindNode(entry_->Parameters[position].LowerName.view()));
}

const TOrvParameter* ParameterMap::FindKey(std::u16string_view key) const
{
    const std::size_t position = DeclaredSlot(key);
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    return FindNode(key);
}

ParameterMap::Place ParameterMap::PlaceToStore(std::u16string_view name)
{
    if (nextStore_ < slotCount_ && entry_->IsSpelt(nextStore_, name)) return {nextStore_++, true};
    const std::size_t position = DeclaredSlot(name);
    if (position == kNotFound) return {kNotFound, false};
    nextStore_ = position + 1;
    return {position, entry_->IsSpelt(position, name)};
}

void ParameterMap::Put(TOrvParameter value)
{
    const Place place = PlaceToStore(value.Name().view());
    if (place.position == kNotFound) return StoreInNode(std::move(value));
    value.SetName(NameAt(place, value.Name().view()));
    if (Has(place.position)) {
        Slot(place.position) = std::move(value);
        return;
    }
    new (&Slot(place.position)) TOrvParameter(std::move(value));
    present_ |= std::uint64_t{1} << place.position;
}

void ParameterMap::StoreInNode(TOrvParameter value)
{
    nodes_.insert_or_assign(Ulmo::LowerCase(value.Name().view()), std::move(value));
}

bool ParameterMap::Remove(std::u16string_view name)
{
    const std::size_t position = DeclaredSlot(name);
    if (position != kNotFound) {
        if (!Has(position)) return false;
        Slot(position).~TOrvParameter();
        present_ &= ~(std::uint64_t{1} << position);
        return true;
    }
    return nodes_.erase(Ulmo::LowerCase(name)) != 0;
}

bool ParameterMap::SameContent(const ParameterMap& other) const
{
    if (entry_ == other.entry_) {
        // The same declaration: slots stand side by side, and so do nodes.
        if (present_ != other.present_ || nodes_.size() != other.nodes_.size()) return false;
        for (std::uint64_t left = present_; left != 0; left &= left - 1) {
            const auto position = static_cast<std::size_t>(std::countr_zero(left));
            if (!Slot(position).SameValue(other.Slot(position))) return false;
        }
        return std::equal(nodes_.begin(), nodes_.end(), other.nodes_.begin(), [](const auto& a, const auto& b) {
            return Ulmo::SameText(a.first, b.first) && a.second.SameValue(b.second);
        });
    }
    if (Size() != other.Size()) return false;
    bool same = true;
    ForEachByKey([&](std::u16string_view key, const TOrvParameter& value) {
        const TOrvParameter* counterpart = same ? other.Find(key) : nullptr;
        same = counterpart && counterpart->SameValue(value);
    });
    return same;
}

void ParameterMap::CopyFrom(const ParameterMap& other)
{
    if (entry_ != other.entry_) {
        other.ForEachByKey([this](std::u16string_view, const TOrvParameter& value) { Put(value); });
        return;
    }
    for (std::uint64_t left = other.present_; left != 0; left &= left - 1) {
        const auto position = static_cast<std::size_t>(std::countr_zero(left));
        new (&Slot(position)) TOrvParameter(other.Slot(position));
        present_ |= std::uint64_t{1} << position;
    }
    nodes_ = other.nodes_;
}

}  // namespace OrvPLC
