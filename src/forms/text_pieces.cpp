#include "forms/text_pieces.h"

#include <algorithm>

#include "ulmo/character_class.h"
#include "ulmo/date_time.h"

namespace OrvPLC {

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

void AppendQuotedGuid(std::u16string& output, const TOrvGuid& guid)
{
    output += u'"';
    AppendGuid(output, guid);
    output += u'"';
}

void AppendQuotedDateTime(std::u16string& output, TUlmoDateTime value)
{
    output += u'"';
    AppendDateTime(output, value);
    output += u'"';
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

// The identifier pattern by hand.
bool IsActionIdentifier(std::u16string_view name)
{
    return !name.empty() && Ulmo::IsAlpha(name.front()) && std::ranges::all_of(name, Ulmo::IsAlnum);
}

}  // namespace OrvPLC
