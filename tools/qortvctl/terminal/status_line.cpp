#include "qortvctl/terminal/status_line.h"

#include <unistd.h>

#include <cstdio>

namespace qortvctl {

StatusLine::StatusLine() : mTerminal(isatty(STDERR_FILENO) == 1) {}

StatusLine::~StatusLine() {
    clear();
}

void StatusLine::show(const std::string& text) {
    std::fputs(("\r\033[K" + text).c_str(), stderr);
    std::fflush(stderr);
    mShown = true;
}

void StatusLine::clear() {
    if (mShown) std::fputs("\r\033[K", stderr);
    mShown = false;
}

}  // namespace qortvctl
