#include "ion/ion.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

int ion_open() {
    return open("/dev/null", O_RDWR | O_CLOEXEC);
}

int ion_close(int fd) {
    return close(fd) == 0 ? 0 : -errno;
}

int ion_import(int fd, int share_fd, ion_user_handle_t* handle) {
    struct stat buffer = {};
    if (fcntl(fd, F_GETFD) < 0 || fstat(share_fd, &buffer) != 0) return -errno;
    if (!S_ISREG(buffer.st_mode)) return -EINVAL;
    *handle = share_fd;
    return 0;
}

int ion_free(int, ion_user_handle_t) {
    return 0;
}

int ion_is_legacy(int) {
    return 0;
}
