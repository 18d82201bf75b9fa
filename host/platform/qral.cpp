#include "qral/qral.h"

#include <atomic>
#include <cerrno>

// A set with four HDMI ports that supports eARC. When eARC is enabled it is active on all of them.

namespace {

constexpr int32_t kHdmiPorts = 4;

std::atomic<bool> gEnabled{false};

}  // namespace

int32_t QRAL_Init() {
    return 0;
}

int32_t QRCEC_GetEARCCaps(uint32_t* pui4_caps) {
    if (pui4_caps == nullptr) return -EINVAL;
    *pui4_caps = 1;
    return 0;
}

int32_t QRCEC_SetEARCEnable(bool b_enabled) {
    gEnabled = b_enabled;
    return 0;
}

int32_t QRCEC_GetEARCStatus(int32_t i4_port, uint8_t* pui1_status) {
    if (i4_port < 1 || i4_port > kHdmiPorts || pui1_status == nullptr) return -EINVAL;
    *pui1_status = gEnabled ? 1 : 0;
    return 0;
}
