// Numbers and digits of bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

inline std::uint64_t NumberAt(std::string_view bytes, std::size_t offset, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return number;
}

inline std::uint32_t Word32At(std::string_view bytes, std::size_t offset)
{
    return static_cast<std::uint32_t>(NumberAt(bytes, offset, 4));
}

inline std::string LittleEndian(std::uint32_t number)
{
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(number >> 8 * i & 0xFF);
    return bytes;
}

inline void AppendHex(std::string& text, unsigned char byte)
{
    constexpr char kDigits[] = "0123456789abcdef";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

// With `digits` digits at least.
inline std::string Hex(std::uint64_t number, int digits)
{
    std::string text;
    for (int shift = 56; shift >= 0; shift -= 8) AppendHex(text, static_cast<unsigned char>(number >> shift & 0xFF));
    const std::size_t first = std::min(text.find_first_not_of('0'), text.size() - static_cast<std::size_t>(digits));
    return text.substr(first);
}
