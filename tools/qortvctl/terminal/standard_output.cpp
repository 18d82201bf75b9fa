#include "qortvctl/terminal/standard_output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace qortvctl {

void prepareOutput() {
    std::signal(SIGPIPE, SIG_IGN);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
}

void printLine(const std::string& line) {
    if (std::fputs((line + '\n').c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return;
    if (errno == EPIPE) throw OutputClosed{};
    throw std::runtime_error("cannot write: " + std::generic_category().message(errno));
}

}  // namespace qortvctl
