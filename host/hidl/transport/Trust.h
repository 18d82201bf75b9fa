// Which processes this one speaks to.
#pragma once

#include <sys/types.h>

namespace android::hardware::transport {

// The process at the other end of a connection.
struct Peer {
    pid_t pid = -1;
    uid_t uid = static_cast<uid_t>(-1);
};

// Asks the kernel for the process at the other end of a Unix socket. Returns false if it does not
// know.
bool peerOf(int socket, Peer* peer);

// Whether a process of user `peer` may speak to one of user `self`: it may be the same user, root,
// or one of the numbers in `allowed` (separated by commas or spaces; null: none).
bool isTrusted(uid_t peer, uid_t self, const char* allowed);

// The same for this process and its QORTV_ALLOW_UIDS.
bool isTrusted(const Peer& peer);

// Makes isTrusted(Peer) take this process for one of user `uid`; (uid_t)-1 undoes that. For tests.
void setOwnUidForTest(uid_t uid);

}  // namespace android::hardware::transport
