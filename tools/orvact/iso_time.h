// A date of the JSON form.
#pragma once

#include <OrvActions.hpp>
#include <optional>
#include <string>

// "2026-11-15T03:10:43.123+01:00", or Z after the time.
std::optional<orv::DateTime> DateFromIso(const std::string& text);
// "2026-11-15T03:10:43.123", whatever the zone.
std::string ClockText(orv::TimePoint time);
// The same with its zone after it, also where the library has no text for it: before 1601.
std::string IsoText(orv::DateTime date);
