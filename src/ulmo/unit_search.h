// Where a unit stands in wide text, and whether a text is another that ends in a zero unit: eight units a step.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Texts that end in a zero unit are read in whole blocks, past their ends but never into another page. ThreadSanitizer
// is to see the reads of a text, but not those of its neighbours.
#if defined(__SSE2__) && !defined(__SANITIZE_THREAD__)
#define ORV_BLOCKS_OF_UNITS
#include <emmintrin.h>
#endif

namespace Ulmo {

// The length of a text that ends in a zero unit.
std::size_t TerminatedLength(const char16_t* text);

// The first place of the unit at or after `from`; npos if there is none.
std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t from);

// Whether `b`, which ends in a zero unit, is `a`, which has one after its end. An `a` that holds a zero unit is never
// found. A unit a step:
inline bool SameTerminatedByUnits(std::u16string_view a, const char16_t* b)
{
    const char16_t* units = a.data();
    for (; *units == *b; ++units, ++b) {
        if (*units == 0) return units == a.data() + a.size();
    }
    return false;
}

#if defined(ORV_BLOCKS_OF_UNITS)

// A block a step. What lies after the ends takes no part: the first unit that differs or ends `a` decides.
[[gnu::no_sanitize_address]] inline bool SameTerminated(std::u16string_view a, const char16_t* b)
{
    constexpr std::size_t kPage = 4096;  // the smallest there is
    constexpr std::size_t kBlock = 16;
    const std::size_t most = (a.size() + 1) * sizeof(char16_t) + kBlock - 1;  // bytes that the blocks of `a` reach
    const auto staysInPage = [most](const char16_t* text) {
        return reinterpret_cast<std::uintptr_t>(text) % kPage + most <= kPage;
    };
    if (!staysInPage(a.data()) || !staysInPage(b)) return SameTerminatedByUnits(a, b);
    for (const char16_t* units = a.data();; units += kBlock / sizeof(char16_t), b += kBlock / sizeof(char16_t)) {
        const __m128i ours = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
        const __m128i theirs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b));
        // Two bits a unit.
        const auto same = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(ours, theirs)));
        const auto ends = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(ours, _mm_setzero_si128())));
        const unsigned decisive = (same ^ 0xFFFF) | ends;
        if (decisive == 0) continue;
        const auto bit = static_cast<unsigned>(std::countr_zero(decisive));
        return (same >> bit & 1) != 0 && units + bit / 2 == a.data() + a.size();
    }
}

#else

inline bool SameTerminated(std::u16string_view a, const char16_t* b)
{
    return SameTerminatedByUnits(a, b);
}

#endif

}  // namespace Ulmo
