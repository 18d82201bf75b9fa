/**
 * The registration functions of the handler modules, in the order in which the service calls them.
 * Each passes the notification handlers of one middleware module to the middleware, and returns the
 * result of its last call, 0 if it makes none. They are called at start-up, on the main thread,
 * before any interface is registered. Notifications may arrive, on the middleware's threads, before
 * they return.
 */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

int32_t hh_c_svctx_init();
int32_t hh_a_qortvapi_highlevel_init();
int32_t hh_a_qortvapi_3dmode_init();
int32_t hh_a_qortvapi_util_init();
int32_t hh_a_qortvapi_eas_init();
int32_t hh_a_qortvapi_ginga_init();
int32_t hh_a_qortvapi_scan_init();
int32_t hh_a_qortvapi_broadcast_init();
int32_t hh_a_qortvapi_screensaver_init();
int32_t hh_a_qortvapi_rating_init();
int32_t hh_a_qortvapi_dfmngr_init();
int32_t hh_a_qortvapi_banner_init();
int32_t hh_a_qortvapi_warningmsg_init();
int32_t hh_a_qortvapi_subtitle_init();
int32_t hh_a_qortvapi_pwddlg_init();
int32_t hh_a_qortvapi_event_init();
int32_t hh_a_qortvapi_timeshift_init();
int32_t hh_a_qortvapi_time_init();
int32_t hh_c_pcl_init();
int32_t hh_a_qortvapi_event_atsc_init();
int32_t hh_a_qortvapi_config_init();
int32_t hh_a_qortvapi_apptv_init();
int32_t hh_a_qortvapi_oad_init();
int32_t hh_a_qortvapi_hbbtv_init();
int32_t hh_a_qortvapi_mheg5_init();
int32_t hh_a_qortvapi_record_init();
int32_t hh_a_qortvapi_audio_info_init();
int32_t hh_a_qortvapi_update_init();
int32_t hh_a_qortvapi_channellist_init();
int32_t hh_a_qortvapi_ewspa_init();
int32_t hh_a_qortvapi_tt_init();
int32_t hh_a_qortvapi_ci_init();
int32_t hh_a_qortvapi_bml_init();
int32_t hh_a_qortvapi_html_agent_init();
int32_t hh_a_qortvapi_video_info_init();
int32_t hh_a_qortvapi_wakelock_init();
int32_t hh_a_qortvapi_tts_init();
int32_t hh_a_qortvapi_mds_init();
int32_t hh_a_qortvapi_ews_init();

/** Returns `number` as a registration tag, which the middleware passes back with each notification.
 */
inline void* registrationTag(uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
