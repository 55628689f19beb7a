// Where a unit stands in wide text, eight units a step.
#pragma once

#include <cstddef>
#include <string_view>

namespace Ulmo {

// The length of a text that ends in a zero unit.
std::size_t TerminatedLength(const char16_t* text);

// The first place of the unit at or after `from`; npos if there is none.
std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t from);

}  // namespace Ulmo
