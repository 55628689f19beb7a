#include "forms/text_pieces.h"

#include "forms/text_patterns.h"
#include "ulmo/date_time.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

constexpr bool IsAsciiLetter(char16_t unit)
{
    return static_cast<unsigned>((unit | 0x20) - u'a') < 26;
}

constexpr bool IsAsciiDigit(char16_t unit)
{
    return static_cast<unsigned>(unit - u'0') < 10;
}

}  // namespace

void AppendGuid(std::u16string& output, const TOrvGuid& guid)
{
    char16_t text[Ulmo::GuidTools::kTextLength];
    Ulmo::GuidTools::Write(guid, text);
    output.append(text, Ulmo::GuidTools::kTextLength);
}

void AppendDateTime(std::u16string& output, TUlmoDateTime value)
{
    Ulmo::DateText text;
    output += Ulmo::ToText(value, text);
}

void AppendRect(std::u16string& output, std::int64_t packed, std::u16string_view open, std::u16string_view close)
{
    output += open;
    for (unsigned word = 0; word < 4; ++word) {
        if (word > 0) output += u", ";
        Ulmo::AppendDecimal(output, RectWord(packed, word));
    }
    output += close;
}

// The identifier pattern by hand. Letters beyond ASCII are the pattern's business.
bool IsActionIdentifier(std::u16string_view name)
{
    if (name.empty() || IsAsciiDigit(name.front())) return false;
    bool ascii = true;
    for (const char16_t unit : name) {
        if (unit >= 0x80) {
            ascii = false;
        } else if (!IsAsciiLetter(unit) && !IsAsciiDigit(unit)) {
            return false;
        }
    }
    return ascii || FitsWhole(Patterns().identifier, name);
}

}  // namespace OrvPLC
