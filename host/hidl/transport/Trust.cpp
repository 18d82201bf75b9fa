#include <transport/Trust.h>

#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace android::hardware::transport {

static std::atomic<uid_t> sTestUid{static_cast<uid_t>(-1)};

void setOwnUidForTest(uid_t uid) {
    sTestUid = uid;
}

bool peerOf(int socket, Peer* peer) {
    ucred credentials;
    socklen_t size = sizeof(credentials);
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) return false;
    peer->pid = credentials.pid;
    peer->uid = credentials.uid;
    return true;
}

bool isTrusted(uid_t peer, uid_t self, const char* allowed) {
    if (peer == self || peer == 0) return true;
    const char* at = allowed != nullptr ? allowed : "";
    while (*at != '\0') {
        char* end;
        const unsigned long uid = strtoul(at, &end, 10);
        if (end == at || (*end != '\0' && strchr(", ", *end) == nullptr)) return false;
        if (uid == peer) return true;
        at = end + strspn(end, ", ");
    }
    return false;
}

bool isTrusted(const Peer& peer) {
    const uid_t testUid = sTestUid;
    const uid_t self = testUid != static_cast<uid_t>(-1) ? testUid : geteuid();
    return isTrusted(peer.uid, self, getenv("QORTV_ALLOW_UIDS"));
}

}  // namespace android::hardware::transport
