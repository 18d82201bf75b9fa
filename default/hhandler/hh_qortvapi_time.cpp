#define LOG_TAG "hh_qortvapi_time"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/time.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _dt_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyDateTime, i4_code, pv_tag, pv_arg1);
}

void _sleep_timer_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifySleepTimer, i4_code, pv_tag,
                            pv_arg1);
}

void _sync_source_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifySyncSource, i4_code, pv_tag,
                            pv_arg1);
}

}  // namespace

int32_t hh_a_qortvapi_time_init() {
    int32_t ret = a_qortvapi_time_register_dt_event_callback(_dt_nfy_fct, registrationTag(1111));
    TVAPI_DEBUG("hh_qortvapi_timea_qortvapi_time_register_dt_event_callback ret= %d\n", ret);
    ret = a_qortvapi_time_register_sleep_timer_callback(_sleep_timer_nfy_fct,
                                                        registrationTag(1111));
    TVAPI_DEBUG("hh_qortvapi_timea_qortvapi_time_register_sleep_timer_callback ret= %d\n", ret);
    ret = a_qortvapi_time_register_sync_source_callback(_sync_source_nfy_fct,
                                                        registrationTag(1111));
    TVAPI_DEBUG("hh_qortvapi_timea_qortvapi_time_register_sync_source_callback ret= %d\n", ret);
    return ret;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
