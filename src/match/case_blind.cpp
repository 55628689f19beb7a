#include "match/case_blind.h"

#include "ulmo/ascii_words.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

bool SameInAnyCase(std::u16string_view a, std::u16string_view b)
{
    // Lower-casing goes unit by unit, so it keeps the length.
    if (a.size() != b.size()) return false;
    if (Ulmo::SameText(a, b)) return true;
    for (std::size_t i = 0; i != a.size(); ++i) {
        if (Ulmo::LowerAscii(a[i]) == Ulmo::LowerAscii(b[i])) continue;
        // Outside ASCII a unit may lower to any other, even to an ASCII one, so only lower-casing can tell.
        if (a[i] < 0x80 && b[i] < 0x80) return false;
        return Ulmo::SameText(Ulmo::LowerCase(a), Ulmo::LowerCase(b));
    }
    return true;
}

}  // namespace OrvPLC
