#include "events/columns.h"

#include <iterator>

namespace OrvPLC {

namespace {

// In the order of the bits.
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

bool IsFilled(const void* pointer)
{
    return pointer != nullptr;
}

bool IsFilled(const TOrvEventText& text)
{
    return text.text != nullptr;
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
        VisitColumn(record, column, [&](const auto& field) {
            if (IsFilled(field)) filled |= column;
        });
    }
    return filled;
}

}  // namespace OrvPLC
