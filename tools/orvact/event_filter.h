// What events list is asked for, as conditions that a store checks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "commands.h"
#include "event_store.h"
#include "patterns.h"

// Adds the conditions of --id, --code, --class, --since and --until. Reports what is none and gives false.
bool AddConditions(const EventsListOptions& options, EventFilter& filter);

// An age: a number and s, m, h, d or w; in milliseconds.
bool ParseAge(std::string_view text, std::int64_t& milliseconds);

// Adds what every row must have that one of the patterns matches, as far as the columns tell it. The library decides:
// what the columns do not show (a parameter without a column, text beyond ASCII, a column that two parameters share) is
// left to it.
void AddNecessary(const std::vector<Pattern>& patterns, EventFilter& filter);
