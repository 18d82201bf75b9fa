/** The request handler for the exchange of messages with the HbbTV engine. Any thread. */
#pragma once

#include "hhandler/exchange.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** Exchanges at most 5632 bytes; see exchangeWords. */
int32_t hh_a_qortvapi_hbbtv_exchange_data(const hidl_vec<uint8_t>& data,
                                          const ExchangeAnswer& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
