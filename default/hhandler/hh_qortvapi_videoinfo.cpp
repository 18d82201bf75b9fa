#define LOG_TAG "hh_qortvapi_videoinfo"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/videoinfo.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _video_info_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                              void* pv_arg3, void* pv_arg4, void* pv_arg5, void* pv_arg6) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("e_code = %d, TAG:%p, ARGs(%p,%p,%p,%p,%p,%p)\n", i4_code, pv_tag, pv_arg1, pv_arg2,
                pv_arg3, pv_arg4, pv_arg5, pv_arg6);
    TVAPI_LOG("");
    clients.call(&IQorTvApiCallback::notifyVideoInfo, i4_code, pv_tag, pv_arg1, pv_arg2, pv_arg3,
                 pv_arg4, pv_arg5, pv_arg6);
}

}  // namespace

int32_t hh_a_qortvapi_video_info_init() {
    TVAPI_LOG("");
    return a_qortvapi_videoinfo_reg_common_nfy(_video_info_callback_fct, registrationTag(12121));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
