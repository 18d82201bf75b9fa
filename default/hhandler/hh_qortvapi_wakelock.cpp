#define LOG_TAG "hh_pcl"

#include <hardware_legacy/power.h>

#include <mutex>

#include "callback_registry.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/wakelock.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// The mutex serialises this with the other handlers. No client is called.
void _wakelock_nfy_fct(void*, uint8_t ui1_acquire, const char* ps_name) {
    TVAPI_LOG("_wakelock_nfy_fct");
    std::lock_guard<std::mutex> lock(getCallbackMutex());
    TVAPI_LOG("_wakelock_nfy_fct");
    if (ui1_acquire != 0) {
        TVAPI_LOG("acquiring wakelock %s", ps_name);
        acquire_wake_lock(PARTIAL_WAKE_LOCK, ps_name);
    } else {
        TVAPI_LOG("releasing wakelock %s", ps_name);
        release_wake_lock(ps_name);
    }
}

}  // namespace

int32_t hh_a_qortvapi_wakelock_init() {
    TVAPI_DEBUG("registering wakelock callback");
    const int32_t ret = a_qortvapi_wakelock_reg_callback(_wakelock_nfy_fct, registrationTag(1111));
    TVAPI_DEBUG("register returned %d", ret);
    return ret;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
