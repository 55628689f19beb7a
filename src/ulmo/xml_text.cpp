#include "ulmo/xml_text.h"

#include <algorithm>

#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

// A char may have a sign, which would spread into the comparisons below.
unsigned char ByteOf(char c)
{
    return static_cast<unsigned char>(c);
}

// `entity` is what stands behind the "&", with its ";" if it has one.
char EntityByte(std::string_view entity)
{
    if (entity.starts_with('#')) {
        if (!entity.ends_with(';')) return '?';
        // The low byte of the number: the writer escapes single bytes, not characters.
        return static_cast<char>(ScanInt32(WideFromUtf8(entity.substr(1))));
    }
    // All but "amp" may lack their semicolon or have more behind the word.
    if (entity.starts_with("lt")) return '<';
    if (entity.starts_with("gt")) return '>';
    if (entity.starts_with("amp;")) return '&';
    if (entity.starts_with("quot")) return '"';
    if (entity.starts_with("apos")) return '\'';
    return '?';
}

bool IsContinuation(char c)
{
    return (ByteOf(c) & 0xC0) == 0x80;
}

// The length of the sequence above ASCII that the text begins with, 0 when it begins with none.
std::size_t SequenceLength(std::string_view text)
{
    const unsigned lead = ByteOf(text[0]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
    if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), IsContinuation)) return 0;
    const unsigned second = ByteOf(text[1]);
    const bool tooLong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool tooHigh = lead == 0xF4 && second >= 0x90;
    return tooLong || surrogate || tooHigh ? 0 : length;
}

// What a character of markup is written as; empty for others.
std::string_view EscapeOf(char c)
{
    switch (c) {
    case '<': return "&lt;";
    case '&': return "&amp;";
    case '>': return "&gt;";
    case '\'': return "&apos;";
    case '"': return "&quot;";
    default: return {};
    }
}

// The length of the text before the first character that must be escaped.
std::size_t PlainLength(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t step = 1;
        if (ByteOf(text[at]) >= 0x80) {
            step = SequenceLength(text.substr(at));
        } else if (!EscapeOf(text[at]).empty()) {
            step = 0;
        }
        if (step == 0) break;
        at += step;
    }
    return at;
}

}  // namespace

void DecodeXmlEntities(std::string& text)
{
    std::size_t at = text.find('&');
    if (at == std::string::npos) return;
    // In place: an entity is never shorter than the byte that it stands for.
    std::size_t kept = at;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find(';', at), text.size() - 1) + 1;
        text[kept] = EntityByte(std::string_view(text).substr(at + 1, end - at - 1));
        ++kept;
        at = std::min(text.find('&', end), text.size());
        std::copy(text.begin() + static_cast<std::ptrdiff_t>(end), text.begin() + static_cast<std::ptrdiff_t>(at),
                  text.begin() + static_cast<std::ptrdiff_t>(kept));
        kept += at - end;
    }
    text.resize(kept);
}

std::string EscapeXml(std::string_view utf8)
{
    std::size_t plain = PlainLength(utf8);
    if (plain == utf8.size()) return std::string(utf8);
    std::string escaped;
    escaped.reserve(utf8.size() + 16);
    while (plain < utf8.size()) {
        escaped.append(utf8.substr(0, plain));
        if (const std::string_view entity = EscapeOf(utf8[plain]); !entity.empty()) {
            escaped += entity;
        } else {
            // A byte that belongs to no sequence of UTF-8.
            escaped.append("&#").append(std::to_string(ByteOf(utf8[plain]))).append(";");
        }
        utf8.remove_prefix(plain + 1);
        plain = PlainLength(utf8);
    }
    return escaped.append(utf8);
}

// After a mismatch only the last "*" needs to try again: what an earlier one took can only be found later.
bool MatchesWildcards(std::string_view pattern, std::string_view name)
{
    constexpr std::size_t kNone = std::string_view::npos;
    if (pattern.empty()) return true;
    std::size_t star = kNone;
    std::size_t retry = 0;
    std::size_t p = 0;
    std::size_t n = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            if (p + 1 == pattern.size()) return true;
            star = p++;
            retry = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != kNone) {
            p = star + 1;
            n = ++retry;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == kNone;
}

TextPlace PlaceOf(std::string_view utf8, std::size_t position, TextPlace from)
{
    const std::string_view before = utf8.substr(0, position);
    const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::string_view line = before.substr(before.rfind('\n') + 1);
    const auto continued = static_cast<std::size_t>(std::count_if(line.begin(), line.end(), IsContinuation));
    return {from.line + lines, (lines == 0 ? from.column : 1) + line.size() - continued};
}

bool IsXmlNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ':' || c == '_' ||
           c == '.' || c == '-';
}

bool IsXmlBlank(char c)
{
    return c == ' ' || c == '\r' || c == '\n' || c == '\t';
}

}  // namespace Ulmo
