#include "qortvctl/terminal/table.h"

#include <algorithm>

#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

void Table::add(std::vector<std::string> row) {
    row.resize(mColumns.size());
    for (auto& text : row) text = withoutControls(text);
    mRows.push_back(std::move(row));
}

void Table::print() const {
    std::vector<std::string> headings;
    std::vector<size_t> widths;
    for (const auto& column : mColumns) {
        headings.push_back(column.heading);
        widths.push_back(displayWidth(column.heading));
    }
    for (const auto& row : mRows) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    }
    printRow(headings, widths);
    for (const auto& row : mRows) printRow(row, widths);
}

void Table::printRow(const std::vector<std::string>& row, const std::vector<size_t>& widths) const {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
        const std::string padding(widths[i] - displayWidth(row[i]), ' ');
        if (i > 0) line += "  ";
        line += mColumns[i].align == Align::kRight ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    printLine(line);
}

}  // namespace qortvctl
