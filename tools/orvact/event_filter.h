// What events list is asked for, as conditions that a store checks.
#pragma once

#include "commands.h"
#include "event_conditions.h"

// Adds the conditions of --id, --code, --class, --since and --until. Reports what is none and gives false.
bool AddConditions(const EventsListOptions& options, EventFilter& filter);
