// The tables that turn names of types, views and columns into numbers. Names are compared without regard
// to case.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace OrvPLC {

inline constexpr std::uint32_t kPublicTypeUnknown = 0x7FFFFFFF;

std::optional<std::uint32_t> FindParameterType(std::u16string_view name);
std::optional<std::uint32_t> FindView(std::u16string_view name);
std::optional<std::uint32_t> FindColumn(std::u16string_view name);  // one bit; 0 for the words that mean "no column"

// A parameter type by any of its names; every other word, a misspelt one included, is a 32-bit number. Deliberate:
// that is how the name of an enum comes to stand for a type.
std::uint32_t ParameterTypeFromName(std::u16string_view name);

// 0 for an unknown name.
std::uint32_t ViewFromName(std::u16string_view name);

// A mask of columns from one name or from names joined by "|". A text with a bar that holds fewer than two good names
// gives 0; deliberate, the check is on the count of names that survive.
std::uint32_t ColumnsFromText(std::u16string_view text);

// The type code that the OrvAct_ family reports.
std::uint32_t PublicType(std::uint32_t type, std::uint32_t enumType);
std::uint32_t PublicEnumType(std::uint32_t enumId);
// The enum behind a public type code.
std::uint32_t EnumIdFromPublicType(std::uint32_t publicType);

}  // namespace OrvPLC
