#define LOG_TAG "hh_qortvapi_util"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/util.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _noused_key_nfy_fct(int32_t i4_keycode, void* pv_tag, void* pv_arg1, void* pv_arg2,
                         void* pv_arg3, void* pv_arg4) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("i4_keycode = %d, %p\n", i4_keycode, pv_tag);
    clients.call(&IQorTvApiCallback::notifyNoUsedKey, i4_keycode, pv_tag, pv_arg1, pv_arg2, pv_arg3,
                 pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_util_init() {
    return a_qortvapi_util_register_nousedkey_callback(_noused_key_nfy_fct, registrationTag(1234));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
