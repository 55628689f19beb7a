// Pieces that several text forms share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "OrvActions/OrvTypes.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

void AppendGuid(std::u16string& output, const TOrvGuid& guid);
void AppendDateTime(std::u16string& output, TUlmoDateTime value);  // the technical form, 33 characters

// A coordinate of a packed rectangle, word 0 being the lowest.
constexpr std::int16_t RectWord(std::int64_t packed, unsigned word)
{
    return static_cast<std::int16_t>(packed >> (16 * word));
}

// The four words in decimal between the brackets, a comma and a blank between them.
void AppendRect(std::u16string& output, std::int64_t packed, std::u16string_view open, std::u16string_view close);

inline void AppendQuoted(std::u16string& output, std::u16string_view text)
{
    output += u'"';
    output += text;
    output += u'"';
}

void AppendQuotedGuid(std::u16string& output, const TOrvGuid& guid);
void AppendQuotedDateTime(std::u16string& output, TUlmoDateTime value);

// What our own text and the sibling's write alike: `{ 12, "name" }` and so on, or less where there is no id or guid.
// Only the numbers differ: ours have a sign, the sibling's do not, and the type of the number tells which.

template <class Integer>
void AppendInteger(std::u16string& output, Integer number)
{
    if constexpr (std::is_signed_v<Integer>) {
        Ulmo::AppendDecimal(output, number);
    } else {
        Ulmo::AppendUnsigned(output, number);
    }
}

inline void AppendNameAndBrace(std::u16string& output, std::u16string_view name)
{
    output += u", \"";
    output += name;
    output += u"\" }";
}

template <class Id>
void AppendEventType(std::u16string& output, Id id, std::u16string_view name)
{
    if (id == 0) return AppendQuoted(output, name);
    output += u"{ ";
    AppendInteger(output, id);
    AppendNameAndBrace(output, name);
}

template <class Id, class Number>
void AppendMediaChannel(std::u16string& output, Id id, Number number, std::u16string_view name)
{
    if (id == 0 && name.empty()) return AppendInteger(output, number);
    output += u"{ ";
    AppendInteger(output, id);
    output += u", ";
    AppendInteger(output, number);
    AppendNameAndBrace(output, name);
}

inline void AppendResource(std::u16string& output, const TOrvGuid& guid, std::u16string_view name)
{
    if (Ulmo::GuidTools::IsZero(guid)) return AppendQuoted(output, name);
    output += u"{ \"";
    AppendGuid(output, guid);
    output += u"\", \"";
    output += name;
    output += u"\" }";
}

// Whether a name stands in text without quotes.
bool IsActionIdentifier(std::u16string_view name);

}  // namespace OrvPLC
