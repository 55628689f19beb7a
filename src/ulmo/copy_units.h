// Copies text units.
#pragma once

#include <cstddef>
#include <cstring>

namespace Ulmo {

// The two must not overlap. Most texts are shorter than what a call of memcpy costs. The pieces may overlap.
inline void CopyUnits(void* target, const char16_t* source, std::size_t units)
{
    auto* to = static_cast<std::byte*>(target);
    const auto* from = reinterpret_cast<const std::byte*>(source);
    const std::size_t size = units * sizeof(char16_t);
    if (size > 64) {
        std::memcpy(to, from, size);
    } else if (size >= 16) {
        for (std::size_t done = 0; done + 16 < size; done += 16) std::memcpy(to + done, from + done, 16);
        std::memcpy(to + size - 16, from + size - 16, 16);
    } else if (size >= 8) {
        std::memcpy(to, from, 8);
        std::memcpy(to + size - 8, from + size - 8, 8);
    } else {
        for (std::size_t done = 0; done < size; done += 2) std::memcpy(to + done, from + done, 2);
    }
}

}  // namespace Ulmo
