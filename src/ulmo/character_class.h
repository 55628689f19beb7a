// Letters, digits, blanks and characters of words among the UTF-16 units: one answer on all systems and for all users,
// the one that the pattern engine gives on Windows. The table is made of data/character_classes.txt.
//
// A unit is looked at alone: halves of surrogate pairs belong to no class.
#pragma once

#include <array>
#include <cstdint>

namespace Ulmo {

enum CharacterClassFlag : std::uint8_t {
    kAlpha = 1,
    kDigit = 2,  // in all scripts
    kSpace = 4,
    kWord = 8,  // letters, digits and the underscore
};

namespace Detail {

constexpr unsigned kAsciiUnits = 128;

constexpr std::array<std::uint8_t, kAsciiUnits> MakeAsciiClasses()
{
    std::array<std::uint8_t, kAsciiUnits> classes{};
    for (unsigned unit = 'a'; unit <= 'z'; ++unit) classes[unit] = classes[unit - 0x20] = kAlpha | kWord;
    for (unsigned unit = '0'; unit <= '9'; ++unit) classes[unit] = kDigit | kWord;
    for (unsigned unit = '\t'; unit <= '\r'; ++unit) classes[unit] = kSpace;
    classes[' '] = kSpace;
    classes['_'] = kWord;
    return classes;
}

inline constexpr std::array<std::uint8_t, kAsciiUnits> kAsciiClasses = MakeAsciiClasses();

// The high byte of a unit chooses a block, the low byte four bits in it.
extern const std::uint8_t kClassPages[256];
extern const std::uint8_t kClassBlocks[][128];

inline unsigned TableClass(char16_t unit)
{
    return kClassBlocks[kClassPages[unit >> 8]][(unit & 0xFFu) >> 1] >> ((unit & 1u) * 4) & 0xFu;
}

}  // namespace Detail

// The classes of a unit as CharacterClassFlag bits, 0 for none. A constant expression for ASCII.
constexpr std::uint8_t CharacterClass(char16_t unit)
{
    return unit < Detail::kAsciiUnits ? Detail::kAsciiClasses[unit]
                                      : static_cast<std::uint8_t>(Detail::TableClass(unit));
}

constexpr bool IsAlpha(char16_t unit)
{
    return (CharacterClass(unit) & kAlpha) != 0;
}

constexpr bool IsDigit(char16_t unit)
{
    return (CharacterClass(unit) & kDigit) != 0;
}

constexpr bool IsAlnum(char16_t unit)
{
    return (CharacterClass(unit) & (kAlpha | kDigit)) != 0;
}

constexpr bool IsSpace(char16_t unit)
{
    return (CharacterClass(unit) & kSpace) != 0;
}

constexpr bool IsWord(char16_t unit)
{
    return (CharacterClass(unit) & kWord) != 0;
}

}  // namespace Ulmo
