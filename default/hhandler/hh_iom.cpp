#define LOG_TAG "hh_iom"

#include "hhandler/hh_iom.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/iom.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

void _iom_nfy_fct(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("pui1_data = %p, ui4_len=%d pv_tag=%p \n", static_cast<const void*>(pui1_data),
                ui4_length, pv_tag);
    clients.call(&IQorTvApiCallback::notifyIom, pv_tag, ui4_cond,
                 borrowedBytes(pui1_data, ui4_length));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
