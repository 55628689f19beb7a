// The columns of an event record, and a record that owns what it points at.
#pragma once

#include <OrvActions.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

enum class ColumnSort { Int32, Int64, Double, Date, String };

struct EventColumn {
    const char* name;   // as the catalogue names it, and the database too
    std::uint32_t bit;  // ORV_COLUMN_...
    ColumnSort sort;
    std::size_t index;  // in the field of its sort; users follow the strings
};

constexpr std::size_t kColumnCount = 20;
extern const std::array<EventColumn, kColumnCount> kEventColumns;

// What people ask for, so that stores have an index of it: a channel by its number or id, and texts.
bool IsAskedFor(const EventColumn& column);

bool IsFilled(const TOrvEventData& record, const EventColumn& column);
std::string ColumnValue(const TOrvEventData& record, const EventColumn& column);  // for programs; dates as in JSON
std::string ColumnText(const TOrvEventData& record, const EventColumn& column);  // for people

TOrvEventText TextOf(const TOrvEventData& record, const EventColumn& column);

// Calls back with the value of a column: std::int32_t, std::int64_t (dates too), double, std::u16string_view, which is
// borrowed from the record, or nullptr.
template <class Visitor>
void VisitColumn(const TOrvEventData& record, const EventColumn& column, Visitor& visit)
{
    if (!IsFilled(record, column)) return visit(nullptr);
    switch (column.sort) {
    case ColumnSort::Int32: return visit(*record.int32Field[column.index]);
    case ColumnSort::Int64: return visit(*record.int64Field[column.index]);
    case ColumnSort::Double: return visit(*record.doubleField[column.index]);
    case ColumnSort::Date: return visit(static_cast<std::int64_t>(record.dateField[column.index]->value));
    case ColumnSort::String: break;
    }
    const TOrvEventText text = TextOf(record, column);
    visit(std::u16string_view(reinterpret_cast<const char16_t*>(text.text), static_cast<std::size_t>(text.length)));
}

// A row that a database answers with; its values are counted from 0.
class EventRow {
public:
    virtual ~EventRow() = default;
    virtual bool IsNull(int column) const = 0;
    virtual std::int64_t Integer(int column) const = 0;
    virtual double Real(int column) const = 0;
    virtual std::string Text(int column) const = 0;
    virtual std::u16string Wide(int column) const = 0;
    virtual std::string Bytes(int column) const = 0;
};

// An event of a store: Id, Stored, Name, Code, the columns, Image.
class StoredEvent {
public:
    explicit StoredEvent(const EventRow& row);
    StoredEvent(const StoredEvent&) = delete;
    StoredEvent& operator=(const StoredEvent&) = delete;

    // Of the select that gives such rows; `stored` gives the time as text.
    static std::string ColumnList(const std::string& stored = "Stored");

    std::int64_t id = 0;
    std::string stored;
    std::string name;
    TOrvEventData record{};  // points into this object

private:
    void Take(const EventRow& row, int column, std::size_t position);

    struct Value {
        std::int32_t small;
        std::int64_t large;
        double real;
        TUlmoDateTime date;
        std::u16string text;
    };
    std::array<Value, kColumnCount> values_{};
    std::string image_;
};
