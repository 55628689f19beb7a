// Where a unit stands in wide text, and whether a text is another that ends in a zero unit: eight units a step.
#pragma once

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

// Whether `b`, which ends in a zero unit, is `a`, which has one after its end and none within. A unit a step:
inline bool SameTerminatedByUnits(std::u16string_view a, const char16_t* b)
{
    const char16_t* units = a.data();
    for (; *units == *b; ++units, ++b) {
        if (*units == 0) return true;
    }
    return false;
}

#if defined(ORV_BLOCKS_OF_UNITS)

// Each byte of the result is all ones where the two are the same. Of eight, the other half counts as the same.
[[gnu::no_sanitize_address]] inline __m128i SameSixteen(const char* a, const char* b)
{
    return _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a)),
                          _mm_loadu_si128(reinterpret_cast<const __m128i*>(b)));
}
[[gnu::no_sanitize_address]] inline __m128i SameEight(const char* a, const char* b)
{
    return _mm_cmpeq_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a)),
                          _mm_loadl_epi64(reinterpret_cast<const __m128i*>(b)));
}

// As many bytes of `b` as `a` has with its zero, in blocks of which the last two may overlap. If `b` is shorter, what
// lies after its end takes no part: where it ends `a` has another unit.
inline bool SameTerminated(std::u16string_view a, const char16_t* b)
{
    constexpr std::size_t kPage = 4096;  // the smallest there is
    const std::size_t size = (a.size() + 1) * sizeof(char16_t);
    const bool staysInPage = reinterpret_cast<std::uintptr_t>(b) % kPage + size <= kPage;
    if (size < 8 || !staysInPage) return SameTerminatedByUnits(a, b);
    const char* const ours = reinterpret_cast<const char*>(a.data());
    const char* const theirs = reinterpret_cast<const char*>(b);
    __m128i same;
    if (size < 16) {
        same = _mm_and_si128(SameEight(ours, theirs), SameEight(ours + size - 8, theirs + size - 8));
    } else {
        same = SameSixteen(ours + size - 16, theirs + size - 16);
        for (std::size_t at = 0; at + 16 < size; at += 16)
            same = _mm_and_si128(same, SameSixteen(ours + at, theirs + at));
    }
    return _mm_movemask_epi8(same) == 0xFFFF;
}

#else

inline bool SameTerminated(std::u16string_view a, const char16_t* b)
{
    return SameTerminatedByUnits(a, b);
}

#endif

}  // namespace Ulmo
