#include "text.h"

#include <utf8proc.h>

#include <OrvActions.hpp>
#include <algorithm>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

bool IsUtf8(std::string_view text)
{
    return orv::ToUtf8(orv::ToUtf16(text)) == text;
}

char32_t NextCharacter(std::string_view& text)
{
    utf8proc_int32_t character = 0;
    const auto length =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                         static_cast<utf8proc_ssize_t>(std::min<std::size_t>(text.size(), 4)), &character);
    text.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
    return length > 0 ? static_cast<char32_t>(character) : kReplacement;
}

void AppendUtf8(std::string& text, char32_t character)
{
    utf8proc_uint8_t bytes[4];
    const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(character), bytes);
    text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

std::size_t CharacterWidth(char32_t character)
{
    return static_cast<std::size_t>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)));
}

std::size_t DisplayWidth(std::string_view text)
{
    std::size_t width = 0;
    while (!text.empty()) width += CharacterWidth(NextCharacter(text));
    return width;
}

std::string Padded(std::string_view text, std::size_t width)
{
    const std::size_t used = DisplayWidth(text);
    return std::string(text) + std::string(used < width ? width - used : 0, ' ');
}

std::string Shortened(std::string_view text, std::size_t width)
{
    if (DisplayWidth(text) <= width) return std::string(text);
    std::string kept;
    for (std::size_t used = 0;;) {
        const char32_t character = NextCharacter(text);
        used += CharacterWidth(character);
        if (used >= width) return kept + "…";
        AppendUtf8(kept, character);
    }
}

char32_t VisibleCharacter(char32_t character)
{
    if (character == '\t') return ' ';
    if (character < 0x20) return 0x2400 + character;
    if (character == 0x7F) return 0x2421;
    const bool invisible = (character >= 0x80 && character < 0xA0) || (character >= 0x202A && character <= 0x202E);
    return invisible ? kReplacement : character;
}

std::string Visible(std::string_view text)
{
    if (std::ranges::all_of(text, [](char unit) { return unit >= 0x20 && unit < 0x7F; })) return std::string(text);
    std::string visible;
    visible.reserve(text.size());
    while (!text.empty()) AppendUtf8(visible, VisibleCharacter(NextCharacter(text)));
    return visible;
}

std::string LowerCaseAscii(std::string_view text)
{
    std::string lower(text);
    for (char& character : lower) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    }
    return lower;
}
