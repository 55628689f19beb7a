// Match actions as conditions that a store checks.
#pragma once

#include <vector>

#include "event_conditions.h"
#include "patterns.h"

// Adds the conditions that a row fulfils if any of the patterns matches it, as far as the columns tell. The library
// decides: what the columns do not show (a parameter without a column, text beyond ASCII, a column that two parameters
// share) is left to it.
void AddNecessary(const std::vector<Pattern>& patterns, EventFilter& filter);
