#include "qortvctl/terminal/line_input.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace qortvctl {

namespace {

/** In bytes; far more than any answer that a person types. */
constexpr size_t kLongestLine = 65536;

}  // namespace

LineInput::LineInput() : mIsTerminal(tcgetattr(STDIN_FILENO, &mOriginal) == 0) {}

LineInput::~LineInput() {
    setEcho(true);
}

void LineInput::setEcho(bool echo) {
    if (!mIsTerminal || echo == mEcho) return;
    mEcho = echo;
    restoreEcho();
}

void LineInput::restoreEcho() {
    if (!mIsTerminal) return;
    termios wanted = mOriginal;
    if (!mEcho) {
        wanted.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        wanted.c_lflag |= ECHONL;  // the line still ends on the screen
    }
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &wanted);
    mBuffer.clear();
}

std::optional<std::string> LineInput::takeLine() {
    const size_t end = mBuffer.find('\n');
    if (end == std::string::npos && (!mEnded || mBuffer.empty())) return std::nullopt;
    std::string line = mBuffer.substr(0, end);
    mBuffer.erase(0, end == std::string::npos ? end : end + 1);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return line;
}

void LineInput::read() {
    char bytes[4096];
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0) {
        if (errno == EINTR || errno == EAGAIN) return;
        if (errno != EIO) throw std::system_error(errno, std::generic_category(), "standard input");
        mEnded = true;  // the terminal was closed
        return;
    }
    if (count == 0) mEnded = true;
    mBuffer.append(bytes, static_cast<size_t>(count));
    if (mBuffer.size() > kLongestLine && mBuffer.find('\n') == std::string::npos) {
        throw std::runtime_error("standard input has a line without end");
    }
}

}  // namespace qortvctl
