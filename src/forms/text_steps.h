// Steps over runs of one class of characters, shared by the walks through action text.
#pragma once

#include <cstddef>
#include <string_view>

#include "ulmo/character_class.h"

namespace OrvPLC {

inline bool StandsAt(std::u16string_view text, std::size_t at, char16_t unit)
{
    return at < text.size() && text[at] == unit;
}

// The place behind the run of characters of these classes that begins here.
inline std::size_t SkipClasses(std::u16string_view text, std::size_t at, unsigned classes)
{
    const char16_t* unit = text.data() + at;
    const char16_t* const end = text.data() + text.size();
    while (unit < end && (Ulmo::CharacterClass(*unit) & classes) != 0) ++unit;
    return static_cast<std::size_t>(unit - text.data());
}

inline std::size_t SkipBlanks(std::u16string_view text, std::size_t at)
{
    return SkipClasses(text, at, Ulmo::kSpace);
}

inline std::size_t SkipDigits(std::u16string_view text, std::size_t at)
{
    return SkipClasses(text, at, Ulmo::kDigit);
}

inline std::size_t SkipLettersAndDigits(std::u16string_view text, std::size_t at)
{
    return SkipClasses(text, at, Ulmo::kAlpha | Ulmo::kDigit);
}

// What stands from one place to before another.
inline std::u16string_view Between(std::u16string_view text, std::size_t first, std::size_t behind)
{
    return {text.data() + first, behind - first};
}

}  // namespace OrvPLC
