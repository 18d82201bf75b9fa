#define LOG_TAG "hh_keyevent"

#include "hhandler/hh_keyevent.h"

#include <android-base/unique_fd.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdio>

#include "log.h"
#include "vendor_tmp.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** An event as the graphics layer reads it from its socket, in the byte order of the processor. */
struct InputEvent {
    int32_t kind;
    int32_t values[4];
};
static_assert(sizeof(InputEvent) == 20);
static_assert(sizeof(sockaddr_un) == 110);

bool connectToInput(int socket) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const int length =
            snprintf(address.sun_path, sizeof(address.sun_path), "%s/DFBInput", qortv_vendor_tmp());
    if (length >= static_cast<int>(sizeof(address.sun_path))) return false;
    return connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

/** Returns the direction of an event of kind 3 as the graphics layer numbers it. */
int32_t directionOf(int32_t a5) {
    return a5 == 2 ? 1 : a5 == 4 ? 2 : 0;
}

}  // namespace

int32_t hh_send_key_and_mouse(int32_t kind, int32_t a1, uint32_t a2, int32_t a3, int32_t a4,
                              int32_t a5, int32_t a6, int32_t a7) {
    const ::android::base::unique_fd input(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (input < 0) {
        TVAPI_LOG("create socket error ! \n");
        return -1;
    }
    if (!connectToInput(input)) {
        TVAPI_LOG("connect error \n");
        return -1;
    }
    InputEvent event = {};
    event.kind = kind;
    switch (kind) {
        case 0:
            event.values[0] = a1;
            event.values[1] = static_cast<int32_t>(a2);
            break;
        case 2:
            event.values[0] = a3;
            event.values[1] = a4;
            event.values[2] = a6;
            event.values[3] = a7;
            break;
        case 3:
            event.values[0] = a1;
            event.values[1] = directionOf(a5);
            break;
        case 4:
            event.values[0] = a2 != 0 ? 1 : 0;
            break;
        default:  // includes kind 1, which is reserved
            return -1;
    }
    // Without the flag, a peer that has closed its end would end this process with a signal.
    if (send(input, &event, sizeof(event), MSG_NOSIGNAL) != sizeof(event)) {
        TVAPI_LOG("send error \n");
    }
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
