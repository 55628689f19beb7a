#include "ulmo/base64.h"

#include <array>
#include <cstdint>

namespace Ulmo {

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> MakeDigitValues()
{
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::uint8_t i = 0; i != kAlphabet.size(); ++i) values[static_cast<unsigned char>(kAlphabet[i])] = i;
    return values;
}

constexpr std::array<std::uint8_t, 256> kDigitValues = MakeDigitValues();

// Up to three bytes as four characters; the ones without bytes are padding.
void AppendGroup(std::string& text, const std::byte* bytes, std::size_t count)
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i != 3; ++i) bits = bits << 8 | (i < count ? static_cast<std::uint32_t>(bytes[i]) : 0);
    char group[4];
    for (std::size_t i = 0; i != 4; ++i) group[i] = i <= count ? kAlphabet[bits >> (18 - 6 * i) & 63] : '=';
    text.append(group, sizeof group);
}

}  // namespace

std::string EncodeBase64(const std::byte* bytes, std::size_t count)
{
    std::string text;
    text.reserve((count * 4 + 2) / 3 + 2);
    for (; count >= 3; bytes += 3, count -= 3) AppendGroup(text, bytes, 3);
    if (count != 0) AppendGroup(text, bytes, count);
    return text;
}

bool DecodeBase64(std::string_view text, std::vector<std::byte>& bytes)
{
    bytes.clear();
    bytes.reserve((text.size() + 3) / 4 * 3);
    std::uint32_t bits = 0;
    std::size_t pending = 0;  // characters of a group that is not complete
    for (const char c : text) {
        if (c == '=') break;
        if (c == '\r' || c == '\n') continue;
        const std::uint8_t digit = kDigitValues[static_cast<unsigned char>(c)];
        if (digit == kNoDigit) return false;
        bits = bits << 6 | digit;
        if (++pending != 4) continue;
        for (const int shift : {16, 8, 0}) bytes.push_back(static_cast<std::byte>(bits >> shift));
        pending = 0;
    }
    // Padding may be missing. A single character left over has too few bits for a byte and is dropped.
    if (pending >= 2) bytes.push_back(static_cast<std::byte>(bits >> (6 * pending - 8)));
    if (pending == 3) bytes.push_back(static_cast<std::byte>(bits >> 2));
    return true;
}

}  // namespace Ulmo
