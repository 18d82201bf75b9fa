#include <transport/Socket.h>

#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace android::hardware::transport {

static void setTimeout(int socket, int option, int milliseconds) {
    const timeval value{milliseconds / 1000, (milliseconds % 1000) * 1000};
    setsockopt(socket, SOL_SOCKET, option, &value, sizeof(value));
}

void setReceiveTimeout(int socket, int milliseconds) {
    setTimeout(socket, SO_RCVTIMEO, milliseconds);
}

void setSendTimeout(int socket, int milliseconds) {
    setTimeout(socket, SO_SNDTIMEO, milliseconds);
}

static bool addressOf(const std::string& path, sockaddr_un* address) {
    memset(address, 0, sizeof(*address));
    address->sun_family = AF_UNIX;
    if (path.size() >= sizeof(address->sun_path)) return false;
    memcpy(address->sun_path, path.data(), path.size());
    return true;
}

int listenAt(const std::string& path) {
    sockaddr_un address;
    if (!addressOf(path, &address)) return -ENAMETOOLONG;
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0) return -errno;
    if (bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
        listen(fd, SOMAXCONN) != 0) {
        const int error = errno;
        close(fd);
        return -error;
    }
    return fd;
}

int connectTo(const std::string& path, int timeoutMilliseconds) {
    sockaddr_un address;
    if (!addressOf(path, &address)) return -ENAMETOOLONG;
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0) return -errno;
    setSendTimeout(fd, timeoutMilliseconds);
    setReceiveTimeout(fd, timeoutMilliseconds);
    while (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0) {
        if (errno == EINTR) continue;
        const int error = errno;
        close(fd);
        return -error;
    }
    return fd;
}

bool sendExactly(int socket, const void* bytes, size_t size) {
    const auto* at = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t sent = send(socket, at, size, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        at += sent;
        size -= static_cast<size_t>(sent);
    }
    return true;
}

bool receiveExactly(int socket, void* bytes, size_t size) {
    auto* at = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t got = recv(socket, at, size, 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        at += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

}  // namespace android::hardware::transport
