// The last 512 failures of the process, for post-mortem analysis. Nothing in the library reads it; a debugger does.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "ulmo/exceptions.h"

namespace Ulmo::ExceptionHistory {

inline constexpr std::size_t kLimit = 512;

// Start and End bracket the life of the queue; before Start and after End failures are not remembered. The
// library calls them when it is loaded and unloaded. Start after Start changes nothing.
void Start();
void End();

// Called by the constructor of the base class. The derived part does not exist yet at that moment, so the name kept is
// always "Ulmo::UlmoException", and the copy is one of the base. Deliberate: whoever reads the queue knows it so.
void Remember(const UlmoException& failure);

// A copy of the queue, oldest first: the class name and the failure.
std::vector<std::pair<std::string, UlmoException>> Snapshot();

}  // namespace Ulmo::ExceptionHistory
