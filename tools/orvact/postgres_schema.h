// The tables of events on a server, their versions, and the partitions of the table Events, one a month.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "postgres.h"

namespace Postgres {

// Brings the tables to the version of this tool, step by step; makes them when there are none.
void MakeSchema(Connection& connection);
// The version of the tables. Throws when they are missing or of a version that this tool does not read.
std::int64_t CheckSchema(Connection& connection);
constexpr std::int64_t kCurrentVersion = 7;
constexpr std::int64_t kFirstWithHours = 4;
constexpr std::int64_t kFirstWithBatches = 5;
constexpr std::int64_t kFirstWithMinutes = 6;
constexpr std::int64_t kFirstWithBlocks = 7;

// The number of the block of an event, with which the trees of channels and texts begin. A question looks at each block
// in each partition, so they are bigger than those of a file.
constexpr const char* kBlock = "Id >> 20";
constexpr int kBlockBits = 20;

// Makes the partitions of the month of that time and of the next one, as far as they are missing.
void MakePartitions(Connection& connection, std::int64_t milliseconds);
std::chrono::year_month MonthOf(std::int64_t milliseconds);  // since 1970 UTC
// Drops the partitions of which every event is older; the months that went, "2026-08".
std::vector<std::string> DropPartitions(Connection& connection, std::int64_t before);

// A text of the table that is the same for texts that differ in case only, and empty for one beyond ASCII.
std::string Folded(const std::string& text);

}  // namespace Postgres
