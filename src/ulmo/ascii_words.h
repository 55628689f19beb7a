// ASCII tests and lower-casing of text, several characters a step.
#pragma once

#include <cstddef>
#include <string_view>

namespace Ulmo {

bool IsAscii(std::string_view text);
bool IsAscii(std::u16string_view text);

// Copy ASCII text into another width; the output holds as many characters.
void NarrowAscii(std::u16string_view text, char* output);
void WidenAscii(std::string_view text, char16_t* output);

// Lower-cases in place up to the first unit above ASCII; the result is its index, or the length.
std::size_t LowerAsciiPrefix(char16_t* text, std::size_t length);

// The index of the first unit of `text` that is above ASCII or differs, lower-cased, from its counterpart in `lower`;
// the length when there is none.
std::size_t EqualAsciiLowerPrefix(const char16_t* text, const char16_t* lower, std::size_t length);

}  // namespace Ulmo
