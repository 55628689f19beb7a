#include <bit>
#include <string_view>

#include "ulmo/unit_search.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Ulmo {

std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t from)
{
    const char16_t* const units = text.data();
    std::size_t at = from;
#if defined(__SSE2__)
    constexpr std::size_t kUnitsPerBlock = 8;
    const __m128i wanted = _mm_set1_epi16(static_cast<short>(unit));
    for (; at + kUnitsPerBlock <= text.size(); at += kUnitsPerBlock) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + at));
        const auto equal = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(block, wanted)));  // two bits a unit
        if (equal != 0) return at + static_cast<std::size_t>(std::countr_zero(equal)) / 2;
    }
#endif
    for (; at < text.size(); ++at) {
        if (units[at] == unit) return at;
    }
    return std::u16string_view::npos;
}

}  // namespace Ulmo
