#define LOG_TAG "hh_qortvapi_upgrade"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/upgrade.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _qortvapi_upgrade_callback_fct(int32_t i4_type, int32_t i4_state, int32_t i4_progress,
                                    void* pv_tag) {
    const FanOut clients(LOG_TAG);
    clients.call(&IQorTvApiCallback::notifyUpgrade, i4_type, i4_state, i4_progress, pv_tag);
}

}  // namespace

// Registered and taken back at once: the middleware learns of the service and sends no progress.
int32_t hh_a_qortvapi_update_init() {
    a_qortvapi_upgrade_register_callback(_qortvapi_upgrade_callback_fct, registrationTag(1111));
    return a_qortvapi_upgrade_unregister_callback(_qortvapi_upgrade_callback_fct,
                                                  registrationTag(2222));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
