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

inline TOrvEventText& TextColumn(TOrvEventData& record, Columns column)
{
    return column & kStringColumns ? record.stringField[IndexIn(kStringColumns, column)]
                                   : record.userField[IndexIn(kUserColumns, column)];
}

inline const TOrvEventText& TextColumn(const TOrvEventData& record, Columns column)
{
    return TextColumn(const_cast<TOrvEventData&>(record), column);
}

std::u16string_view ColumnName(Columns column);      // as the catalogue calls it, "Int32FieldA"
Columns FilledColumns(const TOrvEventData& record);  // those whose pointer is not null

// The parameters that fill the columns of users in every action, in the order of the columns.
inline constexpr std::u16string_view kUserParameters[] = {u"User1", u"User2", u"ClientHost", u"ClientAccount"};

}  // namespace OrvPLC
