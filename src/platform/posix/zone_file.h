// Compiled zone files: a table of transitions and, in the last line, the rule for all that comes after them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/calendar.h"

namespace Platform {

// The content of a zone file; empty for a file that is absent, not a zone file or larger than any zone.
std::string ReadZoneFile(const std::string& path);

// The record for an instant in seconds since 1970. Within the table it only has the offset of that instant. Empty if
// neither the table nor the rule can be read.
std::optional<TimeZone> ZoneAt(std::string_view content, std::int64_t seconds, std::uint16_t year);

}  // namespace Platform
