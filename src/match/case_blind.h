// Comparing without regard to case: equal means equal after lower-casing both.
#pragma once

#include <string_view>

namespace OrvPLC {

// Copies nothing while the texts differ in the case of ASCII letters only, or not at all.
bool SameInAnyCase(std::u16string_view a, std::u16string_view b);

}  // namespace OrvPLC
