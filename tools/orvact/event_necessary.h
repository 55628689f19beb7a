// Match actions as conditions that a store checks.
#pragma once

#include <vector>

#include "event_conditions.h"
#include "patterns.h"

// Adds what every row must have that one of the patterns matches, as far as the columns tell it. The library decides:
// what the columns do not show (a parameter without a column, text beyond ASCII, a column that two parameters share) is
// left to it.
void AddNecessary(const std::vector<Pattern>& patterns, EventFilter& filter);
