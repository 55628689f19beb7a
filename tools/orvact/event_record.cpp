#include "event_record.h"

#include "action_view.h"
#include "iso_time.h"
#include "text.h"

const std::array<EventColumn, kColumnCount> kEventColumns = {{
    {"Int32FieldA", ORV_COLUMN_Int32_A, ColumnSort::Int32, 0},
    {"Int32FieldB", ORV_COLUMN_Int32_B, ColumnSort::Int32, 1},
    {"Int32FieldC", ORV_COLUMN_Int32_C, ColumnSort::Int32, 2},
    {"Int32FieldD", ORV_COLUMN_Int32_D, ColumnSort::Int32, 3},
    {"Int64FieldA", ORV_COLUMN_Int64_A, ColumnSort::Int64, 0},
    {"Int64FieldB", ORV_COLUMN_Int64_B, ColumnSort::Int64, 1},
    {"Int64FieldC", ORV_COLUMN_Int64_C, ColumnSort::Int64, 2},
    {"Int64FieldD", ORV_COLUMN_Int64_D, ColumnSort::Int64, 3},
    {"DoubleFieldA", ORV_COLUMN_Double_A, ColumnSort::Double, 0},
    {"DoubleFieldB", ORV_COLUMN_Double_B, ColumnSort::Double, 1},
    {"DateFieldA", ORV_COLUMN_Time_A, ColumnSort::Date, 0},
    {"DateFieldB", ORV_COLUMN_Time_B, ColumnSort::Date, 1},
    {"StringFieldA", ORV_COLUMN_String_A, ColumnSort::String, 0},
    {"StringFieldB", ORV_COLUMN_String_B, ColumnSort::String, 1},
    {"StringFieldC", ORV_COLUMN_String_C, ColumnSort::String, 2},
    {"StringFieldD", ORV_COLUMN_String_D, ColumnSort::String, 3},
    {"StringFieldFirstUser", ORV_COLUMN_FirstUser, ColumnSort::String, 4},
    {"StringFieldSecondUser", ORV_COLUMN_SecondUser, ColumnSort::String, 5},
    {"StringFieldWindowsHost", ORV_COLUMN_WindowsHost, ColumnSort::String, 6},
    {"StringFieldWindowsUser", ORV_COLUMN_WindowsUser, ColumnSort::String, 7},
}};

namespace {

// Texts of users follow the four others.
const TOrvEventText& TextField(const TOrvEventData& record, std::size_t index)
{
    return index < 4 ? record.stringField[index] : record.userField[index - 4];
}

TOrvEventText& TextField(TOrvEventData& record, std::size_t index)
{
    return index < 4 ? record.stringField[index] : record.userField[index - 4];
}

}  // namespace

bool IsAskedFor(const EventColumn& column)
{
    return column.bit == ORV_COLUMN_Int32_A || column.bit == ORV_COLUMN_Int64_A || column.sort == ColumnSort::String;
}

bool IsFilled(const TOrvEventData& record, const EventColumn& column)
{
    switch (column.sort) {
    case ColumnSort::Int32: return record.int32Field[column.index] != nullptr;
    case ColumnSort::Int64: return record.int64Field[column.index] != nullptr;
    case ColumnSort::Double: return record.doubleField[column.index] != nullptr;
    case ColumnSort::Date: return record.dateField[column.index] != nullptr;
    case ColumnSort::String: break;
    }
    return TextField(record, column.index).text != nullptr;
}

TOrvEventText TextOf(const TOrvEventData& record, const EventColumn& column)
{
    return TextField(record, column.index);
}

std::string ColumnValue(const TOrvEventData& record, const EventColumn& column)
{
    switch (column.sort) {
    case ColumnSort::Int32: return std::to_string(*record.int32Field[column.index]);
    case ColumnSort::Int64: return std::to_string(*record.int64Field[column.index]);
    case ColumnSort::Double: return RealText(*record.doubleField[column.index]);
    case ColumnSort::Date: return IsoText(*record.dateField[column.index]);
    case ColumnSort::String: break;
    }
    const TOrvEventText& field = TextField(record, column.index);
    return orv::ToUtf8({reinterpret_cast<const char16_t*>(field.text), static_cast<std::size_t>(field.length)});
}

std::string ColumnText(const TOrvEventData& record, const EventColumn& column)
{
    if (column.sort == ColumnSort::Date) return DateText(*record.dateField[column.index]);
    const std::string value = ColumnValue(record, column);
    return column.sort == ColumnSort::String ? "\"" + Visible(value) + "\"" : value;
}

std::string StoredEvent::ColumnList(const std::string& stored)
{
    std::string list = "Id, " + stored + ", Name, Code";
    for (const EventColumn& column : kEventColumns) list += std::string(", ") + column.name;
    return list + ", Image";
}

StoredEvent::StoredEvent(const EventRow& row) : id(row.Integer(0)), stored(row.Text(1)), name(row.Text(2))
{
    constexpr int kFirst = 4;
    record.size = sizeof record;
    record.code = static_cast<std::uint32_t>(row.Integer(3));
    for (std::size_t i = 0; i < kColumnCount; ++i) Take(row, kFirst + static_cast<int>(i), i);
    image_ = row.Bytes(kFirst + static_cast<int>(kColumnCount));
    record.imageSize = image_.size();
    record.image = image_.empty() ? nullptr : image_.data();
}

void StoredEvent::Take(const EventRow& row, int column, std::size_t position)
{
    if (row.IsNull(column)) return;
    const EventColumn& entry = kEventColumns[position];
    Value& value = values_[position];
    switch (entry.sort) {
    case ColumnSort::Int32:
        value.small = static_cast<std::int32_t>(row.Integer(column));
        record.int32Field[entry.index] = &value.small;
        return;
    case ColumnSort::Int64:
        value.large = row.Integer(column);
        record.int64Field[entry.index] = &value.large;
        return;
    case ColumnSort::Double:
        value.real = row.Real(column);
        record.doubleField[entry.index] = &value.real;
        return;
    case ColumnSort::Date:
        value.date.value = static_cast<std::uint64_t>(row.Integer(column));
        record.dateField[entry.index] = &value.date;
        return;
    case ColumnSort::String: break;
    }
    // Kept in this object, as the record only points.
    value.text = row.Wide(column);
    TextField(record, entry.index) = {value.text.size(), reinterpret_cast<const OrvWChar*>(value.text.c_str())};
}
