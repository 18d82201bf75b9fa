#include "television/cam/cam_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace television {
namespace {

int readAll(int file, size_t most, std::string& text) {
    struct stat status;
    if (fstat(file, &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return EINVAL;
    text.resize(most + 1);
    size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t got = read(file, &text[filled], text.size() - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return errno;
        if (got == 0) break;
        filled += static_cast<size_t>(got);
    }
    text.resize(filled);
    return filled > most ? EFBIG : 0;
}

}  // namespace

int readCamFile(const std::string& path, size_t most, std::string& text) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return errno;
    const int error = readAll(file, most, text);
    close(file);
    return error;
}

}  // namespace television
