// Actions as rows of a table for spreadsheets: name, code, and a column for each parameter that occurs.
#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "action_view.h"

constexpr const char* kCsv = "csv";
bool IsCsv(const std::string& form);

// A line of cells, with its end.
std::string CsvLine(const std::vector<std::string>& cells);

// The header is known only behind the last row; until then the rows wait, when they are many in a temporary file.
class CsvTable {
public:
    // The columns before those of the parameters.
    explicit CsvTable(std::vector<std::string> heading) : heading_(std::move(heading)) {}

    void Add(std::vector<std::string> cells, const Action& action);  // of an empty action the cells alone
    void Write();  // the header, then the rows as they came

private:
    std::size_t ColumnOf(const std::u16string& name);

    std::map<std::string, std::size_t> columns_;  // by lower-cased name
    std::vector<std::string> heading_;
    void AddCell(std::size_t column, const std::string& text);
    void PutAside();
    void WriteRow(std::FILE* file);
    std::string Taken(std::FILE* file, std::size_t size);

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    // A row is the number of its filled cells, and each the number of its column, its size and its text.
    std::string rows_;
    std::size_t taken_ = 0;    // of rows_, when they are written
    std::uint32_t cells_ = 0;  // of the row that is added
    std::uint64_t rowsAside_ = 0;
    std::uint64_t rowsHere_ = 0;
    std::unique_ptr<std::FILE, Close> aside_;
    bool keeps_ = false;  // no file could be made or filled
};
