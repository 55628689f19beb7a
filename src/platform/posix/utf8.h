// UTF-8 and UTF-16 with the replacement rules of the Windows code page calls.
#pragma once

#include <cstddef>
#include <string_view>

namespace Platform {

// Each writes the converted text and gives its length. The output holds at least the length that the counting twin
// gives; three bytes a unit and one unit a byte always suffice. A lone surrogate and each maximal part of an invalid
// sequence become U+FFFD.
std::size_t EncodeUtf8(std::u16string_view text, char* output);
std::size_t EncodedLength(std::u16string_view text);
std::size_t DecodeUtf8(std::string_view text, char16_t* output);

}  // namespace Platform
