#define LOG_TAG "hh_bml"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/bml.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _bml_msg_notify_fct(int32_t i4_code, void* pv_tag, const int32_t* pi4_data, int32_t i4_count) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyBmlMsg, i4_code, pv_tag,
                            borrowedIntegers(pi4_data, i4_count));
}

}  // namespace

int32_t hh_a_qortvapi_bml_init() {
    return a_qortvapi_bml_reg_msg_callback(_bml_msg_notify_fct, registrationTag(12345));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
