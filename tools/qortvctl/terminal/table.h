/** Tables on standard output. */
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace qortvctl {

/** A table whose columns are aligned by display width. */
class Table {
  public:
    enum class Align { kLeft, kRight };
    struct Column {
        std::string heading;
        Align align = Align::kLeft;
    };

    explicit Table(std::vector<Column> columns) : mColumns(std::move(columns)) {}

    /** Adds a row with one text per column. Control characters are shown as '?'. */
    void add(std::vector<std::string> row);

    /**
     * Prints headings and rows; no blanks at the ends of lines.
     *
     * @throws as printLine()
     */
    void print() const;

  private:
    void printRow(const std::vector<std::string>& row, const std::vector<size_t>& widths) const;

    std::vector<Column> mColumns;
    std::vector<std::vector<std::string>> mRows;
};

}  // namespace qortvctl
