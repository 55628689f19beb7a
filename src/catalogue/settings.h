// The two process-wide switches. Plain variables without a lock, meant to be set at start.
#pragma once

#include <cstdint>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC::Settings {

// Plain names come from the native text set when true, from the neutral one when false. As the built-in texts are
// native, false makes built-in plain names read as the programmatic names until a caller writes the neutral set.
extern OrvBool NativeTranslation;

// Parameters with a priority above this level are hidden from plain text and removed by the pruning stores.
extern std::uint32_t PriorityLevel;

}  // namespace OrvPLC::Settings
