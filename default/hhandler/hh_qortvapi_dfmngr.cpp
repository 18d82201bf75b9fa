#define LOG_TAG "hh_qortvapi_dfmngr"

#include "hhandler/hh_qortvapi_dfmngr.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/dfmngr.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _ch_logo_reg_nfy_fct(int32_t i4_callback_type, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2,
                          int32_t i4_arg3, int32_t i4_arg4) {
    FanOut(LOG_TAG).forward("i4_callback_type", &IQorTvApiCallback::notifyChannelLogo,
                            i4_callback_type, pv_tag, i4_arg1, i4_arg2, i4_arg3, i4_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_dfmngr_init() {
    return a_qortvapi_ch_logo_reg_callback(_ch_logo_reg_nfy_fct, registrationTag(1111));
}

void hh_a_qortvapi_load_ch_logo(uint16_t original_network_id, uint16_t service_id,
                                uint32_t frequency,
                                const std::function<void(const hidl_string&, int32_t)>& answer) {
    TVAPI_DEBUG("onid:%d,svcid:%d,freq:%d\n", original_network_id, service_id, frequency);
    FixedText<256> path;
    const int32_t result =
            a_qortvapi_load_ch_logo(original_network_id, service_id, frequency, path.data());
    answer(path.forClient(), result);
    TVAPI_DEBUG("file_path:%s,i4_ret = %d\n", path.data(), result);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
