/** The request handler for the exchange of messages with the HTML agent. Any thread. */
#pragma once

#include "hhandler/exchange.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** Exchanges at most 400 bytes; see exchangeWords. */
int32_t hh_a_qortvapi_html_agent_exchange_data(const hidl_vec<uint8_t>& data,
                                               const ExchangeAnswer& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
