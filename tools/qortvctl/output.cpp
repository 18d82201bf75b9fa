#include "output.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <system_error>

namespace qortvctl {

namespace {

/** Calls `each` with every character of a UTF-8 text; a stray byte counts as U+FFFD. */
template <typename Each>
void forEachCharacter(const std::string& text, Each each) {
    std::mbstate_t state{};
    for (size_t at = 0; at < text.size();) {
        wchar_t c = 0;
        const size_t length = std::mbrtowc(&c, text.data() + at, text.size() - at, &state);
        if (length == static_cast<size_t>(-1) || length == static_cast<size_t>(-2)) {
            state = {};
            each(L'\xFFFD');
            ++at;
        } else {
            each(c);
            at += length == 0 ? 1 : length;
        }
    }
}

void appendCharacter(std::string& text, wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    const size_t length = std::wcrtomb(bytes, c, &state);
    if (length != static_cast<size_t>(-1)) text.append(bytes, length);
}

}  // namespace

void prepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::setlocale(LC_CTYPE, "C.UTF-8");
}

void printLine(const std::string& line) {
    if (std::fputs((line + '\n').c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return;
    if (errno == EPIPE) throw OutputClosed{};
    throw std::runtime_error("cannot write: " + std::generic_category().message(errno));
}

size_t displayWidth(const std::string& text) {
    size_t width = 0;
    forEachCharacter(text, [&](wchar_t c) {
        const int columns = wcwidth(c);
        if (columns > 0) width += static_cast<size_t>(columns);
    });
    return width;
}

std::string withoutControls(const std::string& text) {
    std::string shown;
    forEachCharacter(text, [&](wchar_t c) { appendCharacter(shown, std::iswcntrl(c) ? L'?' : c); });
    return shown;
}

std::string lowerCase(const std::string& text) {
    std::string lower;
    forEachCharacter(text, [&](wchar_t c) {
        appendCharacter(lower, static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c))));
    });
    return lower;
}

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
