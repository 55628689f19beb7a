#include "platform/posix/utf8.h"

#include <cstdint>
#include <cstring>

namespace Platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// The code point at a position of a UTF-16 text; the position moves after it.
char32_t NextCodePoint(std::u16string_view text, std::size_t& position)
{
    const char32_t unit = text[position++];
    if (unit < 0xD800 || unit > 0xDFFF) return unit;
    if (unit > 0xDBFF || position == text.size()) return kReplacement;
    const char32_t low = text[position];
    if (low < 0xDC00 || low > 0xDFFF) return kReplacement;
    ++position;
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

std::size_t SequenceLength(char32_t point)
{
    return point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
}

char Continuation(char32_t bits)
{
    return static_cast<char>(0x80 | (bits & 0x3F));
}

char* PutUtf8(char32_t point, char* output)
{
    switch (SequenceLength(point)) {
    case 1: *output++ = static_cast<char>(point); return output;
    case 2: *output++ = static_cast<char>(0xC0 | (point >> 6)); break;
    case 3:
        *output++ = static_cast<char>(0xE0 | (point >> 12));
        *output++ = Continuation(point >> 6);
        break;
    default:
        *output++ = static_cast<char>(0xF0 | (point >> 18));
        *output++ = Continuation(point >> 12);
        *output++ = Continuation(point >> 6);
    }
    *output++ = Continuation(point);
    return output;
}

// What must follow a leading byte. The second byte has limits of its own, which exclude overlong forms, surrogates and
// points above U+10FFFF.
struct Lead {
    unsigned following;  // 0: no leading byte
    unsigned char lowest;
    unsigned char highest;
};

Lead LeadOf(unsigned char byte)
{
    if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

// The code point of a sequence that begins with a byte above ASCII; the position moves after what was taken.
char32_t NextSequence(std::string_view text, std::size_t& position)
{
    const auto first = static_cast<unsigned char>(text[position++]);
    Lead lead = LeadOf(first);
    if (lead.following == 0) return kReplacement;
    char32_t point = first & (0x3FU >> lead.following);
    for (; lead.following != 0; --lead.following) {
        if (position == text.size()) return kReplacement;
        const auto byte = static_cast<unsigned char>(text[position]);
        // The byte is not taken: it may begin the next character.
        if (byte < lead.lowest || byte > lead.highest) return kReplacement;
        point = (point << 6) | (byte & 0x3FU);
        ++position;
        lead.lowest = 0x80;
        lead.highest = 0xBF;
    }
    return point;
}

char16_t* PutUtf16(char32_t point, char16_t* output)
{
    if (point < 0x10000) {
        *output++ = static_cast<char16_t>(point);
        return output;
    }
    *output++ = static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
    *output++ = static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
    return output;
}

// Long texts are ASCII for the most part. A block of a fixed size between input and output, which cannot overlap
// either, becomes vector instructions.
constexpr std::size_t kBlock = 16;

// Whether sixteen units from here on are there and all ASCII.
template <class Char>
bool IsAsciiBlock(std::basic_string_view<Char> text, std::size_t position)
{
    constexpr std::uint64_t kAboveAscii = sizeof(Char) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    if (text.size() - position < kBlock) return false;
    std::uint64_t words[kBlock * sizeof(Char) / sizeof(std::uint64_t)];
    std::memcpy(words, &text[position], sizeof words);
    std::uint64_t seen = 0;
    for (const std::uint64_t word : words) seen |= word;
    return (seen & kAboveAscii) == 0;
}

template <class From, class To>
void CopyBlock(const From* text, To* output)
{
    From block[kBlock];
    To converted[kBlock];
    std::memcpy(block, text, sizeof block);
    for (std::size_t i = 0; i != kBlock; ++i) converted[i] = static_cast<To>(block[i]);
    std::memcpy(output, converted, sizeof converted);
}

}  // namespace

std::size_t EncodeUtf8(std::u16string_view text, char* output)
{
    char* end = output;
    for (std::size_t position = 0; position < text.size();) {
        if (IsAsciiBlock(text, position)) {
            CopyBlock(&text[position], end);
            position += kBlock;
            end += kBlock;
        } else if (text[position] < 0x80) {
            *end++ = static_cast<char>(text[position++]);
        } else {
            end = PutUtf8(NextCodePoint(text, position), end);
        }
    }
    return static_cast<std::size_t>(end - output);
}

std::size_t EncodedLength(std::u16string_view text)
{
    std::size_t length = 0;
    for (std::size_t position = 0; position < text.size();) {
        if (IsAsciiBlock(text, position)) {
            position += kBlock;
            length += kBlock;
        } else {
            length += SequenceLength(NextCodePoint(text, position));
        }
    }
    return length;
}

std::size_t DecodeUtf8(std::string_view text, char16_t* output)
{
    char16_t* end = output;
    for (std::size_t position = 0; position < text.size();) {
        const auto byte = static_cast<unsigned char>(text[position]);
        if (IsAsciiBlock(text, position)) {
            CopyBlock(&text[position], end);
            position += kBlock;
            end += kBlock;
        } else if (byte < 0x80) {
            *end++ = byte;
            ++position;
        } else {
            end = PutUtf16(NextSequence(text, position), end);
        }
    }
    return static_cast<std::size_t>(end - output);
}

}  // namespace Platform
