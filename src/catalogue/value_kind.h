// The kinds of values, as the compiler counts them.
//
// Kinds travel as plain numbers: in the public records, in the catalogue, and in buffers from outside, where any number
// may stand. A switch over ValueKind names every kind and has no `default:`, so the compiler reports each place that a
// new kind is missing in. What follows such a switch serves the numbers that are no kind.
#pragma once

#include <cstdint>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

#define ORV_VALUE_KIND(name, number) name = number,
enum class ValueKind : std::uint32_t { None = ORV_KIND_None, ORV_FOR_EACH_KIND(ORV_VALUE_KIND) };
#undef ORV_VALUE_KIND

}  // namespace OrvPLC
