#include <bit>
#include <cstdint>
#include <string>

#include "ulmo/unit_search.h"

namespace Ulmo {

#if defined(ORV_BLOCKS_OF_UNITS)

namespace {

constexpr std::size_t kBlockBytes = 16;
constexpr std::size_t kUnitsPerBlock = 8;

// Two bits for each unit of an aligned block that is zero. The blocks that hold the first unit and the terminating zero
// are read whole; an aligned block never reaches into another page, but a sanitizer sees bytes outside the text.
__attribute__((no_sanitize("address"))) unsigned ZeroUnits(const char16_t* block)
{
    const __m128i units = _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(units, _mm_setzero_si128())));
}

// A text in a packed record may stand at an odd address, where no block holds whole units of it.
__attribute__((no_sanitize("alignment"))) std::size_t OddLength(const char16_t* text)
{
    std::size_t length = 0;
    while (text[length] != u'\0') ++length;
    return length;
}

}  // namespace

__attribute__((no_sanitize("address"))) std::size_t TerminatedLength(const char16_t* text)
{
    const std::size_t offset = reinterpret_cast<std::uintptr_t>(text) % kBlockBytes;
    if (offset % sizeof(char16_t) != 0) return OddLength(text);
    const char16_t* block = text - offset / sizeof(char16_t);
    const unsigned first = ZeroUnits(block) >> offset;
    if (first != 0) return static_cast<std::size_t>(std::countr_zero(first)) / 2;
    unsigned zeros = 0;
    do {
        zeros = ZeroUnits(block += kUnitsPerBlock);
    } while (zeros == 0);
    return static_cast<std::size_t>(block - text) + static_cast<std::size_t>(std::countr_zero(zeros)) / 2;
}

#else

std::size_t TerminatedLength(const char16_t* text)
{
    return std::char_traits<char16_t>::length(text);
}

#endif

}  // namespace Ulmo
