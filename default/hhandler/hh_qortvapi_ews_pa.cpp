#define LOG_TAG "hh_qortvapi_ews_pa"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/ewspa.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _ewspa_callback_fct(int32_t i4_callback_type, void* pv_tag) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("i4_callback_type = %d, %p\n", i4_callback_type, pv_tag);
    clients.call(&IQorTvApiCallback::notifyEwspa, i4_callback_type, pv_tag);
}

}  // namespace

int32_t hh_a_qortvapi_ewspa_init() {
    return a_qortvapi_ewspa_reg_msg_callback(_ewspa_callback_fct, registrationTag(11111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
