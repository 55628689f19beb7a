// Rows of text in aligned columns.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class Table {
public:
    explicit Table(std::size_t indent = 0) : indent_(indent) {}
    void Heading(std::vector<std::string> cells);  // printed quietly
    void Row(std::vector<std::string> cells);
    void NumbersIn(std::size_t column) { numbers_ = column; }  // aligned at the right
    // Columns that are empty in all rows are left out. On a terminal lines are cut at its width, in their last cell.
    void Write() const;

private:
    std::string Line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths,
                     std::size_t width) const;

    std::size_t indent_;
    std::size_t numbers_ = static_cast<std::size_t>(-1);
    std::vector<std::string> heading_;
    std::vector<std::vector<std::string>> rows_;
};
