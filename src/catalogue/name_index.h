// Finds catalogue entries by name in any case, without a copy of the name and without a lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "catalogue/builtin_tables.h"

namespace OrvPLC {

// Tables of names hashed after lower-casing, each with the place of its entry: one that the generator has written, and
// one for what is added. Adding is for the time of loading; finding is safe from any thread from then on.
class NameIndex {
public:
    static constexpr std::uint32_t kNotFound = static_cast<std::uint32_t>(-1);

    NameIndex() = default;
    explicit NameIndex(std::span<const Builtin::NameSlot> builtIn) : builtIn_(builtIn) {}

    // `lower` is the entry's LowerName and not in the tables yet.
    void Add(std::u16string_view lower, std::uint32_t place);
    void Reserve();  // the next Add does not fail
    std::uint32_t Find(std::u16string_view name) const;
    std::uint32_t FindLower(std::u16string_view lower) const;  // of a name that is lower-cased already

private:
    struct Slot {
        std::u16string_view lower;
        std::uint32_t hash = 0;
        std::uint32_t place = kNotFound;
    };
    std::uint32_t FindBeyondAscii(std::u16string_view name) const;
    template <class Same>
    std::uint32_t Search(std::uint32_t hash, std::size_t length, Same&& same) const;
    void Insert(const Slot& slot);

    std::span<const Builtin::NameSlot> builtIn_;  // a power of two, at most half full
    std::vector<Slot> slots_;                     // the same
    std::size_t count_ = 0;
};

}  // namespace OrvPLC
