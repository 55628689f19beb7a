#include "ulmo/ascii_words.h"

#include <cstring>

namespace Ulmo {

namespace {

constexpr std::size_t kUnitsPerWord = sizeof(std::uint64_t) / sizeof(char16_t);

std::uint64_t Load(const void* source)
{
    std::uint64_t word = 0;
    std::memcpy(&word, source, sizeof word);
    return word;
}

// In blocks of a fixed size that lie between input and output, which compilers turn into vector instructions: a local
// block cannot overlap either.
template <class From, class To>
void CopyAscii(const From* text, std::size_t length, To* output)
{
    constexpr std::size_t kBlock = 16;
    for (; length >= kBlock; text += kBlock, output += kBlock, length -= kBlock) {
        From block[kBlock];
        To converted[kBlock];
        std::memcpy(block, text, sizeof block);
        for (std::size_t i = 0; i != kBlock; ++i) converted[i] = static_cast<To>(block[i]);
        std::memcpy(output, converted, sizeof converted);
    }
    for (std::size_t i = 0; i != length; ++i) output[i] = static_cast<To>(text[i]);
}

}  // namespace

bool IsAscii(std::string_view text)
{
    const char* next = text.data();
    const char* const end = next + text.size();
    std::uint64_t seen = 0;
    // Looks once a block: a block whose words hold no high bit is ASCII, and one that does ends the walk.
    for (; end - next >= 32 && (seen & 0x8080808080808080) == 0; next += 32) {
        seen = Load(next) | Load(next + 8) | Load(next + 16) | Load(next + 24);
    }
    for (; next != end; ++next) seen |= static_cast<unsigned char>(*next);
    return (seen & 0x8080808080808080) == 0;
}

bool IsAscii(std::u16string_view text)
{
    const char16_t* next = text.data();
    const char16_t* const end = next + text.size();
    std::uint64_t seen = 0;
    for (; end - next >= 16 && AllAscii(seen); next += 16) {
        seen = Load(next) | Load(next + 4) | Load(next + 8) | Load(next + 12);
    }
    for (; next != end; ++next) seen |= *next;
    return AllAscii(seen);
}

void NarrowAscii(std::u16string_view text, char* output)
{
    CopyAscii(text.data(), text.size(), output);
}

void WidenAscii(std::string_view text, char16_t* output)
{
    CopyAscii(text.data(), text.size(), output);
}

std::size_t LowerAsciiPrefix(char16_t* text, std::size_t length)
{
    std::size_t at = 0;
    for (; length - at >= kUnitsPerWord; at += kUnitsPerWord) {
        const std::uint64_t units = Load(text + at);
        if (!AllAscii(units)) break;
        const std::uint64_t lower = LowerAsciiWord(units);
        std::memcpy(text + at, &lower, sizeof lower);
    }
    for (; at != length && text[at] < 0x80; ++at) text[at] = LowerAscii(text[at]);
    return at;
}

std::size_t EqualAsciiLowerPrefix(const char16_t* text, const char16_t* lower, std::size_t length)
{
    std::size_t at = 0;
    for (; length - at >= kUnitsPerWord; at += kUnitsPerWord) {
        const std::uint64_t units = Load(text + at);
        if (!AllAscii(units) || LowerAsciiWord(units) != Load(lower + at)) break;
    }
    while (at != length && text[at] < 0x80 && LowerAscii(text[at]) == lower[at]) ++at;
    return at;
}

}  // namespace Ulmo
