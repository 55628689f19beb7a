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
        if (column == 0) return;
        VisitColumn(record_, column, [&](auto& field) { PointField(column, field, value); });
    }

    void PointField(Columns column, const std::int32_t*& field, TOrvParameter& value)
    {
        Set(column, field, value.Int32InPlace());
    }
    void PointField(Columns column, const std::int64_t*& field, TOrvParameter& value)
    {
        Set(column, field, value.Int64InPlace());
    }
    void PointField(Columns column, const double*& field, TOrvParameter& value)
    {
        Set(column, field, value.DoubleInPlace());
    }
    void PointField(Columns column, const TUlmoDateTime*& field, TOrvParameter& value)
    {
        Set(column, field, value.DateTimeInPlace());
    }
    void PointField(Columns column, TOrvEventText& field, TOrvParameter& value)
    {
        const std::u16string_view text = value.MakeWideText();
        field.length = text.size();
        Set(column, field.text, Boundary(text.data()));
    }

    // A number of 0 and an empty text leave the column empty, so that a query finds only what is known. The length of
    // the text stays. Deliberate.
    void PointUnlessEmpty(Columns column, TOrvParameter& value)
    {
        Point(column, value);
        if (filled_ & column) VisitColumn(record_, column, [&](auto& field) { ClearIfEmpty(column, field); });
    }

    // The two halves of the guid as 64-bit numbers in the first two columns of that sort; with fewer there is no room.
    void PointAtGuid(Columns columns, const TOrvParameter& value)
    {
        const Columns first = First(columns & kInt64Columns);
        const Columns second = First(columns & kInt64Columns & ~first);
        if (second == 0 || (value.Kind() != ORV_KIND_Guid && value.Kind() != ORV_KIND_Resource)) return;
        // Aligned: in a value the guid shares its room with the 64-bit numbers.
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
    void ClearIfEmpty(Columns column, const Value*& field)
    {
        if (*field != Value{}) return;
        field = nullptr;
        filled_ &= ~column;
    }
    void ClearIfEmpty(Columns column, TOrvEventText& field) { ClearIfEmpty(column, field.text); }
    void ClearIfEmpty(Columns, const TUlmoDateTime*&) {}  // no value with a name or an id has a date

    TOrvEventData& record_;
    TOrvAction& action_;
    Columns filled_ = 0;
};

void Clear(TOrvEventData& record)
{
    TOrvEventData empty{};
    // The caller's own fields stay.
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
    // Last, so that a parameter named like a column never takes it from a declared one.
    if (EventSettings::StoreGenericParameters) filler.FillGeneric();
}

bool ORV_CALL TOrvAction::GetEventData(TOrvEventData* record)
{
    InOperation([&] { FillEventRecord(*record, *this); });
    return false;  // whatever was filled; deliberate, the table of operations promises nothing else
}

}  // namespace OrvPLC
