// The bare searches of the reader, with the very same expressions.
#pragma once

#include <cstddef>
#include <string_view>

namespace OrvBench {

// Searches the header, then one parameter after the other, then the end; the number of matches.
std::size_t CountMatches(std::u16string_view text);

}  // namespace OrvBench
