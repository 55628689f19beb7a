// Patterns of strftime for a time of day.
#pragma once

#include <string>
#include <string_view>

namespace Platform {

// A locale's time pattern without the seconds. They go with their unit when one stands after them ("%Hh%Mm%Ss"),
// else with what stands between them and the minutes. `twelveHours` is the locale's pattern for "%r", which may be "".
std::string TimePatternWithoutSeconds(std::string_view pattern, std::string_view twelveHours);

}  // namespace Platform
