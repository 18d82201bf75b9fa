#define LOG_TAG "hh_qortvapi_record"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/record.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _record_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyRecord, i4_code, pv_tag, pv_arg1,
                            pv_arg2);
}

}  // namespace

int32_t hh_a_qortvapi_record_init() {
    return a_qortvapi_record_pvr_register_callback(_record_callback_fct, registrationTag(11111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
