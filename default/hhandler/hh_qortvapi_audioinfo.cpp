#define LOG_TAG "hh_qortvapi_audioinfo"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/audio_info.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _audio_info_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                              void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyAudioInfo, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_audio_info_init() {
    return a_qortvapi_audio_info_register_callback(_audio_info_callback_fct,
                                                   registrationTag(11111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
