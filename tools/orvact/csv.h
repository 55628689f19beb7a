// Actions as rows of a table for spreadsheets: name, code, and a column for each parameter that occurs.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "action_view.h"

constexpr const char* kCsv = "csv";
bool IsCsv(const std::string& form);

class CsvTable {
public:
    void Add(const Action& action);
    void Write() const;  // the header, then the rows as they came

private:
    std::size_t ColumnOf(const std::u16string& name);

    std::map<std::string, std::size_t> columns_;  // by lower-cased name
    std::vector<std::string> heading_ = {"name", "code"};
    std::vector<std::vector<std::pair<std::size_t, std::string>>> rows_;  // filled cells only
};
