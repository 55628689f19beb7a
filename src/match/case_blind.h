// Comparing without regard to case: equal means equal after lower-casing both.
#pragma once

#include <string_view>

namespace OrvPLC {

// Copies the texts only where they differ by more than the case of ASCII letters.
bool SameInAnyCase(std::u16string_view a, std::u16string_view b);

}  // namespace OrvPLC
