// Finds catalogue entries by name in any case, without a copy of the name and without a lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace OrvPLC {

class TOrvBaseNameInfo;

// A table of entries hashed by lower-cased name. Adding is for the time of loading; finding is safe from any thread
// from then on.
class NameIndex {
public:
    // `lower` is the entry's LowerName and not in the table yet.
    void Add(std::u16string_view lower, const TOrvBaseNameInfo* entry);
    const TOrvBaseNameInfo* Find(std::u16string_view name) const;
    const TOrvBaseNameInfo* FindLower(std::u16string_view lower) const;

private:
    struct Slot {
        std::u16string_view lower;
        const TOrvBaseNameInfo* entry = nullptr;
        std::uint32_t hash = 0;
    };
    void Grow();
    void Insert(const Slot& slot);

    std::vector<Slot> slots_;  // a power of two, at most half full
    std::size_t count_ = 0;
};

}  // namespace OrvPLC
