// Times of events as people give them.
#pragma once

#include <OrvActions.hpp>
#include <cstdint>
#include <string>
#include <string_view>

orv::TimePoint TimeAt(std::int64_t milliseconds);  // since 1970 UTC

// A date, and after a T or a blank the hour, with minutes, seconds and milliseconds as far as they are given; then Z or
// an offset from UTC. False for what is no time.
bool ParseTime(const std::string& text, orv::TimePoint& time);

// An age: a number and s, m, h, d or w; in milliseconds.
bool ParseAge(std::string_view text, std::int64_t& milliseconds);
