// The columns of an event record, addressed by the bits of the catalogue's masks (ORV_COLUMN_...).
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

#include "OrvActions/OrvEvents.h"

namespace OrvPLC {

// A set of columns, a bit each. The order of the bits is the order of all walks: 32-bit numbers, 64-bit numbers, texts,
// doubles, dates, texts of users.
using Columns = std::uint32_t;

inline constexpr Columns kInt32Columns = 0xF;
inline constexpr Columns kInt64Columns = 0xF0;
inline constexpr Columns kStringColumns = 0xF00;
inline constexpr Columns kDoubleColumns = 0x3000;
inline constexpr Columns kDateColumns = 0xC000;
inline constexpr Columns kUserColumns = 0xF0000;
inline constexpr Columns kGenericColumns = 0xFFFF;  // all but those of users
inline constexpr Columns kAllColumns = 0xFFFFF;

constexpr Columns First(Columns columns)
{
    return columns & (~columns + 1);
}

// The position of a column among those of its sort.
constexpr std::size_t IndexIn(Columns sort, Columns column)
{
    return static_cast<std::size_t>(std::countr_zero(column) - std::countr_zero(sort));
}

// Calls visit(field) with the field of a column: a pointer to a 32-bit number, a 64-bit number, a double or a date, or
// the record of a text.
template <class Record, class Visit>
void VisitColumn(Record& record, Columns column, Visit&& visit)
{
    if (column & kInt32Columns) {
        visit(record.int32Field[IndexIn(kInt32Columns, column)]);
    } else if (column & kInt64Columns) {
        visit(record.int64Field[IndexIn(kInt64Columns, column)]);
    } else if (column & kDoubleColumns) {
        visit(record.doubleField[IndexIn(kDoubleColumns, column)]);
    } else if (column & kDateColumns) {
        visit(record.dateField[IndexIn(kDateColumns, column)]);
    } else if (column & kStringColumns) {
        visit(record.stringField[IndexIn(kStringColumns, column)]);
    } else {
        visit(record.userField[IndexIn(kUserColumns, column)]);
    }
}

std::u16string_view ColumnName(Columns column);      // of the record and the database, "Int32FieldA"; the catalogue writes Int32_A
Columns FilledColumns(const TOrvEventData& record);  // those whose pointer is not null

// The parameters that fill the columns of users in every action, in the order of the columns.
inline constexpr std::u16string_view kUserParameters[] = {u"User1", u"User2", u"ClientHost", u"ClientAccount"};

}  // namespace OrvPLC
