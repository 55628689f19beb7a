// The parameters of one action: a map from lower-cased name to value that is walked in the order of its keys, unit by
// unit, or in the order in which the catalogue declares them.
//
// A parameter that the catalogue declares lives in a slot of its own, found by its position in the declaration, without
// a key of its own. The slots are part of the action's one block of memory. Any other parameter is a node of its own
// in a tree. Either way a value keeps its address until it is changed or removed, whatever its neighbours do.
#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "catalogue/entries.h"
#include "objects/parameter.h"

namespace OrvPLC {

class ParameterMap {
public:
    // Declared parameters behind this position live in nodes; no built-in action has as many. Where a declaration
    // repeats a name all live in nodes, since a name has one value.
    static constexpr std::size_t kMaximumSlots = 64;
    static constexpr std::size_t kNotFound = TOrvActionInternalInfo::kNotFound;
    static std::size_t SlotCount(const TOrvActionInternalInfo* entry);

    // `entry` may be null; `slots` is raw memory for SlotCount(entry) values.
    ParameterMap(const TOrvActionInternalInfo* entry, void* slots);
    ParameterMap(const ParameterMap&) = delete;
    ParameterMap& operator=(const ParameterMap&) = delete;
    ~ParameterMap();

    std::size_t Size() const noexcept;

    TOrvParameter* Find(std::u16string_view name);  // any case; null when absent
    const TOrvParameter* Find(std::u16string_view name) const { return const_cast<ParameterMap*>(this)->Find(name); }
    TOrvParameter* FindDeclared(std::size_t position);  // by position in the entry's declaration
    const TOrvParameter* FindDeclared(std::size_t position) const
    {
        return const_cast<ParameterMap*>(this)->FindDeclared(position);
    }

    // Stores a new value under this name, in place of any that was there. `fill` gets it with kind 0 and sets it; it
    // may read texts of the value that goes. If it fails the map is as it was.
    template <class Fill>
    void Store(std::u16string_view name, Fill&& fill);
    template <class Fill>
    void StoreDeclared(std::size_t position, Fill&& fill);  // under the catalogue's spelling
    void Put(TOrvParameter value);                          // under its own name
    bool Remove(std::u16string_view name);

    // Calls visit(key, value) for each parameter, in key order.
    template <class Visit>
    void ForEachByKey(Visit&& visit) const;
    // Calls visit(value, position) for each declared parameter that is present, in declaration order, then
    // visit(value, kNotFound) for the others in key order.
    template <class Visit>
    void ForEachDeclaredFirst(Visit&& visit) const;

    bool SameContent(const ParameterMap& other) const;  // keys and values
    // Whether each value here has a counterpart of the same key in the other map, and fits(value, counterpart) is true
    // for all of them. Stops at the first that has none or does not fit.
    template <class Fits>
    bool AllFit(const ParameterMap& other, Fits&& fits) const;
    void CopyFrom(const ParameterMap& other);  // this map is empty

private:
    // A tree and no sorted array: texts and buffers from outside may bring any number of unknown names, in any order.
    using Nodes = std::map<std::u16string, TOrvParameter, std::less<>>;

    TOrvParameter& Slot(std::size_t position) const { return slots_[position]; }
    bool Has(std::size_t position) const { return (present_ >> position) & 1; }
    std::size_t DeclaredSlot(std::u16string_view name) const;  // position of a slot, or kNotFound
    // The slot that a name is stored in, kNotFound for a node. Callers mostly store in the order of the declaration and
    // in its spelling, so the place behind the last one is looked at first.
    struct Place {
        std::size_t position;
        bool spelt;  // as in the catalogue
    };
    Place PlaceToStore(std::u16string_view name);
    ParameterName NameAt(Place place, std::u16string_view name) const
    {
        return place.spelt ? ParameterName::Shared(entry_->Parameters[place.position].NameW.view())
                           : ParameterName::Copy(name);
    }
    template <class Fill>
    void StoreInSlot(std::size_t position, ParameterName name, Fill&& fill);
    void StoreInNode(TOrvParameter value);
    const TOrvParameter* FindNode(std::u16string_view key) const;  // by lower-cased name; null when absent
    const TOrvParameter* FindKey(std::u16string_view key) const;   // by lower-cased name, wherever it lives

    const TOrvActionInternalInfo* entry_;
    TOrvParameter* slots_;
    std::size_t slotCount_;
    std::size_t nextStore_ = 0;
    std::uint64_t present_ = 0;  // a bit a slot
    Nodes nodes_;
};

template <class Fill>
void ParameterMap::Store(std::u16string_view name, Fill&& fill)
{
    const Place place = PlaceToStore(name);
    if (place.position != kNotFound) return StoreInSlot(place.position, NameAt(place, name), fill);
    TOrvParameter value(ParameterName::Copy(name));
    fill(value);
    StoreInNode(std::move(value));
}

template <class Fill>
void ParameterMap::StoreDeclared(std::size_t position, Fill&& fill)
{
    const std::u16string_view name = entry_->Parameters[position].NameW.view();
    if (position >= slotCount_) return Store(name, fill);
    StoreInSlot(position, ParameterName::Shared(name), fill);
}

template <class Fill>
void ParameterMap::StoreInSlot(std::size_t position, ParameterName name, Fill&& fill)
{
    if (Has(position)) {
        TOrvParameter value(std::move(name));
        fill(value);
        Slot(position) = std::move(value);
        return;
    }
    TOrvParameter* slot = new (&Slot(position)) TOrvParameter(std::move(name));
    try {
        fill(*slot);
    } catch (...) {
        slot->~TOrvParameter();
        throw;
    }
    present_ |= std::uint64_t{1} << position;
}

// The slots first: no caller can tell, and under the same declaration the counterpart of a slot is found by position.
template <class Fits>
bool ParameterMap::AllFit(const ParameterMap& other, Fits&& fits) const
{
    const bool sameDeclaration = entry_ == other.entry_;
    if (sameDeclaration && (present_ & ~other.present_) != 0) return false;
    for (std::uint64_t left = present_; left != 0; left &= left - 1) {
        const auto position = static_cast<std::size_t>(std::countr_zero(left));
        const TOrvParameter* counterpart =
            sameDeclaration ? &other.Slot(position) : other.FindKey(entry_->Parameters[position].LowerName.view());
        if (!counterpart || !fits(Slot(position), *counterpart)) return false;
    }
    for (const auto& [key, value] : nodes_) {
        const TOrvParameter* counterpart = other.FindKey(key);
        if (!counterpart || !fits(value, *counterpart)) return false;
    }
    return true;
}

template <class Visit>
void ParameterMap::ForEachByKey(Visit&& visit) const
{
    auto node = nodes_.begin();
    if (present_ != 0) {
        for (const std::uint32_t position : entry_->KeyOrder()) {
            if (position >= kMaximumSlots || !Has(position)) continue;
            const std::u16string_view key = entry_->Parameters[position].LowerName.view();
            for (; node != nodes_.end() && node->first < key; ++node) visit(node->first, node->second);
            visit(key, Slot(position));
        }
    }
    for (; node != nodes_.end(); ++node) visit(node->first, node->second);
}

template <class Visit>
void ParameterMap::ForEachDeclaredFirst(Visit&& visit) const
{
    for (std::size_t position = 0; position < slotCount_; ++position) {
        if (Has(position)) visit(Slot(position), position);
    }
    if (nodes_.empty()) return;
    // Declared parameters past the slots are nodes, yet have their place in the declaration.
    const std::size_t declared = entry_ ? entry_->Parameters.size() : 0;
    for (std::size_t position = slotCount_; position < declared; ++position) {
        if (const TOrvParameter* value = FindDeclared(position)) visit(*value, position);
    }
    for (const auto& [key, value] : nodes_) {
        if (entry_ && entry_->FindParameter(key) != kNotFound) continue;
        visit(value, kNotFound);
    }
}

}  // namespace OrvPLC
