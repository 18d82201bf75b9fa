// Unix stream sockets by path, with time limits in milliseconds (0: none).
#pragma once

#include <sys/socket.h>

#include <string>

namespace android::hardware::transport {

void setReceiveTimeout(int socket, int milliseconds);
void setSendTimeout(int socket, int milliseconds);

// Each returns a socket that the caller closes, or -errno. A listening socket does not block;
// timeoutMilliseconds limits the connecting and each later read and write.
int listenAt(const std::string& path);
int connectTo(const std::string& path, int timeoutMilliseconds);

// Send or receive exactly `size` bytes, as greetings need. Return false if that fails before the
// end or takes longer than the socket's time limit.
bool sendExactly(int socket, const void* bytes, size_t size);
bool receiveExactly(int socket, void* bytes, size_t size);

}  // namespace android::hardware::transport
