#define LOG_TAG "hh_qortvapi_ews"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/ews.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _ews_callback_fct(int32_t i4_callback_type, void* pv_tag) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("{EWS}i4_callback_type = %d, %p\n", i4_callback_type, pv_tag);
    TVAPI_LOG("");
    clients.call(&IQorTvApiCallback::notifyEws, i4_callback_type, pv_tag);
}

}  // namespace

int32_t hh_a_qortvapi_ews_init() {
    TVAPI_DEBUG("{EWS}hh_a_qortvapi_ews_init\n");
    TVAPI_LOG("");
    return a_qortvapi_ews_reg_msg_callback(_ews_callback_fct, registrationTag(6666));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
