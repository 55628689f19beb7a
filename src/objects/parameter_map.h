// The parameters of one action: a map from lower-cased name to value that is walked in the order of its keys, unit by
// unit, or in the order in which the catalogue declares them.
//
// A parameter that the catalogue declares lives in a slot of its own, found by its position in the declaration, without
// a key or a name of its own: only a spelling that differs from the catalogue's is kept beside it. The slots are part
// of the action's block of memory, and so is the room for its texts unless the whole would be large. Any other
// parameter is a node of its own in a tree. Either way a value keeps its address until it is changed or removed,
// whatever its neighbours do.
#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/entries.h"
#include "objects/parameter.h"
#include "objects/text_room.h"

namespace OrvPLC {

class ParameterMap {
public:
    // Declared parameters behind this position live in nodes; no built-in action has as many. Where a declaration
    // repeats a name all live in nodes, since a name has one value.
    static constexpr std::size_t kMaximumSlots = 64;
    static constexpr std::size_t kNotFound = TOrvActionInternalInfo::kNotFound;
    static std::size_t SlotCount(const TOrvActionInternalInfo* entry)
    {
        return entry && !entry->HasRepeatedNames() ? std::min(entry->Parameters.size(), kMaximumSlots) : 0;
    }

    // The memory that a map has behind its object: its slots, then the room for texts, unless that is a chunk apart.
    struct Memory {
        void* place;  // raw
        std::size_t slots;
        std::size_t textBytes;
        bool textsApart;
    };
    // Room for texts of a usual length, for an object whose texts come later.
    static std::size_t UsualTextBytes(const TOrvActionInternalInfo* entry);
    // The room that the texts of all slots take.
    std::size_t TextBytes() const;

    // `entry` may be null. The memory has its SlotCount() and lies behind the map in the same block.
    ParameterMap(const TOrvActionInternalInfo* entry, const Memory& memory)
        : entry_(entry),
          room_(static_cast<std::byte*>(memory.place) + memory.slots * sizeof(TOrvParameter),
                memory.textsApart ? 0 : static_cast<std::uint32_t>(memory.textBytes)),
          slotsOffset_(static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(memory.place) -
                                                  reinterpret_cast<std::uintptr_t>(this))),
          slotCount_(static_cast<std::uint8_t>(memory.slots))
    {
        if (memory.textsApart) room_.AddFirstChunk(memory.textBytes);
    }
    ParameterMap(const ParameterMap&) = delete;
    ParameterMap& operator=(const ParameterMap&) = delete;
    ~ParameterMap();

    const TOrvActionInternalInfo* Entry() const noexcept { return entry_; }
    std::size_t Size() const noexcept;

    TOrvParameter* Find(std::u16string_view name);  // any case; null when absent
    const TOrvParameter* Find(std::u16string_view name) const { return const_cast<ParameterMap*>(this)->Find(name); }
    TOrvParameter* FindDeclared(std::size_t position)  // by position in the entry's declaration
    {
        if (position < slotCount_) return Has(position) ? &Slot(position) : nullptr;
        return FindDeclaredNode(position);
    }
    const TOrvParameter* FindDeclared(std::size_t position) const
    {
        return const_cast<ParameterMap*>(this)->FindDeclared(position);
    }

    // Stores a new value under this name, in place of any that was there. `fill` gets it with kind 0 and sets it; it
    // may read texts of the value that goes. If it fails the map is as it was.
    template <class Fill>
    void Store(std::u16string_view name, Fill&& fill);
    // The same by a name that ends in a zero unit; null reads as "". Where a caller goes by the declaration's order and
    // spelling one comparison finds the place, and the end of the name is not looked for first.
    // `fill` travels by value, so that a small one stays in registers.
    template <class Fill>
    void StoreTerminated(const char16_t* name, Fill fill)
    {
        const std::size_t position = ExpectedPlace(name);
        if (position == kNotFound || Has(position) || more_) return StoreOther(name, fill);
        FillSlot(position, fill);
    }
    const TOrvParameter* FindTerminated(const char16_t* name) const
    {
        const std::size_t position = ExpectedPlace(name);
        if (position == kNotFound) return Find(Ulmo::TerminatedView(name));
        return Has(position) ? &Slot(position) : nullptr;
    }
    template <class Fill>
    void StoreDeclared(std::size_t position, Fill&& fill);  // under the catalogue's spelling
    // A declared parameter, in a slot, that an object under construction has not got yet. The caller sets it and calls
    // LeaveRoom().
    bool CanAdd(std::size_t position) const { return position < slotCount_ && !Has(position); }
    TOrvParameter& Add(std::size_t position)
    {
        present_ |= std::uint64_t{1} << position;
        return *new (&Slot(position)) TOrvParameter(room_);
    }
    void Put(std::u16string_view name, TOrvParameter&& value);
    // Takes a copy of the parameter of that name, with its spelling. False when the other map has none.
    bool CopyOne(const ParameterMap& other, std::u16string_view name);
    bool Remove(std::u16string_view name);

    // Calls visit(key, name, value, position) for each parameter, in key order. The name ends in a zero unit; the
    // position is kNotFound for a value in a node, which may be declared all the same.
    template <class Visit>
    void ForEachByKey(Visit&& visit) const;
    // Calls visit(name, value, position) for each declared parameter that is present, in declaration order, then with
    // kNotFound as position for the others in key order.
    template <class Visit>
    void ForEachDeclaredFirst(Visit&& visit) const;

    bool SameContent(const ParameterMap& other) const  // keys and values
    {
        // The same declaration: slots stand side by side, and so do nodes.
        if (entry_ != other.entry_) return SameUnderOtherDeclaration(other);
        return present_ == other.present_ && SameSlots(other) && ((!more_ && !other.more_) || SameNodes(other));
    }
    // Whether each value here has a counterpart of the same key in the other map, and fits(value, counterpart) is true
    // for all of them. Stops at the first that has none or does not fit.
    template <class Fits>
    bool AllFit(const ParameterMap& other, Fits&& fits) const;
    void CopyFrom(const ParameterMap& other);  // this map is empty

    // Fills the slots of an object under construction, one after the other.
    class Filling {
    public:
        explicit Filling(ParameterMap& map) : map_(map), next_(&map.Slot(0)) {}
        Filling(const Filling&) = delete;
        Filling& operator=(const Filling&) = delete;
        ~Filling() { map_.present_ = present_; }

        void Skip()
        {
            ++next_;
            bit_ <<= 1;
        }
        // A new value, whose text may go into the object's room. The caller sets it and calls LeaveRoom().
        TOrvParameter& Add() { return Emplace(map_.room_); }
        void AddInt32(std::int32_t value, std::uint32_t enumType) { Emplace(value, enumType); }

    private:
        template <class... Arguments>
        TOrvParameter& Emplace(Arguments&... arguments)
        {
            auto* const slot = new (next_) TOrvParameter(arguments...);
            present_ |= bit_;
            Skip();
            return *slot;
        }

        ParameterMap& map_;
        TOrvParameter* next_;
        std::uint64_t bit_ = 1;
        std::uint64_t present_ = 0;
    };

private:
    struct Node {
        std::u16string name;
        TOrvParameter value;
    };
    // A tree and no sorted array: texts and buffers from outside may bring any number of unknown names, in any order.
    using Nodes = std::map<std::u16string, Node, std::less<>>;
    struct Spelling {
        std::size_t position;
        std::u16string name;
    };
    // Only for an action with undeclared parameters or other spellings than the catalogue's.
    struct More {
        Nodes nodes;
        std::vector<Spelling> spellings;  // of slots that are not spelt as the catalogue does
    };

    TOrvParameter& Slot(std::size_t position) const
    {
        return reinterpret_cast<TOrvParameter*>(reinterpret_cast<std::uintptr_t>(this) + slotsOffset_)[position];
    }
    bool Has(std::size_t position) const { return (present_ >> position) & 1; }
    // Whether holds(slot, position) is true for each slot that has a value, in the order of the declaration. Stops at
    // the first for which it is not. Goes by runs of slots with a value, since mostly all have one.
    template <class Holds>
    [[gnu::always_inline]] bool EverySlot(Holds&& holds) const
    {
        std::size_t first = 0;
        for (std::uint64_t left = present_; left != 0;) {
            const int skipped = std::countr_zero(left);
            left >>= skipped;
            const int run = std::countr_one(left);
            first += static_cast<std::size_t>(skipped);
            std::size_t position = first;
            TOrvParameter* slot = &Slot(first);
            for (const TOrvParameter* const end = slot + run; slot != end; ++slot, ++position) {
                if (!holds(*slot, position)) return false;
            }
            first += static_cast<std::size_t>(run);
            left = run < 64 ? left >> run : 0;
        }
        return true;
    }
    template <class Visit>
    void ForEachSlot(Visit&& visit) const
    {
        EverySlot([&](TOrvParameter& slot, std::size_t position) {
            visit(slot, position);
            return true;
        });
    }
    bool SameSlots(const ParameterMap& other) const  // of the same declaration, with the same slots present
    {
        // The distance between the two blocks leads from a slot to its counterpart.
        const std::uintptr_t distance =
            reinterpret_cast<std::uintptr_t>(&other.Slot(0)) - reinterpret_cast<std::uintptr_t>(&Slot(0));
        const TOrvParameter::AlikeTexts alike = Alike(other);
        return EverySlot([distance, &alike](const TOrvParameter& slot, std::size_t) {
            return slot.SameValue(
                *reinterpret_cast<const TOrvParameter*>(reinterpret_cast<std::uintptr_t>(&slot) + distance), alike);
        });
    }
    // Texts that were set in the same order stand alike, and then one comparison tells for all of them. Nothing where
    // they do not, or where they are so few that it is not worth it.
    TOrvParameter::AlikeTexts Alike(const ParameterMap& other) const
    {
        constexpr std::size_t kWorthIt = 64;  // bytes
        const TextRoom::Piece mine = room_.Taken(&Slot(slotCount_));
        const TextRoom::Piece others = other.room_.Taken(&other.Slot(other.slotCount_));
        if (mine.size != others.size || mine.size < kWorthIt) return {};
        if (std::memcmp(mine.begin, others.begin, mine.size) != 0) return {};
        return {reinterpret_cast<std::uintptr_t>(mine.begin), reinterpret_cast<std::uintptr_t>(others.begin),
                mine.size};
    }
    bool SameNodes(const ParameterMap& other) const;
    bool SameUnderOtherDeclaration(const ParameterMap& other) const;
    std::size_t DeclaredSlot(std::u16string_view name) const;  // position of a slot, or kNotFound
    // The slot of a name, kNotFound for a node. Callers mostly go by the order of the declaration and in its spelling,
    // so the slot behind the one that was asked for last is looked at first.
    struct Place {
        std::size_t position;
        bool spelt;  // as in the catalogue
    };
    Place PlaceOf(std::u16string_view name) const;
    // That slot, when the name is spelt as the catalogue spells it there; else kNotFound.
    [[gnu::always_inline]] std::size_t ExpectedPlace(const char16_t* name) const
    {
        const std::size_t expected = next_.load(std::memory_order_relaxed);
        if (expected >= slotCount_ || !name || !entry_->IsSpelt(expected, name)) return kNotFound;
        next_.store(static_cast<std::uint8_t>(expected + 1), std::memory_order_relaxed);
        return expected;
    }
    // A function of its own, so that the usual case stays small where it is inlined.
    template <class Fill>
    [[gnu::noinline]] void StoreOther(const char16_t* name, Fill fill)
    {
        Store(Ulmo::TerminatedView(name), fill);
    }
    template <class Fill>
    [[gnu::always_inline]] void FillSlot(std::size_t position, Fill& fill);  // which has no value yet
    template <class Fill>
    void StoreInSlot(std::size_t position, Fill&& fill);
    void PutInSlot(std::size_t position, TOrvParameter&& value);
    void PutInNode(std::u16string_view name, TOrvParameter&& value);
    More& NeedMore();
    void FreeMore() noexcept;
    const Nodes& GetNodes() const;
    Node* FindNode(std::u16string_view key) const;                // by lower-cased name; null when absent
    TOrvParameter* FindDeclaredNode(std::size_t position) const;  // past the last slot
    const TOrvParameter* FindKey(std::u16string_view key) const;  // by lower-cased name, wherever it lives

    std::u16string_view NameOf(std::size_t position) const
    {
        const std::u16string_view name = entry_->Parameters[position].NameW.view();
        return more_ ? SpellingOf(position, name) : name;
    }
    std::u16string_view SpellingOf(std::size_t position, std::u16string_view usual) const;
    Spelling MakeSpelling(std::size_t position, std::u16string_view name);  // taking it cannot fail then
    void TakeSpelling(Spelling spelling) noexcept;
    void EraseSpelling(std::size_t position) noexcept;
    void DropSpelling(std::size_t position) noexcept
    {
        if (more_) EraseSpelling(position);
    }

    const TOrvActionInternalInfo* entry_;
    std::uint64_t present_ = 0;  // a bit a slot
    std::unique_ptr<More> more_;
    [[no_unique_address]] TextRoom room_;  // the next members lie in its padding
    std::uint16_t slotsOffset_;            // from this map, in bytes
    std::uint8_t slotCount_;
    mutable std::atomic<std::uint8_t> next_{0};  // threads may read an action at the same time
};

template <class Fill>
void ParameterMap::Store(std::u16string_view name, Fill&& fill)
{
    const Place place = PlaceOf(name);
    if (place.position == kNotFound) {
        TOrvParameter value;
        fill(value);
        PutInNode(name, std::move(value));
    } else if (place.spelt) {
        StoreInSlot(place.position, fill);
        DropSpelling(place.position);
    } else {
        Spelling spelling = MakeSpelling(place.position, name);
        StoreInSlot(place.position, fill);
        TakeSpelling(std::move(spelling));
    }
}

template <class Fill>
void ParameterMap::StoreDeclared(std::size_t position, Fill&& fill)
{
    if (position >= slotCount_) return Store(entry_->Parameters[position].NameW.view(), fill);
    StoreInSlot(position, fill);
    DropSpelling(position);
}

template <class Fill>
void ParameterMap::StoreInSlot(std::size_t position, Fill&& fill)
{
    if (Has(position)) {
        TOrvParameter value;
        fill(value);
        Slot(position) = std::move(value);
    } else {
        FillSlot(position, fill);
    }
}

template <class Fill>
inline void ParameterMap::FillSlot(std::size_t position, Fill& fill)
{
    auto* slot = new (&Slot(position)) TOrvParameter(room_);
    try {
        fill(*slot);
    } catch (...) {
        slot->~TOrvParameter();
        throw;
    }
    slot->LeaveRoom();
    present_ |= std::uint64_t{1} << position;
}

// The slots first: no caller can tell, and under the same declaration the counterpart of a slot is found by position.
template <class Fits>
bool ParameterMap::AllFit(const ParameterMap& other, Fits&& fits) const
{
    const bool sameDeclaration = entry_ == other.entry_;
    if (sameDeclaration && (present_ & ~other.present_) != 0) return false;
    const bool slotsFit = EverySlot([&](const TOrvParameter& slot, std::size_t position) {
        const TOrvParameter* counterpart =
            sameDeclaration ? &other.Slot(position) : other.FindKey(entry_->Parameters[position].LowerName.view());
        return counterpart && fits(slot, *counterpart);
    });
    if (!slotsFit) return false;
    if (!more_) return true;
    for (const auto& [key, node] : more_->nodes) {
        const TOrvParameter* counterpart = other.FindKey(key);
        if (!counterpart || !fits(node.value, *counterpart)) return false;
    }
    return true;
}

template <class Visit>
void ParameterMap::ForEachByKey(Visit&& visit) const
{
    if (!more_) {
        if (present_ == 0) return;
        for (const std::uint32_t position : entry_->KeyOrder()) {
            if (position >= kMaximumSlots || !Has(position)) continue;
            const TOrvParameterInternalInfo& declared = entry_->Parameters[position];
            visit(declared.LowerName.view(), declared.NameW.view(), Slot(position), std::size_t{position});
        }
        return;
    }
    const Nodes& nodes = more_->nodes;
    auto node = nodes.begin();
    const auto visitNode = [&] {
        visit(std::u16string_view(node->first), std::u16string_view(node->second.name), node->second.value, kNotFound);
    };
    if (present_ != 0) {
        for (const std::uint32_t position : entry_->KeyOrder()) {
            if (position >= kMaximumSlots || !Has(position)) continue;
            const std::u16string_view key = entry_->Parameters[position].LowerName.view();
            for (; node != nodes.end() && node->first < key; ++node) visitNode();
            visit(key, NameOf(position), Slot(position), std::size_t{position});
        }
    }
    for (; node != nodes.end(); ++node) visitNode();
}

template <class Visit>
void ParameterMap::ForEachDeclaredFirst(Visit&& visit) const
{
    ForEachSlot([&](const TOrvParameter& slot, std::size_t position) { visit(NameOf(position), slot, position); });
    if (!more_ || more_->nodes.empty()) return;
    // Declared parameters past the slots are nodes, yet have their place in the declaration.
    const std::size_t declared = entry_ ? entry_->Parameters.size() : 0;
    for (std::size_t position = slotCount_; position < declared; ++position) {
        const Node* node = FindNode(entry_->Parameters[position].LowerName.view());
        if (node) visit(std::u16string_view(node->name), node->value, position);
    }
    for (const auto& [key, node] : more_->nodes) {
        if (entry_ && entry_->FindParameter(key) != kNotFound) continue;
        visit(std::u16string_view(node.name), node.value, kNotFound);
    }
}

}  // namespace OrvPLC
