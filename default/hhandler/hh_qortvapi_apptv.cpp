#define LOG_TAG "hh_qortvapi_apptv"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/apptv.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _apptv_reg_nfy_fct(int32_t i4_callback_type, void* pv_tag, void* pv_arg1, void* pv_arg2,
                        void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_callback_type", &IQorTvApiCallback::notifyApptv, i4_callback_type,
                            pv_tag, pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_apptv_init() {
    return a_qortvapi_apptv_register_callback(_apptv_reg_nfy_fct, registrationTag(2222));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
