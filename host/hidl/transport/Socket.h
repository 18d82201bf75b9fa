// Unix stream sockets by name, with time limits in milliseconds (0: none).
#pragma once

#include <sys/socket.h>

#include <string>

namespace android::hardware::transport {

void setReceiveTimeout(int socket, int milliseconds);
void setSendTimeout(int socket, int milliseconds);

// Each returns a socket that the caller closes, or -errno.
int listenAt(const std::string& path);
int connectTo(const std::string& path, int timeoutMilliseconds);

// Sends or receives exactly `size` bytes of a greeting. False if the peer does not.
bool sendExactly(int socket, const void* bytes, size_t size);
bool receiveExactly(int socket, void* bytes, size_t size);

}  // namespace android::hardware::transport
