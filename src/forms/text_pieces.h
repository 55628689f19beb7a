// Pieces that several text forms share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

void AppendGuid(std::u16string& output, const TOrvGuid& guid);
void AppendDateTime(std::u16string& output, TUlmoDateTime value);  // the technical form, 33 characters

// A coordinate of a packed rectangle, word 0 being the lowest.
constexpr std::int16_t RectWord(std::int64_t packed, unsigned word)
{
    return static_cast<std::int16_t>(packed >> (16 * word));
}

// The four words in decimal between the brackets, a comma and a blank between them.
void AppendRect(std::u16string& output, std::int64_t packed, std::u16string_view open, std::u16string_view close);

inline void AppendQuoted(std::u16string& output, std::u16string_view text)
{
    output += u'"';
    output += text;
    output += u'"';
}

// Whether a name stands in text without quotes.
bool IsActionIdentifier(std::u16string_view name);

}  // namespace OrvPLC
