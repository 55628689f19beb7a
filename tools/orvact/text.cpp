#include "text.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Range {
    char32_t first;
    char32_t last;
};

// The common scripts of their kind; sorted.
constexpr Range kCombining[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},   {0x064B, 0x065F}, {0x0900, 0x0902},
    {0x093C, 0x093C}, {0x0941, 0x0948}, {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},   {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF},
    {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2064},   {0x20D0, 0x20FF}, {0x3099, 0x309A},
    {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x23E9, 0x23EC},   {0x26A1, 0x26A1}, {0x2705, 0x2705}, {0x274C, 0x274C},
    {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF}, {0xA000, 0xA4CF}, {0xA960, 0xA97F},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <std::size_t Size>
bool IsIn(const Range (&ranges)[Size], char32_t character)
{
    const Range* found = std::upper_bound(std::begin(ranges), std::end(ranges), character,
                                          [](char32_t value, const Range& range) { return value < range.first; });
    return found != std::begin(ranges) && character <= std::prev(found)->last;
}

// The number of bytes that a lead byte announces, 0 for none.
std::size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool IsScalar(char32_t character, std::size_t length)
{
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return character >= kSmallest[length] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
}

// Moves the ASCII characters that a text begins with to the end of another: nearly all of nearly all texts.
template <class From, class To>
void TakeAscii(std::basic_string_view<From>& text, std::basic_string<To>& to)
{
    using Unsigned = std::make_unsigned_t<From>;
    const auto end =
        std::find_if(text.begin(), text.end(), [](From unit) { return static_cast<Unsigned>(unit) >= 0x80; });
    const auto count = static_cast<std::size_t>(end - text.begin());
    to.resize(to.size() + count);
    std::copy(text.begin(), end, to.end() - static_cast<std::ptrdiff_t>(count));
    text.remove_prefix(count);
}

}  // namespace

char32_t NextCharacter(std::string_view& text, bool& clean)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = SequenceLength(byte(0));
    char32_t character = length > 1 ? byte(0) & (0x7Fu >> length) : byte(0);
    bool good = length > 0 && length <= text.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byte(i) & 0xC0) == 0x80;
        character = (character << 6) | (byte(i) & 0x3F);
    }
    good = good && IsScalar(character, length);
    clean = clean && good;
    text.remove_prefix(good ? length : 1);
    return good ? character : kReplacement;
}

char32_t NextCharacter(std::u16string_view& text)
{
    const char32_t unit = text[0];
    const bool lead = unit >= 0xD800 && unit < 0xDC00;
    const bool pair = lead && text.size() > 1 && text[1] >= 0xDC00 && text[1] < 0xE000;
    const char32_t character = pair ? 0x10000 + ((unit - 0xD800) << 10) + (text[1] - char32_t{0xDC00}) : unit;
    text.remove_prefix(pair ? 2 : 1);
    return !pair && unit >= 0xD800 && unit < 0xE000 ? kReplacement : character;
}

void AppendUtf8(std::string& text, char32_t character)
{
    const auto append = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            append(0xE0 | (character >> 12));
        } else {
            append(0xF0 | (character >> 18));
            append(0x80 | ((character >> 12) & 0x3F));
        }
        append(0x80 | ((character >> 6) & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

std::u16string WideFromUtf8(std::string_view text, bool& clean)
{
    std::u16string wide;
    wide.reserve(text.size());
    clean = true;
    for (TakeAscii(text, wide); !text.empty(); TakeAscii(text, wide)) {
        const char32_t character = NextCharacter(text, clean);
        if (character < 0x10000) {
            wide += static_cast<char16_t>(character);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return wide;
}

std::string Utf8FromWide(std::u16string_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (TakeAscii(text, narrow); !text.empty(); TakeAscii(text, narrow)) AppendUtf8(narrow, NextCharacter(text));
    return narrow;
}

std::string Utf8FromWide(const OrvWChar* text)
{
    return text ? Utf8FromWide(std::u16string_view(reinterpret_cast<const char16_t*>(text))) : std::string();
}

std::size_t CharacterWidth(char32_t character)
{
    if (character < 0x300) return 1;
    if (IsIn(kCombining, character)) return 0;
    return IsIn(kWide, character) ? 2 : 1;
}

std::size_t DisplayWidth(std::string_view text)
{
    std::size_t width = 0;
    bool clean = true;
    while (!text.empty()) width += CharacterWidth(NextCharacter(text, clean));
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
    bool clean = true;
    for (std::size_t used = 0;;) {
        const char32_t character = NextCharacter(text, clean);
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
    bool clean = true;
    while (!text.empty()) AppendUtf8(visible, VisibleCharacter(NextCharacter(text, clean)));
    return visible;
}

std::vector<std::string> Words(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        if (!word.empty()) words.emplace_back(word);
    }
    return words;
}

std::string Wrapped(const std::vector<std::string>& pieces, std::string_view separator, std::size_t indent,
                    std::size_t width)
{
    std::string wrapped;
    std::size_t column = indent;
    for (const std::string& piece : pieces) {
        const std::size_t needed = DisplayWidth(piece) + separator.size() + 1;
        if (column > indent && column + needed > width) {
            wrapped += std::string(separator) + "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            wrapped += std::string(separator) + " ";
        }
        wrapped += piece;
        column += needed;
    }
    return wrapped;
}

std::string LowerCaseAscii(std::string_view text)
{
    std::string lower(text);
    for (char& character : lower) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    }
    return lower;
}
