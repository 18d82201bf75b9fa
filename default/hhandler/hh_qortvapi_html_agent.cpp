#define LOG_TAG "hh_sm"

#include "hhandler/hh_qortvapi_html_agent.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/html_agent.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _html_agent_notify_fct(int32_t i4_code, void* pv_tag, const int32_t* pi4_data,
                            int32_t i4_count) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyHtmlAgent, i4_code, pv_tag,
                            borrowedIntegers(pi4_data, i4_count));
}

}  // namespace

int32_t hh_a_qortvapi_html_agent_init() {
    return a_qortvapi_html_agent_reg_callback(_html_agent_notify_fct, registrationTag(12345));
}

int32_t hh_a_qortvapi_html_agent_exchange_data(const hidl_vec<uint8_t>& data,
                                               const ExchangeAnswer& answer) {
    return exchangeWords<400>(data, a_qortvapi_html_agent_exchange_data, answer);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
