#define LOG_TAG "hh_qortvapi_screensaver"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/screensaver.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _screensaver_msg_nfy_fct(int32_t i4_msg_id, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2,
                              int32_t i4_arg3) {
    FanOut(LOG_TAG).forward("i4_msg_id", &IQorTvApiCallback::notifyScreensaverMsg, i4_msg_id,
                            pv_tag, i4_arg1, i4_arg2, i4_arg3);
}

}  // namespace

int32_t hh_a_qortvapi_screensaver_init() {
    return a_qortvapi_screensaver_register_msg_callback(_screensaver_msg_nfy_fct,
                                                        registrationTag(1111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
