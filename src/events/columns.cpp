#include "events/columns.h"

#include <iterator>

namespace OrvPLC {

namespace {

constexpr std::u16string_view kNames[] = {u"Int32FieldA",
                                          u"Int32FieldB",
                                          u"Int32FieldC",
                                          u"Int32FieldD",
                                          u"Int64FieldA",
                                          u"Int64FieldB",
                                          u"Int64FieldC",
                                          u"Int64FieldD",
                                          u"StringFieldA",
                                          u"StringFieldB",
                                          u"StringFieldC",
                                          u"StringFieldD",
                                          u"DoubleFieldA",
                                          u"DoubleFieldB",
                                          u"DateFieldA",
                                          u"DateFieldB",
                                          u"StringFieldFirstUser",
                                          u"StringFieldSecondUser",
                                          u"StringFieldWindowsHost",
                                          u"StringFieldWindowsUser"};
static_assert(std::size(kNames) == std::size_t{std::popcount(kAllColumns)});

const void* Pointer(const TOrvEventData& record, Columns column)
{
    if (column & kInt32Columns) return record.int32Field[IndexIn(kInt32Columns, column)];
    if (column & kInt64Columns) return record.int64Field[IndexIn(kInt64Columns, column)];
    if (column & kDoubleColumns) return record.doubleField[IndexIn(kDoubleColumns, column)];
    if (column & kDateColumns) return record.dateField[IndexIn(kDateColumns, column)];
    return TextColumn(record, column).text;
}

}  // namespace

std::u16string_view ColumnName(Columns column)
{
    return kNames[std::countr_zero(column)];
}

Columns FilledColumns(const TOrvEventData& record)
{
    Columns filled = 0;
    for (Columns column = 1; column & kAllColumns; column <<= 1) {
        if (Pointer(record, column)) filled |= column;
    }
    return filled;
}

}  // namespace OrvPLC
