// Who may talk to this process.
#pragma once

#include <sys/types.h>

namespace android::hardware::transport {

struct Peer {
    pid_t pid = -1;
    uid_t uid = static_cast<uid_t>(-1);
};

// The process at the other end of a Unix socket, as the kernel knows it. False if the kernel does
// not say.
bool peerOf(int socket, Peer* peer);

// Whether `peer` may talk to a process of user `self`: the same user, root, or one of the numbers
// in `allowed` (separated by commas or spaces; null: none).
bool isTrusted(uid_t peer, uid_t self, const char* allowed);

// The same for this process and its QORTV_ALLOW_UIDS.
bool isTrusted(const Peer& peer);

// Lets a test act as another user without being root. (uid_t)-1: the real one again.
void setOwnUidForTest(uid_t uid);

}  // namespace android::hardware::transport
