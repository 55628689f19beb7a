// What events list is asked for, as conditions that a store checks.
#pragma once

#include "commands.h"
#include "event_conditions.h"

// Adds the conditions of --id, --code, --class, --since and --until. False, with a report, for a word that is none.
bool AddConditions(const EventsListOptions& options, EventFilter& filter);
