// Narrow and wide text.
//
// Values and XML are UTF-8; texts of the system and of message literals are in the ANSI code page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "ulmo/unit_search.h"

namespace Ulmo {

// Each raises SystemException with the name of the system call when the system refuses the conversion. An empty input
// gives an empty output. Characters without a counterpart become replacement characters. Wide texts of more than
// 715,827,882 units are refused.
std::string Utf8FromWide(std::u16string_view text);
std::u16string WideFromUtf8(std::string_view text);
std::u16string WideFromAnsi(std::string_view text);
std::string AnsiFromWide(std::u16string_view text);

// Lower-cased copies and keys. ASCII takes a path without a system call.
std::u16string LowerCase(std::u16string_view text);
bool IsLowerCase(std::u16string_view text);  // true when LowerCase would change nothing

// Compares that many units exactly. std::u16string_view's own comparison goes one unit at a time, and for a name a call
// of memcmp costs more than the comparison. Words that overlap make it one of few steps whatever the number is.
inline bool SameUnits(const char16_t* a, const char16_t* b, std::size_t size)
{
    constexpr std::size_t kWord = 4;  // units
    const auto difference = [a, b](std::size_t at) {
        std::uint64_t words[2];
        std::memcpy(&words[0], a + at, sizeof words[0]);
        std::memcpy(&words[1], b + at, sizeof words[1]);
        return words[0] ^ words[1];
    };
    if (size > 4 * kWord) return std::memcmp(a, b, size * sizeof(char16_t)) == 0;
    if (size >= 2 * kWord) {
        const std::size_t last = size - kWord;
        return (difference(0) | difference(kWord) | difference(last - kWord) | difference(last)) == 0;
    }
    if (size >= kWord) return (difference(0) | difference(size - kWord)) == 0;
    for (std::size_t at = 0; at < size; ++at) {
        if (a[at] != b[at]) return false;
    }
    return true;
}
inline bool SameText(std::u16string_view a, std::u16string_view b)
{
    return a.size() == b.size() && SameUnits(a.data(), b.data(), a.size());
}
// Compares after lower-casing `text`; `lower` is lower-cased already.
bool EqualsLower(std::u16string_view text, std::u16string_view lower);

// Null reads as "".
inline std::u16string_view TerminatedView(const char16_t* text)
{
    return text ? std::u16string_view(text, TerminatedLength(text)) : std::u16string_view();
}

// The size as the 32 bits of an int for a system call. A size above 0xFFFFFFFF gives -1, which such calls take as "up
// to the terminating zero", and a line in the debug sink.
int ClipSizeT(std::size_t size);

}  // namespace Ulmo
