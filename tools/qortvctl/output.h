/** Text for terminals and pipes: aligned tables, letter case, and lines that notice a closed pipe.
 */
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace qortvctl {

/** The reader of our output is gone (`qortvctl … | head`): time to end, without a word. */
struct OutputClosed {};

/**
 * Prepares standard output: written line by line, write errors reported to us instead of a signal,
 * and characters measured as UTF-8 whatever the user's locale. Call first in main().
 */
void prepareOutput();

/**
 * Writes a line to standard output. Any thread.
 *
 * @throws OutputClosed when the reader is gone
 * @throws std::runtime_error for any other failure, such as a full disk
 */
void printLine(const std::string& line);

/** Columns that a UTF-8 text takes on a terminal: 2 for a wide character, 0 for a combining one. */
size_t displayWidth(const std::string& text);

/** `text` (UTF-8) with control characters shown as '?': safe for a terminal. */
std::string withoutControls(const std::string& text);

/** `text` (UTF-8) in lower case, for comparing as people do. */
std::string lowerCase(const std::string& text);

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

    /** Prints headings and rows; no blanks at the ends of lines. */
    void print() const;

  private:
    void printRow(const std::vector<std::string>& row, const std::vector<size_t>& widths) const;

    std::vector<Column> mColumns;
    std::vector<std::vector<std::string>> mRows;
};

}  // namespace qortvctl
