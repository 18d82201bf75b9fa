#include "qortvctl/terminal/progress_bar.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

// All in columns.
constexpr size_t kShortestBar = 5;
constexpr size_t kLongestBar = 40;
constexpr size_t kDefaultColumns = 80;  // of a terminal that does not tell its size

/** Asked anew for every line, because a terminal can be resized. */
size_t terminalColumns() {
    winsize size = {};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : kDefaultColumns;
}

}  // namespace

std::string progressLine(const std::string& title, unsigned percent, const std::string& text,
                         size_t columns) {
    percent = std::min(percent, 100U);
    const std::string behind = fmt::format("{:3} %  {}", percent, withoutControls(text));
    const size_t taken = displayWidth(title) + displayWidth(behind) + sizeof " [] " - 1;
    if (columns < taken + kShortestBar) return cutToWidth(title + " " + behind, columns);
    const size_t length = std::min(columns - taken, kLongestBar);
    const size_t filled = length * percent / 100;
    return title + " [" + std::string(filled, '#') + std::string(length - filled, '.') + "] " +
           behind;
}

bool ProgressBar::possible() {
    return isatty(STDOUT_FILENO) == 1;
}

ProgressBar::~ProgressBar() {
    clear();
}

void ProgressBar::draw(unsigned percent, const std::string& text) {
    // The last column stays free: some terminals begin a new line when it is written.
    const std::string line = progressLine(mTitle, percent, text, terminalColumns() - 1);
    std::fputs(("\r" + line + "\x1b[K").c_str(), stdout);
    std::fflush(stdout);
    mDrawn = true;
}

void ProgressBar::clear() {
    if (!mDrawn) return;
    std::fputs("\r\x1b[K", stdout);
    std::fflush(stdout);
    mDrawn = false;
}

}  // namespace qortvctl
