#define LOG_TAG "hh_qortvapi_oad"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/oad.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _oad_listener_nfy_fct(int32_t i4_code, void* pv_tag, const char* ps_info, int32_t i4_progress,
                           uint8_t ui1_flag, int32_t i4_arg) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyOad, i4_code, pv_tag,
                            hidl_string(ps_info), i4_progress, ui1_flag, i4_arg);
}

}  // namespace

int32_t hh_a_qortvapi_oad_init() {
    return a_qortvapi_oad_register_callback(_oad_listener_nfy_fct, registrationTag(0));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
