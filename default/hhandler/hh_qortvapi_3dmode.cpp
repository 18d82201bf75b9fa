#define LOG_TAG "hh_qortvapi_3dmode"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/3dmode.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _qortvapi_3dmode_callback_fct(int32_t i4_callback_type, void* pv_tag, void* pv_arg1,
                                   void* pv_arg2, void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("i4_callback_type", &IQorTvApiCallback::notify3dMode, i4_callback_type,
                            pv_tag, pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_3dmode_init() {
    return a_qortvapi_3dmode_register_callback(_qortvapi_3dmode_callback_fct,
                                               registrationTag(66666));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
