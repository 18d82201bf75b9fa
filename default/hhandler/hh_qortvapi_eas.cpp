#define LOG_TAG "hh_qortvapi_eas"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/eas.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _eas_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3,
                       void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyEas, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_eas_init() {
    return a_qortvapi_eas_reg_callback(_eas_callback_fct, registrationTag(11111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
