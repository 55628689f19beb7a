// An event record as one line.
#pragma once

#include <string>

#include "events/columns.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

inline void AppendField(std::u16string& text, const std::int32_t* number)
{
    Ulmo::AppendDecimal(text, *number);
}
inline void AppendField(std::u16string& text, const std::int64_t* number)
{
    Ulmo::AppendDecimal(text, *number);
}
inline void AppendField(std::u16string& text, const double* number)
{
    Ulmo::AppendDouble(text, *number);
}
inline void AppendField(std::u16string& text, const TUlmoDateTime* date)
{
    Ulmo::AppendUnsigned(text, date->value);
}
inline void AppendField(std::u16string& text, const TOrvEventText& field)
{
    text.append(u"'").append(reinterpret_cast<const char16_t*>(field.text), field.length);
    text.append(field.text[field.length] == 0 ? u"'" : u"?");
}

// "1102; Int32FieldA 5; StringFieldA 'door'": the code and the filled columns. A text is told by its length, one that
// does not end in a zero there by a mark.
inline std::string Describe(const TOrvEventData& record)
{
    std::u16string text;
    Ulmo::AppendUnsigned(text, record.code);
    const Columns filled = FilledColumns(record);
    for (Columns column = 1; column & kAllColumns; column <<= 1) {
        if (!(filled & column)) continue;
        text.append(u"; ").append(ColumnName(column)).append(u" ");
        VisitColumn(record, column, [&text](const auto& field) { AppendField(text, field); });
    }
    return Ulmo::Utf8FromWide(text);
}

}  // namespace OrvPLC
