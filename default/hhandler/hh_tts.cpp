#define LOG_TAG "hh_tts"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/tts.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _tts_msg_notify_fct(void* pv_tag, const char* pc_nfy_data, uint32_t ui4_data_len) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("{tts} pc_nfy_data = (%s), pv_tag:%llu, ui4_data_len:%d.\n", pc_nfy_data,
                printable(pv_tag), ui4_data_len);
    const hidl_string data(pc_nfy_data);
    clients.call(&IQorTvApiCallback::notifyTtsMsg, pv_tag, data, ui4_data_len);
}

}  // namespace

int32_t hh_a_qortvapi_tts_init() {
    return a_qortvapi_tts_reg_msg_callback(_tts_msg_notify_fct, registrationTag(12345));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
