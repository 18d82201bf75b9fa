#define LOG_TAG "hh_sm"

#include "hhandler/hh_qortvapi_hbbtv.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/hbbtv.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _hbbtv_msg_notify_fct(int32_t i4_code, void* pv_tag, const int32_t* pi4_data,
                           int32_t i4_count) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyHbbtvMsg, i4_code, pv_tag,
                            borrowedIntegers(pi4_data, i4_count));
}

}  // namespace

int32_t hh_a_qortvapi_hbbtv_init() {
    return a_qortvapi_hbbtv_reg_msg_callback(_hbbtv_msg_notify_fct, registrationTag(12345));
}

int32_t hh_a_qortvapi_hbbtv_exchange_data(const hidl_vec<uint8_t>& data,
                                          const ExchangeAnswer& answer) {
    return exchangeWords<5632>(data, a_qortvapi_hbbtv_exchange_data, answer);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
