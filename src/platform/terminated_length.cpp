#include "platform/text.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#if defined(__GNUC__)
// The blocks that hold the first unit and the terminating zero are read whole. An aligned block never reaches into
// another page, but a sanitizer sees bytes outside the text.
#define ORV_READS_WHOLE_BLOCKS __attribute__((no_sanitize("address")))
#else
#define ORV_READS_WHOLE_BLOCKS
#endif

namespace Platform {

namespace {

constexpr std::size_t kUnitsPerWord = 4;
constexpr std::size_t kBlockBytes = 16;
constexpr std::uint64_t kHighBits = 0x8000800080008000;

// The high bit of each unit that is zero. No carry leaves a unit, so units in front of the text do no harm.
std::uint64_t ZeroUnits(std::uint64_t word)
{
    return ~(((word & ~kHighBits) + ~kHighBits) | word) & kHighBits;
}

std::size_t FirstUnit(std::uint64_t bits)
{
    return static_cast<std::size_t>(std::countr_zero(bits)) / 16;
}

struct Block {
    std::uint64_t zeros[2];

    ORV_READS_WHOLE_BLOCKS explicit Block(const char16_t* start)
    {
        std::memcpy(zeros, start, kBlockBytes);
        for (std::uint64_t& word : zeros) word = ZeroUnits(word);
    }
    void Forget(std::size_t units)
    {
        const std::uint64_t all = ~std::uint64_t{0};
        zeros[0] &= units < kUnitsPerWord ? all << (16 * units) : 0;
        if (units > kUnitsPerWord) zeros[1] &= all << (16 * (units - kUnitsPerWord));
    }
    bool HasZero() const { return (zeros[0] | zeros[1]) != 0; }
    std::size_t Zero() const { return zeros[0] != 0 ? FirstUnit(zeros[0]) : kUnitsPerWord + FirstUnit(zeros[1]); }
};

}  // namespace

ORV_READS_WHOLE_BLOCKS std::size_t TerminatedLength(const char16_t* text)
{
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(text) % kBlockBytes;
    if (offset % sizeof(char16_t) != 0) return std::char_traits<char16_t>::length(text);
    const char16_t* start = text - offset / sizeof(char16_t);
    Block block(start);
    block.Forget(static_cast<std::size_t>(text - start));
    while (!block.HasZero()) block = Block(start += 2 * kUnitsPerWord);
    return static_cast<std::size_t>(start - text) + block.Zero();
}

}  // namespace Platform
