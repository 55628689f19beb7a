// The kinds of values, as the compiler counts them: a switch over ValueKind has no `default:`, so that it reports each
// place which a new kind is missing in. A number that is no kind may come out of a file; what follows a switch is for
// it.
#pragma once

#include <cstdint>

#include <OrvActions.hpp>

#define ORV_VALUE_KIND(name, number) name = number,
enum class ValueKind : std::uint32_t { None = ORV_KIND_None, ORV_FOR_EACH_KIND(ORV_VALUE_KIND) };
#undef ORV_VALUE_KIND

#define ORV_KIND_NUMBER(name, number) number,
inline constexpr std::uint32_t kKinds[] = {ORV_FOR_EACH_KIND(ORV_KIND_NUMBER)};  // all there are
#undef ORV_KIND_NUMBER
