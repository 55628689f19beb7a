// Actions as rows of a table for spreadsheets: name, code, and a column for each parameter that occurs.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "action_view.h"

constexpr const char* kCsv = "csv";
bool IsCsv(const std::string& form);

// A line of cells, with its end.
std::string CsvLine(const std::vector<std::string>& cells);

class CsvTable {
public:
    // The columns before those of the parameters.
    explicit CsvTable(std::vector<std::string> heading) : heading_(std::move(heading)) {}

    void Add(std::vector<std::string> cells, const Action& action);  // of an empty action the cells alone
    void Write() const;  // the header, then the rows as they came

private:
    std::size_t ColumnOf(const std::u16string& name);

    std::map<std::string, std::size_t> columns_;  // by lower-cased name
    std::vector<std::string> heading_;
    std::vector<std::vector<std::pair<std::size_t, std::string>>> rows_;  // filled cells only
};
