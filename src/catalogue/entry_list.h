// The classes or the actions of a catalogue: by place, by name, by code and in the order of their names.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/builtin_tables.h"
#include "catalogue/name_index.h"
#include "catalogue/ordered_entries.h"
#include "ulmo/reference_count.h"

namespace OrvPLC {

inline std::u16string_view NameKey(const TOrvBaseNameInfo& entry)
{
    return entry.LowerName.view();
}

// Makes room for one more, so that adding it cannot fail.
template <class Item>
void ReserveOne(std::vector<Item>& items)
{
    if (items.size() == items.capacity()) items.reserve(std::max<std::size_t>(8, 2 * items.size()));
}

// A place counts the built-in entries first and then those that were added, as they came.
template <class Entry>
class EntryList {
public:
    using Map = OrderedEntries<Entry, &NameKey>;

    EntryList() = default;
    EntryList(std::span<const Entry> entries, std::span<const Builtin::NameSlot> names, Builtin::CodeTable codes)
        : builtIn_(entries), codes_(codes), names_(names), byName_(entries)
    {}

    // False when the name is there already. May fail, and then nothing has changed.
    bool Add(const Ulmo::CountedPtr<Entry>& entry)
    {
        const std::u16string_view lower = NameKey(*entry);
        if (names_.FindLower(lower) != NameIndex::kNotFound) return false;
        ReserveOne(added_);
        names_.Reserve();
        byName_.Add(*entry);
        const auto place = static_cast<std::uint32_t>(Size());
        try {
            // The newcomer takes over a code that is there already.
            addedCodes_.insert_or_assign(entry->Code, place);
        } catch (...) {
            byName_.Remove(*entry);
            throw;
        }
        names_.Add(lower, place);
        added_.push_back(entry);
        return true;
    }

    std::size_t Size() const { return builtIn_.size() + added_.size(); }
    const Map& ByName() const { return byName_; }

    // Null if there is none.
    const Entry* FindByPlace(std::uint32_t place) const
    {
        if (place < builtIn_.size()) return &builtIn_[place];
        const std::size_t at = place - builtIn_.size();
        return at < added_.size() ? added_[at].get() : nullptr;
    }
    const Entry* FindByName(std::u16string_view name) const { return FindByPlace(names_.Find(name)); }
    const Entry* FindByCode(std::uint32_t code) const
    {
        if (!addedCodes_.empty()) {
            const auto found = addedCodes_.find(code);
            if (found != addedCodes_.end()) return FindByPlace(found->second);
        }
        const std::uint32_t at = code - codes_.least;
        if (at >= codes_.places.size() || codes_.places[at] == Builtin::kNoPlace) return nullptr;
        return &builtIn_[codes_.places[at]];
    }

private:
    std::span<const Entry> builtIn_;
    Builtin::CodeTable codes_{};
    std::vector<Ulmo::CountedPtr<Entry>> added_;
    NameIndex names_;
    std::unordered_map<std::uint32_t, std::uint32_t> addedCodes_;
    Map byName_;
};

}  // namespace OrvPLC
