// Rows on their way to a PostgreSQL server, in the binary format of its copy, and back.
#pragma once

#include <string>

#include "event_store.h"
#include "postgres.h"

namespace Postgres {

// The columns of a copied row in their order, as a list for SQL.
std::string CopiedColumns();

// Data of a copy: rows between a head and an end.
class CopyData {
public:
    CopyData() { Clear(); }

    void Clear();
    void Add(const NewEvent& event, std::int32_t recorder, std::int64_t sequence);
    void End();
    const std::string& data() const { return data_; }

private:
    std::string data_;
};

// A row of a select of StoredEvent::ColumnList.
class Row final : public EventRow {
public:
    Row(const Result& result, int row) : result_(result), row_(row) {}

    bool IsNull(int column) const override { return result_.IsNull(row_, column); }
    std::int64_t Integer(int column) const override { return result_.Integer(row_, column); }
    double Real(int column) const override { return result_.Real(row_, column); }
    std::string Text(int column) const override { return std::string(result_.Bytes(row_, column)); }
    std::u16string Wide(int column) const override { return orv::ToUtf16(result_.Bytes(row_, column)); }
    std::string Bytes(int column) const override { return Text(column); }

private:
    const Result& result_;
    int row_;
};

}  // namespace Postgres
