#include "table.h"

#include <algorithm>
#include <utility>

#include "console.h"
#include "text.h"

void Table::Heading(std::vector<std::string> cells)
{
    heading_ = std::move(cells);
}

void Table::Row(std::vector<std::string> cells)
{
    rows_.push_back(std::move(cells));
}

void Table::Write() const
{
    const std::size_t width = OutputWidth();
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows_) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(row[i]));
    }
    for (std::size_t i = 0; i < std::min(widths.size(), heading_.size()); ++i) {
        if (widths[i] > 0) widths[i] = std::max(widths[i], DisplayWidth(heading_[i]));
    }
    if (!heading_.empty() && !rows_.empty()) Print(Painted(Tone::Quiet, Line(heading_, widths, width)) + "\n");
    for (const std::vector<std::string>& row : rows_) Print(Line(row, widths, width) + "\n");
}

std::string Table::Line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths,
                        std::size_t width) const
{
    std::string line(indent_, ' ');
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (widths[i] == 0) continue;
        const bool last = i + 1 == cells.size();
        const std::size_t used = DisplayWidth(line);
        if (i == numbers_) {
            line += std::string(widths[i] - DisplayWidth(cells[i]), ' ') + cells[i] + "  ";
        } else if (last) {
            line += width > used + 10 ? Shortened(cells[i], width - used) : cells[i];
        } else {
            line += Padded(cells[i], widths[i]) + "  ";
        }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}
