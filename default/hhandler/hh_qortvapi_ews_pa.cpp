#define LOG_TAG "hh_qortvapi_ews_pa"

#include "hhandler/hh_qortvapi_ews_pa.h"

#include <algorithm>

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/ewspa.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _ewspa_callback_fct(int32_t i4_callback_type, void* pv_tag) {
    FanOut(LOG_TAG).forward("i4_callback_type", &IQorTvApiCallback::notifyEwspa, i4_callback_type,
                            pv_tag);
}

}  // namespace

int32_t hh_a_qortvapi_ewspa_init() {
    return a_qortvapi_ewspa_reg_msg_callback(_ewspa_callback_fct, registrationTag(11111));
}

void hh_a_qortvapi_ewspa_set(uint8_t type, uint32_t id, const hidl_vec<int32_t>& values,
                             const EwspaAnswer& answer) {
    const auto count = static_cast<uint32_t>(values.size());
    const CallerArray<int32_t> copy(count);
    std::copy_n(values.data(), count, copy.data());
    const int32_t result = a_qortvapi_ewspa_set(type, id, copy.data(), count);
    if (result != 0) TVAPI_LOG("a_qortvapi_ewspa_set fail, i4_ret=%d, %d\n", result, count);
    answer(borrowedVector(copy.data(), count), result);
    TVAPI_DEBUG("%u %d\n", count, result);
}

void hh_a_qortvapi_ewspa_get(uint8_t type, uint32_t id, const hidl_vec<int32_t>& values,
                             const EwspaAnswer& answer) {
    const auto count = static_cast<uint32_t>(values.size());
    const CallerArray<int32_t> copy(count);
    std::copy_n(values.data(), count, copy.data());
    const int32_t result = a_qortvapi_ewspa_get(type, id, copy.data(), count);
    if (result != 0) TVAPI_LOG("a_qortvapi_ewspa_get fail, i4_ret=%d, %d\n", result, count);
    answer(borrowedVector(copy.data(), count), result);
    TVAPI_DEBUG("%d %d\n", count, result);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
