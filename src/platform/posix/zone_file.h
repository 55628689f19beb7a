// Compiled zone files: a table of transitions and, in the last line, the rule for all that comes after them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/calendar.h"

namespace Platform {

// The content of a zone file; empty for a file that is none, is not there or is larger than any zone.
std::string ReadZoneFile(const std::string& path);

// The record for an instant in seconds since 1970. While the table rules, it is the offset of that instant and no more.
// Nothing for a content that has neither a table that can be read nor a rule.
std::optional<TimeZone> ZoneAt(std::string_view content, std::int64_t seconds, std::uint16_t year);

}  // namespace Platform
