#define LOG_TAG "hh_mds"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/mds.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _mds_msg_notify_fct(void* pv_tag, const char* pc_nfy_data, uint32_t ui4_data_len) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("{mds} pc_nfy_data = (%s), pv_tag:%llu, ui4_data_len:%d.\n", pc_nfy_data,
                printable(pv_tag), ui4_data_len);
    const hidl_string data(pc_nfy_data);
    clients.call(&IQorTvApiCallback::notifyMdsMsg, pv_tag, data, ui4_data_len);
}

}  // namespace

int32_t hh_a_qortvapi_mds_init() {
    return a_qortvapi_mds_reg_msg_callback(_mds_msg_notify_fct, registrationTag(10085));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
