#define LOG_TAG "hh_qortvapi_ginga"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/ginga.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _ginga_nfy_fct(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2,
                    void* pv_arg3) {
    FanOut(LOG_TAG).forward("i4_update_type", &IQorTvApiCallback::notifyGinga, i4_update_type,
                            pv_tag, pv_arg1, pv_arg2, pv_arg3);
}

void _ginga_volume_nfy_fct(int32_t i4_volume_type, void* pv_tag, void* pv_arg1, void* pv_arg2,
                           void* pv_arg3) {
    FanOut(LOG_TAG).forward("i4_volume_type", &IQorTvApiCallback::notifyGingaVolume, i4_volume_type,
                            pv_tag, pv_arg1, pv_arg2, pv_arg3);
}

void _ginga_update_nfy_fct(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2,
                           void* pv_arg3) {
    FanOut(LOG_TAG).forward("i4_update_type", &IQorTvApiCallback::notifyGingaUpdate, i4_update_type,
                            pv_tag, pv_arg1, pv_arg2, pv_arg3);
}

}  // namespace

int32_t hh_a_qortvapi_ginga_init() {
    a_qortvapi_ginga_register_callback(_ginga_nfy_fct, registrationTag(1111));
    a_qortvapi_ginga_volume_register_callback(_ginga_volume_nfy_fct, registrationTag(2222));
    return a_qortvapi_ginga_update_register_callback(_ginga_update_nfy_fct, registrationTag(3333));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
