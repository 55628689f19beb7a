// The columns of an event record, and a record that owns what it points at.
#pragma once

#include <OrvActions.hpp>

#include <array>
#include <cstdint>
#include <string>

#include "sqlite.h"

enum class ColumnSort { Int32, Int64, Double, Date, String };

struct EventColumn {
    const char* name;   // as the catalogue names it, and the database too
    std::uint32_t bit;  // ORV_COLUMN_...
    ColumnSort sort;
    std::size_t index;  // in the field of its sort; users follow the strings
};

constexpr std::size_t kColumnCount = 20;
extern const std::array<EventColumn, kColumnCount> kEventColumns;

bool IsFilled(const TOrvEventData& record, const EventColumn& column);
void BindColumn(Statement& statement, int parameter, const TOrvEventData& record, const EventColumn& column);
std::string ColumnValue(const TOrvEventData& record, const EventColumn& column);  // for programs; dates as in JSON
std::string ColumnText(const TOrvEventData& record, const EventColumn& column);  // for people

// A row of the database: Id, Stored, Name, Code, the columns, Image.
class StoredEvent {
public:
    // Takes the row that the statement stands at.
    explicit StoredEvent(const Statement& row);
    StoredEvent(const StoredEvent&) = delete;
    StoredEvent& operator=(const StoredEvent&) = delete;

    static std::string ColumnList();  // of the select that gives such rows

    std::int64_t id = 0;
    std::string stored;
    std::string name;
    TOrvEventData record{};  // points into this object

private:
    void Take(const Statement& row, int column, std::size_t position);

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
