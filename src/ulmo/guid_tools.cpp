#include "ulmo/guid_tools.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace Ulmo::GuidTools {

namespace {

constexpr unsigned char kNoDigit = 0xFF;

constexpr std::array<unsigned char, 128> MakeDigitValues()
{
    std::array<unsigned char, 128> values{};
    values.fill(kNoDigit);
    for (unsigned char i = 0; i != 10; ++i) values['0' + i] = i;
    for (unsigned char i = 0; i != 6; ++i) {
        values['a' + i] = static_cast<unsigned char>(10 + i);
        values['A' + i] = static_cast<unsigned char>(10 + i);
    }
    return values;
}

constexpr std::array<unsigned char, 128> kDigitValues = MakeDigitValues();

// The place of each byte's two digits in the text, in the order in which the text has the bytes, and the dashes.
constexpr std::array<unsigned char, 16> kDigitPlaces = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
constexpr std::array<unsigned char, 4> kDashPlaces = {8, 13, 18, 23};

using Bytes = std::array<unsigned char, 16>;

// The bytes in the order of the text: the first three fields with their highest byte first.
Bytes TextOrder(const TOrvGuid& guid)
{
    Bytes bytes{};
    for (unsigned i = 0; i != 4; ++i) bytes[i] = static_cast<unsigned char>(guid.Data1 >> (24 - 8 * i));
    for (unsigned i = 0; i != 2; ++i) {
        bytes[4 + i] = static_cast<unsigned char>(guid.Data2 >> (8 - 8 * i));
        bytes[6 + i] = static_cast<unsigned char>(guid.Data3 >> (8 - 8 * i));
    }
    std::memcpy(&bytes[8], guid.Data4, sizeof guid.Data4);
    return bytes;
}

TOrvGuid FromTextOrder(const Bytes& bytes)
{
    TOrvGuid guid{};
    for (unsigned i = 0; i != 4; ++i) guid.Data1 = (guid.Data1 << 8) | bytes[i];
    guid.Data2 = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    guid.Data3 = static_cast<std::uint16_t>(bytes[6] << 8 | bytes[7]);
    std::memcpy(guid.Data4, &bytes[8], sizeof guid.Data4);
    return guid;
}

template <class Char>
void WriteText(const TOrvGuid& guid, Char* buffer)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    const Bytes bytes = TextOrder(guid);
    for (std::size_t i = 0; i != bytes.size(); ++i) {
        buffer[kDigitPlaces[i]] = static_cast<Char>(kDigits[bytes[i] >> 4]);
        buffer[kDigitPlaces[i] + 1] = static_cast<Char>(kDigits[bytes[i] & 15]);
    }
    for (const unsigned char place : kDashPlaces) buffer[place] = Char('-');
}

unsigned DigitValue(char16_t digit)
{
    return digit < kDigitValues.size() ? kDigitValues[digit] : kNoDigit;
}

unsigned DigitValue(char digit)
{
    return DigitValue(static_cast<char16_t>(static_cast<unsigned char>(digit)));
}

// An opening brace may come first. Stores nothing unless all 36 characters are sound.
template <class Char>
bool ParseText(std::basic_string_view<Char> text, TOrvGuid& guid)
{
    // What follows the last digit is not looked at, a closing brace included.
    if (!text.empty() && text.front() == Char('{')) text.remove_prefix(1);
    if (text.size() < kTextLength) return false;
    for (const unsigned char place : kDashPlaces) {
        if (text[place] != Char('-')) return false;
    }
    Bytes bytes{};
    unsigned seen = 0;  // a character that is no digit leaves a bit above the digits
    for (std::size_t i = 0; i != bytes.size(); ++i) {
        const unsigned high = DigitValue(text[kDigitPlaces[i]]);
        const unsigned low = DigitValue(text[kDigitPlaces[i] + 1U]);
        seen |= high | low;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    if (seen > 15) return false;
    guid = FromTextOrder(bytes);
    return true;
}

}  // namespace

void Write(const TOrvGuid& guid, char16_t* buffer)
{
    WriteText(guid, buffer);
}

void Write(const TOrvGuid& guid, char* buffer)
{
    WriteText(guid, buffer);
}

std::string GuidToStringA(const TOrvGuid& guid)
{
    std::string text(kTextLength, '\0');
    Write(guid, text.data());
    return text;
}

std::u16string GuidToStringW(const TOrvGuid& guid)
{
    std::u16string text(kTextLength, u'\0');
    Write(guid, text.data());
    return text;
}

bool StringToGuidA(std::string_view text, TOrvGuid& guid)
{
    return ParseText(text, guid);
}

bool StringToGuidW(std::u16string_view text, TOrvGuid& guid)
{
    return ParseText(text, guid);
}

bool Equal(const TOrvGuid& a, const TOrvGuid& b)
{
    static_assert(sizeof(TOrvGuid) == 16);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

bool IsZero(const TOrvGuid& guid)
{
    return Equal(guid, TOrvGuid{});
}

}  // namespace Ulmo::GuidTools
