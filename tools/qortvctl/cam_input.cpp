#include "cam_input.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace qortvctl {

namespace {

/** Far more than any answer to a CAM. */
constexpr size_t kLongestLine = 65536;

}  // namespace

CamInput::CamInput() : mIsTerminal(tcgetattr(STDIN_FILENO, &mFound) == 0) {}

CamInput::~CamInput() {
    setBlind(false);
}

void CamInput::setBlind(bool blind) {
    if (!mIsTerminal || blind == mBlind) return;
    mBlind = blind;
    restoreBlindness();
}

void CamInput::restoreBlindness() {
    if (!mIsTerminal) return;
    termios wanted = mFound;
    if (mBlind) {
        wanted.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        wanted.c_lflag |= ECHONL;  // the line still ends on the screen
    }
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &wanted);
    mRead.clear();
}

std::optional<std::string> CamInput::takeLine() {
    const size_t end = mRead.find('\n');
    if (end == std::string::npos && (!mEnded || mRead.empty())) return std::nullopt;
    std::string line = mRead.substr(0, end);
    mRead.erase(0, end == std::string::npos ? end : end + 1);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

void CamInput::read() {
    char buffer[4096];
    const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (count < 0) {
        if (errno == EINTR || errno == EAGAIN) return;
        if (errno != EIO) throw std::system_error(errno, std::generic_category(), "standard input");
        mEnded = true;  // a terminal that is gone
        return;
    }
    if (count == 0) mEnded = true;
    mRead.append(buffer, static_cast<size_t>(count));
    if (mRead.size() > kLongestLine && mRead.find('\n') == std::string::npos) {
        throw std::runtime_error("standard input has a line without end");
    }
}

}  // namespace qortvctl
