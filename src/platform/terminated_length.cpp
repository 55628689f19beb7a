#include "platform/text.h"

#include <cstring>

#if defined(__GNUC__)
// The block that holds the terminating zero is read whole. An aligned block never reaches into another page, but a
// sanitizer sees bytes behind the end of the text.
#define ORV_READS_WHOLE_BLOCKS __attribute__((noinline, no_sanitize("address")))
#else
#define ORV_READS_WHOLE_BLOCKS
#endif

namespace Platform {

namespace {

constexpr std::size_t kUnitsPerBlock = 8;
constexpr std::size_t kBlockBytes = kUnitsPerBlock * sizeof(char16_t);

// Non-zero when one of the four units in the word is zero.
std::uint64_t ZeroUnits(std::uint64_t word) {
    return (word - 0x0001000100010001ULL) & ~word & 0x8000800080008000ULL;
}

}  // namespace

ORV_READS_WHOLE_BLOCKS std::size_t TerminatedLength(const char16_t* text) {
    const char16_t* end = text;
    while (reinterpret_cast<std::uintptr_t>(end) % kBlockBytes != 0) {
        if (*end == 0) return static_cast<std::size_t>(end - text);
        ++end;
    }
    for (;; end += kUnitsPerBlock) {
        std::uint64_t words[2];
        std::memcpy(words, end, sizeof words);
        if ((ZeroUnits(words[0]) | ZeroUnits(words[1])) != 0) break;
    }
    while (*end != 0) ++end;
    return static_cast<std::size_t>(end - text);
}

}  // namespace Platform
