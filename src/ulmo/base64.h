// Bytes as Base64 text: the standard alphabet, "=" for padding, no line breaks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Ulmo {

std::string EncodeBase64(const std::byte* bytes, std::size_t count);

// Reads up to the first "=" or the end; line breaks are skipped. False at any other character outside the alphabet: the
// output then holds the bytes of the whole groups before it. A single character after the last group is dropped.
bool DecodeBase64(std::string_view text, std::vector<std::byte>& bytes);

}  // namespace Ulmo
