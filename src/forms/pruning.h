// Hides parameters by their priority.
#pragma once

#include <cstdint>

#include "objects/action.h"

namespace OrvPLC {

// Removes the parameters that the catalogue declares with a priority above the limit; one of exactly the limit stays,
// and so does what the catalogue does not know.
void PruneParameters(TOrvAction& action, std::uint32_t limit);

}  // namespace OrvPLC
