#define LOG_TAG "hh_sm"

#include "hhandler/hh_scc.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/scc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

int32_t _inps_detect_cb(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data,
                        int32_t i4_data2) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("_inps_detect_cb e_code = %d, %p\n", i4_cond, pv_tag);
    clients.call(&IQorTvApiCallback::notifyInputSourceDetect, h_comp, i4_cond, pv_tag, i4_data,
                 i4_data2);
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
