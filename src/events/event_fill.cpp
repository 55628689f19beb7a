#include "events/event_fill.h"

#include <cstddef>

#include "catalogue/value_kind.h"
#include "events/columns.h"
#include "events/event_settings.h"
#include "objects/operation.h"

namespace OrvPLC {

namespace {

// Fills the record column by column. A column is filled when its pointer is not null.
class EventRecordFiller {
public:
    EventRecordFiller(TOrvEventData& record, TOrvAction& action) : record_(record), action_(action) {}

    void FillDeclared()
    {
        const ParameterRange& declared = action_.Entry()->Parameters;
        for (std::size_t position = 0; position < declared.size(); ++position) {
            // The first parameter in declaration order wins a column. One that loses any of its columns is left out
            // whole. Deliberate.
            const Columns columns = declared[position].DbField & kAllColumns;
            if (columns == 0 || (columns & filled_) != 0) continue;
            TOrvParameter* value = action_.Parameters().FindDeclared(position);
            if (value) Fill(declared[position].Type, columns, *value);
        }
    }

    void FillUsers()
    {
        Columns column = First(kUserColumns);
        for (const std::u16string_view name : kUserParameters) {
            FillByName(column, name);
            column <<= 1;
        }
    }

    void FillGeneric()
    {
        for (Columns column = 1; column & kGenericColumns; column <<= 1) FillByName(column, ColumnName(column));
    }

private:
    void Fill(std::uint32_t type, Columns columns, TOrvParameter& value)
    {
        switch (ValueKind{type}) {
        case ValueKind::Guid: PointAtGuid(columns, value); break;
        case ValueKind::EventType:
            PointUnlessEmpty(First(columns & kInt64Columns), value);
            PointUnlessEmpty(First(columns & kStringColumns), value);
            break;
        case ValueKind::MediaChannel:
            PointUnlessEmpty(First(columns & kInt64Columns), value);
            PointUnlessEmpty(First(columns & kStringColumns), value);
            PointUnlessEmpty(First(columns & kInt32Columns), value);
            break;
        case ValueKind::Resource:
            PointUnlessEmpty(First(columns & kStringColumns), value);
            PointAtGuid(columns, value);
            break;
        case ValueKind::None:
        case ValueKind::Boolean:
        case ValueKind::Numeric32Bit:
        case ValueKind::Numeric64Bit:
        case ValueKind::NumericDouble:
        case ValueKind::String:
        case ValueKind::DateTime:
        case ValueKind::Rect:
        case ValueKind::ResultDataSet: Point(First(columns), value); break;
        }
    }

    void FillByName(Columns column, std::u16string_view name)
    {
        if (filled_ & column) return;
        if (TOrvParameter* value = action_.Parameters().Find(name)) Point(column, *value);
    }

    // Points the column at the value, after a conversion in the value where it is of another kind. Where there is no
    // conversion the column stays empty.
    void Point(Columns column, TOrvParameter& value)
    {
        if (column & kInt32Columns) {
            Set(column, record_.int32Field[IndexIn(kInt32Columns, column)], value.Int32InPlace());
        } else if (column & kInt64Columns) {
            Set(column, record_.int64Field[IndexIn(kInt64Columns, column)], value.Int64InPlace());
        } else if (column & kDoubleColumns) {
            Set(column, record_.doubleField[IndexIn(kDoubleColumns, column)], value.DoubleInPlace());
        } else if (column & kDateColumns) {
            Set(column, record_.dateField[IndexIn(kDateColumns, column)], value.DateTimeInPlace());
        } else if (column != 0) {
            const std::u16string_view text = value.MakeWideText();
            TOrvEventText& field = TextColumn(record_, column);
            field.length = text.size();
            Set(column, field.text, Boundary(text.data()));
        }
    }

    // A number of 0 and an empty text leave the column empty, so that a query finds only what is known. The length of
    // the text stays. Deliberate.
    void PointUnlessEmpty(Columns column, TOrvParameter& value)
    {
        Point(column, value);
        if (!(filled_ & column)) return;
        if (column & kInt32Columns) {
            ClearIfZero(column, record_.int32Field[IndexIn(kInt32Columns, column)]);
        } else if (column & kInt64Columns) {
            ClearIfZero(column, record_.int64Field[IndexIn(kInt64Columns, column)]);
        } else {
            ClearIfZero(column, TextColumn(record_, column).text);
        }
    }

    // The two halves of the guid as 64-bit numbers in the first two columns of that sort; with fewer there is no room.
    void PointAtGuid(Columns columns, const TOrvParameter& value)
    {
        const Columns first = First(columns & kInt64Columns);
        const Columns second = First(columns & kInt64Columns & ~first);
        if (second == 0 || (value.Kind() != ORV_KIND_Guid && value.Kind() != ORV_KIND_Resource)) return;
        const auto* halves = reinterpret_cast<const std::int64_t*>(&value.Guid());
        Set(first, record_.int64Field[IndexIn(kInt64Columns, first)], halves);
        Set(second, record_.int64Field[IndexIn(kInt64Columns, second)], halves + 1);
    }

    template <class Value>
    void Set(Columns column, const Value*& field, const Value* pointer)
    {
        field = pointer;
        if (pointer) filled_ |= column;
    }

    template <class Value>
    void ClearIfZero(Columns column, const Value*& field)
    {
        if (*field != 0) return;
        field = nullptr;
        filled_ &= ~column;
    }

    TOrvEventData& record_;
    TOrvAction& action_;
    Columns filled_ = 0;
};

void Clear(TOrvEventData& record)
{
    TOrvEventData empty{};
    empty.size = record.size;
    empty.callerWord = record.callerWord;
    record = empty;
}

}  // namespace

void FillEventRecord(TOrvEventData& record, TOrvAction& action)
{
    Clear(record);
    if (!action.Entry()) return;
    record.code = action.Entry()->Code;
    EventRecordFiller filler(record, action);
    filler.FillDeclared();
    filler.FillUsers();
    if (EventSettings::StoreGenericParameters) filler.FillGeneric();
}

bool ORV_CALL TOrvAction::GetEventData(TOrvEventData* record)
{
    InOperation([&] { FillEventRecord(*record, *this); });
    return false;  // whatever was filled; deliberate, the table of operations promises nothing else
}

}  // namespace OrvPLC
