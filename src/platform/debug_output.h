// The debug sink: what a debugger or DebugView shows on Windows. On Linux it is off, and goes to standard error when
// the environment variable ORV_DEBUG_OUTPUT is 1.
#pragma once

#include <string_view>

namespace Platform {

void WriteDebug(std::u16string_view text);  // never fails

}  // namespace Platform
