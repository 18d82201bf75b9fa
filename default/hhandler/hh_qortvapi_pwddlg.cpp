#define LOG_TAG "hh_qortvapi_pwddlg"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/pwddlg.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _pwddlg_msg_nfy_fct(int32_t i4_msg_type, void* pv_tag, void* pv_arg1, void* pv_arg2,
                         void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("i4_msg_type", &IQorTvApiCallback::notifyPwdDlgMsg, i4_msg_type, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_pwddlg_init() {
    return a_qortvapi_pwddlg_register_msg_callback(_pwddlg_msg_nfy_fct, registrationTag(1111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
