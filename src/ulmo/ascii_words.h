// ASCII tests and lower-casing of text, several characters a step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Ulmo {

template <class Char>
constexpr Char LowerAscii(Char unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<Char>(unit | 0x20) : unit;
}

// Four units of UTF-16 in one word.
inline constexpr std::uint64_t kEachUnit = 0x0001000100010001;
constexpr bool AllAscii(std::uint64_t units)
{
    return (units & (kEachUnit * 0xFF80)) == 0;
}
// Lower-cases four ASCII units. The sums raise bit 7 of a unit that is at or above the added bound; bit 7 moved down
// by two is the difference between the cases.
constexpr std::uint64_t LowerAsciiWord(std::uint64_t units)
{
    const std::uint64_t fromA = units + kEachUnit * (0x80 - 'A');
    const std::uint64_t behindZ = units + kEachUnit * (0x80 - 'Z' - 1);
    return units | ((fromA & ~behindZ & (kEachUnit * 0x80)) >> 2);
}

bool IsAscii(std::string_view text);
bool IsAscii(std::u16string_view text);

// Copy ASCII text into another width; the output holds as many characters.
void NarrowAscii(std::u16string_view text, char* output);
void WidenAscii(std::string_view text, char16_t* output);

// Lower-cases in place up to the first unit above ASCII; the result is its index, or the length.
std::size_t LowerAsciiPrefix(char16_t* text, std::size_t length);

// The index of the first unit of `text` that is above ASCII or differs, lower-cased, from its counterpart in `lower`;
// the length if there is none.
std::size_t EqualAsciiLowerPrefix(const char16_t* text, const char16_t* lower, std::size_t length);

}  // namespace Ulmo
