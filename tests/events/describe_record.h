// An event record as one line.
#pragma once

#include <string>

#include "events/columns.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

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
        if (column & kInt32Columns) {
            Ulmo::AppendDecimal(text, *record.int32Field[IndexIn(kInt32Columns, column)]);
        } else if (column & kInt64Columns) {
            Ulmo::AppendDecimal(text, *record.int64Field[IndexIn(kInt64Columns, column)]);
        } else if (column & kDoubleColumns) {
            Ulmo::AppendDouble(text, *record.doubleField[IndexIn(kDoubleColumns, column)]);
        } else if (column & kDateColumns) {
            Ulmo::AppendUnsigned(text, record.dateField[IndexIn(kDateColumns, column)]->value);
        } else {
            const auto& [length, units] = TextColumn(record, column);
            text.append(u"'").append(reinterpret_cast<const char16_t*>(units), length);
            text.append(units[length] == 0 ? u"'" : u"?");
        }
    }
    return Ulmo::Utf8FromWide(text);
}

}  // namespace OrvPLC
