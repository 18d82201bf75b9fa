#define LOG_TAG "hh_qortvapi_event_atsc"

#include "hhandler/hh_qortvapi_event_atsc.h"

#include "hhandler/fan_out.h"
#include "hhandler/record_text.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/event_atsc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _event_atsc_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                              void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyEventAtsc, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_event_atsc_init() {
    return a_qortvapi_event_atsc_register_callback(_event_atsc_callback_fct, registrationTag(6666));
}

HIDL_QORTVAPI_EVENT_ATSC_INFO_T toInterface(const QORTVAPI_EVENT_ATSC_INFO_T& info,
                                            const QORTVAPI_EVENT_ATSC_TEXT_T& text) {
    HIDL_QORTVAPI_EVENT_ATSC_INFO_T result{};
    result.start_time = info.i8_start_time;
    result.event_id = info.ui4_event_id;
    result.channel_id = info.ui4_channel_id;
    result.duration = info.ui4_duration;
    result.source_id = info.ui2_source_id;
    result.etm_location = info.ui2_etm_location;
    result.caption = info.ui1_caption != 0;
    result.blocked = info.ui1_blocked != 0;
    result.rating_region_count = info.ui1_rating_region_count;
    result.audio_count = info.ui1_audio_count;
    result.title = textOf(info.s_title);
    result.rating = textOf(text.s_rating);
    return result;
}

HIDL_T_RATING_MAP_TO_G toInterface(const QORTVAPI_EVENT_ATSC_RATING_MAP_T& rating_map) {
    HIDL_T_RATING_MAP_TO_G result{};
    result.region = textOf(rating_map.s_region);
    result.dimension = textOf(rating_map.s_dimension);
    result.rating = textOf(rating_map.s_rating);
    return result;
}

QORTVAPI_EVENT_ATSC_RATING_MAP_T toMiddleware(const HIDL_T_RATING_MAP_TO_G& rating_map) {
    QORTVAPI_EVENT_ATSC_RATING_MAP_T result{};
    setText(result.s_region, rating_map.region);
    setText(result.s_dimension, rating_map.dimension);
    setText(result.s_rating, rating_map.rating);
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
