#include "hardware_legacy/power.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

// The kernel's own wake locks, where it has them and lets this user write; elsewhere a set that
// cannot sleep has nothing to hold awake and both calls report that.
int writeName(const char* file, const char* id) {
    const int fd = open(file, O_WRONLY | O_CLOEXEC);
    if (fd < 0) return -errno;
    const ssize_t written = write(fd, id, strlen(id));
    const int result = written < 0 ? -errno : static_cast<int>(written);
    close(fd);
    return result;
}

}  // namespace

int acquire_wake_lock(int, const char* id) { return writeName("/sys/power/wake_lock", id); }

int release_wake_lock(const char* id) { return writeName("/sys/power/wake_unlock", id); }
