#include "objects/parameter_map.h"

#include <algorithm>
#include <bit>
#include <new>

#include "ulmo/string_conversion.h"

namespace OrvPLC {

std::size_t ParameterMap::SlotCount(const TOrvActionInternalInfo* entry)
{
    return entry ? std::min(entry->Parameters.size(), kMaximumSlots) : 0;
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

ParameterMap::Nodes::const_iterator ParameterMap::NodePlace(std::u16string_view key) const
{
    const auto below = [](const std::unique_ptr<Node>& node, std::u16string_view wanted) { return node->key < wanted; };
    return std::lower_bound(nodes_.begin(), nodes_.end(), key, below);
}

ParameterMap::Nodes::const_iterator ParameterMap::FindNode(std::u16string_view key) const
{
    const auto place = NodePlace(key);
    return place != nodes_.end() && Ulmo::SameText((*place)->key, key) ? place : nodes_.end();
}

TOrvParameter* ParameterMap::Find(std::u16string_view name)
{
    const std::size_t position = DeclaredSlot(name);
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    if (nodes_.empty()) return nullptr;
    const auto node = FindNode(Ulmo::LowerCase(name));
    return node == nodes_.end() ? nullptr : &(*node)->value;
}

TOrvParameter* ParameterMap::FindDeclared(std::size_t position)
{
    if (position < slotCount_) return Has(position) ? &Slot(position) : nullptr;
    const auto node = FindNode(entry_->Parameters[position].LowerName.view());
    return node == nodes_.end() ? nullptr : &(*node)->value;
}

const TOrvParameter* ParameterMap::FindKey(std::u16string_view key) const
{
    const std::size_t position = DeclaredSlot(key);
    if (position != kNotFound) return Has(position) ? &Slot(position) : nullptr;
    const auto node = FindNode(key);
    return node == nodes_.end() ? nullptr : &(*node)->value;
}

std::size_t ParameterMap::SlotToStore(std::u16string_view name)
{
    std::size_t position = nextStore_;
    if (position >= slotCount_ || !entry_->IsSpelt(position, name)) {
        position = DeclaredSlot(name);
        if (position == kNotFound) return kNotFound;
    }
    nextStore_ = position + 1;
    return position;
}

ParameterName ParameterMap::NameAt(std::size_t position, std::u16string_view name) const
{
    const std::u16string_view declared = entry_->Parameters[position].NameW.view();
    return Ulmo::SameText(name, declared) ? ParameterName::Shared(declared) : ParameterName::Copy(name);
}

void ParameterMap::Put(TOrvParameter value)
{
    const std::size_t position = SlotToStore(value.Name().view());
    if (position == kNotFound) return StoreInNode(std::move(value));
    value.SetName(NameAt(position, value.Name().view()));
    if (Has(position)) {
        Slot(position) = std::move(value);
        return;
    }
    new (&Slot(position)) TOrvParameter(std::move(value));
    present_ |= std::uint64_t{1} << position;
}

void ParameterMap::StoreInNode(TOrvParameter value)
{
    std::u16string key = Ulmo::LowerCase(value.Name().view());
    const auto place = NodePlace(key);
    if (place != nodes_.end() && Ulmo::SameText((*place)->key, key)) {
        (*place)->value = std::move(value);
        return;
    }
    nodes_.insert(place, std::unique_ptr<Node>(new Node{std::move(key), std::move(value)}));
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
    const auto node = FindNode(Ulmo::LowerCase(name));
    if (node == nodes_.end()) return false;
    nodes_.erase(node);
    return true;
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
            return Ulmo::SameText(a->key, b->key) && a->value.SameValue(b->value);
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
    nodes_.reserve(other.nodes_.size());
    for (const auto& node : other.nodes_) nodes_.push_back(std::make_unique<Node>(*node));
}

}  // namespace OrvPLC
