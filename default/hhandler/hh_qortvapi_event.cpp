#define LOG_TAG "hh_qortvapi_event"

#include "hhandler/hh_qortvapi_event.h"

#include "hhandler/fan_out.h"
#include "hhandler/record_text.h"
#include "hhandler/registration.h"
#include "middleware/event.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _event_update_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                           void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyEventUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_event_init() {
    return a_qortvapi_event_register_callback(_event_update_nfy_fct, registrationTag(1111));
}

HIDL_T_RATING_MAP_TO_G toInterface(const RATING_MAP_T& rating_map) {
    HIDL_T_RATING_MAP_TO_G result{};
    result.region = textOf(rating_map.s_region);
    result.dimension = textOf(rating_map.s_dimension);
    result.rating = textOf(rating_map.s_rating);
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
