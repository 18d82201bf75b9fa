/**
 * The core TV interface. Its constructor connects the process to the middleware, and through it the
 * clients register their callbacks.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <utils/StrongPointer.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>

#include <cstdint>
#include <mutex>

#include "callback_registry.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::sp;
using ::android::hardware::hidl_handle;
using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/** The methods of a family are in QorTvApiImpl<Family>.cpp. */
class QorTvApiImpl : public IQorTvApi {
  public:
    /**
     * Waits until the middleware is ready (at most some 90 seconds), connects to it and registers
     * the notification handlers. A failure is logged and leaves a service without a middleware.
     */
    QorTvApiImpl();

    /** The registry of the clients' callbacks: see callback_registry.h. */
    static std::mutex& getCallbackMutex();
    static CallbackHandlers& getCallbackHandlers();

    Return<void> setCallback(const sp<IQorTvApiCallback>& callback) override;

    // Highlevel TV control.
    Return<int32_t> a_hidl_a_qortvapi_highlevel_start_tv() override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_stop_tv() override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_generic_function(uint32_t id, uint32_t param1,
                                                                 uint32_t param2) override;
    Return<void> a_hidl_a_qortvapi_highlevel_argument_test(
            int32_t arg1, int32_t arg2, const HIDL_QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1& structure,
            a_hidl_a_qortvapi_highlevel_argument_test_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_launch_3rd_party(uint8_t window, bool keep_tv,
                                                                 uint32_t app) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_launch_internal_ap(uint8_t window, bool keep_tv,
                                                                   uint32_t app) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_launch_hbbtv(
            const hidl_string& url, const hidl_string& app_id,
            const hidl_string& parameters) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_stop_all() override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_stop_hbbtv() override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_set_displayregion(int32_t window, uint32_t x,
                                                                  uint32_t y, uint32_t width,
                                                                  uint32_t height) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_set_viewport(bool enable, int32_t x, int32_t y,
                                                             int32_t width,
                                                             int32_t height) override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_is_in_3rd_party_mode() override;
    Return<int32_t> a_hidl_a_qortvapi_highlevel_get_current_tv_mode() override;
    Return<void> a_hidl_a_qortvapi_highlevel_generic_function_ex(
            uint32_t id, uint32_t param1, uint32_t param2, const hidl_vec<uint8_t>& data,
            a_hidl_a_qortvapi_highlevel_generic_function_ex_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_highlevel_get_market_region(
            a_hidl_a_qortvapi_highlevel_get_market_region_cb _hidl_cb) override;

    // Service contexts.
    Return<void> a_hidl_c_svctx_open(const hidl_string& name,
                                     a_hidl_c_svctx_open_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_svctx_close(uint32_t svctx) override;
    Return<void> a_hidl_c_svctx_get_64(uint32_t svctx, uint32_t type, const hidl_vec<uint8_t>& data,
                                       a_hidl_c_svctx_get_64_cb _hidl_cb) override;
    Return<void> a_hidl_c_svctx_get_video_src_resolution(
            uint32_t svctx, a_hidl_c_svctx_get_video_src_resolution_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_svctx_select_svc_64(uint32_t svctx, uint32_t mode,
                                                 const HIDL_SRC_DESC_T& source,
                                                 const hidl_vec<uint8_t>& sink,
                                                 uint64_t tag) override;
    Return<int32_t> a_hidl_c_svctx_set_stream_attr_64(uint32_t svctx, uint32_t stream_type,
                                                      uint32_t attribute,
                                                      const hidl_vec<uint8_t>& data) override;
    Return<void> a_hidl_c_svctx_get_conn_attr(uint32_t svctx, uint32_t type, uint32_t attribute,
                                              uint32_t size,
                                              a_hidl_c_svctx_get_conn_attr_cb _hidl_cb) override;
    Return<void> a_hidl_c_svctx_set_conn_attr(uint32_t svctx, uint32_t type, uint32_t attribute,
                                              const hidl_vec<uint8_t>& data,
                                              a_hidl_c_svctx_set_conn_attr_cb _hidl_cb) override;
    Return<void> a_hidl_c_svctx_get_audio_info(uint32_t svctx,
                                               a_hidl_c_svctx_get_audio_info_cb _hidl_cb) override;
    Return<void> a_hidl_c_svctx_generic_get_info(
            uint32_t svctx, uint32_t type, uint32_t subtype, uint32_t size,
            a_hidl_c_svctx_generic_get_info_cb _hidl_cb) override;
    Return<void> a_hidl_c_svctx_generic_set_info(
            uint32_t svctx, uint32_t type, uint32_t subtype, const hidl_vec<uint8_t>& data,
            a_hidl_c_svctx_generic_set_info_cb _hidl_cb) override;

    // Stream components.
    Return<void> a_hidl_c_scc_comp_open(uint32_t type, const hidl_string& sink, uint32_t code,
                                        const hidl_vec<uint8_t>& data,
                                        a_hidl_c_scc_comp_open_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_scc_comp_close(uint32_t component) override;
    Return<int32_t> a_hidl_c_scc_vid_set_src_detect_nfy(uint32_t component, uint64_t tag) override;

    // Key and pointer events.
    Return<int32_t> a_hidl_send_key_and_mouse(int32_t kind, int32_t arg1, uint32_t arg2,
                                              int32_t arg3, int32_t arg4, int32_t arg5,
                                              int32_t arg6, int32_t arg7) override;

    // Wake on network.
    Return<int32_t> a_hidl_a_qortvapi_network_set_wifi_wol_ctrl(int32_t control) override;
    Return<void> a_hidl_a_qortvapi_network_get_wifi_wol_ctrl(
            a_hidl_a_qortvapi_network_get_wifi_wol_ctrl_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_network_set_eth_wol_ctrl(int32_t control) override;
    Return<void> a_hidl_a_qortvapi_network_get_eth_wol_ctrl(
            a_hidl_a_qortvapi_network_get_eth_wol_ctrl_cb _hidl_cb) override;

    // Special mode: reserved. Returns 0.
    Return<int32_t> a_hidl_a_qortvapi_enter_special_mode(uint32_t mode) override;
    Return<int32_t> a_hidl_a_qortvapi_quit_special_mode(uint32_t mode) override;
    Return<int32_t> a_hidl_a_qortvapi_query_special_mode_status(uint32_t mode) override;

    // Utilities.
    Return<int32_t> a_hidl_a_qortvapi_util_set(const hidl_string& name, int32_t kind,
                                               const hidl_vec<uint8_t>& data,
                                               uint64_t size) override;
    Return<void> a_hidl_a_qortvapi_util_get(const hidl_string& name, int32_t kind,
                                            const hidl_vec<uint8_t>& data, uint64_t size,
                                            a_hidl_a_qortvapi_util_get_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_util_get_sys_version(
            int32_t kind, a_hidl_a_qortvapi_util_get_sys_version_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_util_tuner_fac_open_diag(
            bool flag, a_hidl_a_qortvapi_util_tuner_fac_open_diag_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_util_tuner_fac_close_diag(bool flag) override;
    Return<void> a_hidl_a_qortvapi_util_tuner_fac_query_diag(
            bool flag, uint64_t size,
            a_hidl_a_qortvapi_util_tuner_fac_query_diag_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_util_set_android_osd_opacity(uint32_t opacity) override;
    Return<int32_t> a_hidl_a_qortvapi_util_start_native_app(uint8_t app) override;
    Return<int32_t> a_hidl_a_rpc_close_client() override;
    Return<int32_t> a_hidl_a_qortvapi_freeze_set_freeze(const hidl_string& window,
                                                        bool freeze) override;
    Return<int32_t> a_hidl_a_qortvapi_freeze_is_freeze(const hidl_string& window) override;

    // Closed captions.
    Return<int32_t> a_hidl_a_qortvapi_isdbcc_enable(bool enable) override;
    Return<int32_t> a_hidl_a_qortvapi_isdbcc_next_stream() override;
    Return<int32_t> a_hidl_a_qortvapi_isdbcc_get_CCString() override;
    Return<int32_t> a_hidl_a_qortvapi_atsccc_enable(bool enable) override;
    Return<int32_t> a_hidl_a_qortvapi_atsccc_next_stream() override;
    Return<int32_t> a_hidl_a_qortvapi_atsccc_get_CCString() override;
    Return<int32_t> a_hidl_a_qortvapi_atsccc_set_visible(bool visible) override;
    Return<int32_t> a_hidl_a_qortvapi_atsccc_demo_set(int32_t item, int32_t value) override;
    Return<int32_t> a_hidl_a_qortvapi_analogcc_enable(bool enable) override;
    Return<int32_t> a_hidl_a_qortvapi_analogcc_next_stream() override;
    Return<int32_t> a_hidl_a_qortvapi_analogcc_get_CCString() override;
    Return<int32_t> a_hidl_a_qortvapi_analogcc_set_visible(bool visible) override;

    // HbbTV audio and languages, of two browsers; see hhandler/hh_hbbtv.h.
    Return<int32_t> a_hidl_c_opera_hbbtv_stm_set_audio(uint16_t index) override;
    Return<void> a_hidl_c_opera_hbbtv_stm_get_audio(
            a_hidl_c_opera_hbbtv_stm_get_audio_cb _hidl_cb) override;
    Return<void> a_hidl_c_opera_hbbtv_stm_get_audio_lang(
            uint16_t index, a_hidl_c_opera_hbbtv_stm_get_audio_lang_cb _hidl_cb) override;
    Return<void> a_hidl_c_opera_hbbtv_stm_get_audio_num(
            a_hidl_c_opera_hbbtv_stm_get_audio_num_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_opera_hbbtv_set_default_subtitle_lang(const hidl_string& language,
                                                                   int32_t type) override;
    Return<int32_t> a_hidl_c_opera_hbbtv_set_default_audio_lang(
            const hidl_string& language) override;
    Return<int32_t> a_hidl_c_opera_hbbtv_set_audio_desc(bool enable) override;
    Return<int32_t> a_hidl_c_hbbtv_stm_set_audio(uint16_t index) override;
    Return<void> a_hidl_c_hbbtv_stm_get_audio(a_hidl_c_hbbtv_stm_get_audio_cb _hidl_cb) override;
    Return<void> a_hidl_c_hbbtv_stm_get_audio_lang(
            uint16_t index, a_hidl_c_hbbtv_stm_get_audio_lang_cb _hidl_cb) override;
    Return<void> a_hidl_c_hbbtv_stm_get_audio_num(
            a_hidl_c_hbbtv_stm_get_audio_num_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_hbbtv_set_default_subtitle_lang(const hidl_string& language,
                                                             int32_t type) override;
    Return<int32_t> a_hidl_c_hbbtv_set_default_audio_lang(const hidl_string& language) override;
    Return<int32_t> a_hidl_c_hbbtv_set_audio_desc(bool enable) override;

    // Emergency alerts.
    Return<void> a_hidl_a_qortvapi_eas_get_status(
            a_hidl_a_qortvapi_eas_get_status_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_eas_set_android_launch_status(bool launched) override;
    Return<int32_t> a_hidl_a_qortvapi_eas_get_android_launch_status() override;
    Return<int32_t> a_hidl_a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(
            bool keep_channel) override;

    // Ginga.
    Return<int32_t> a_hidl_a_qortvapi_ginga_startApplication(const hidl_string& app_id) override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_stopApplication(const hidl_string& app_id) override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_getApplicationInfo() override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_startGinga() override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_stopGinga() override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_warning_start_cc(bool start) override;
    Return<int32_t> a_hidl_a_qortvapi_ginga_warning_start_ginga_app(bool start) override;
    Return<void> a_hidl_a_qortvapi_ginga_getApplicationNum(
            a_hidl_a_qortvapi_ginga_getApplicationNum_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ginga_getApplicationInfo_ex(
            uint32_t count, a_hidl_a_qortvapi_ginga_getApplicationInfo_ex_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ginga_is_enable_screen_mode(
            bool query, a_hidl_a_qortvapi_ginga_is_enable_screen_mode_cb _hidl_cb) override;

    // Screen saver, screen mode and zoom.
    Return<int32_t> a_hidl_a_qortvapi_screensaver_get_msgID() override;
    Return<uint16_t> a_hidl_a_qortvapi_screenmode_get_screen_mode() override;
    Return<int32_t> a_hidl_a_qortvapi_screenmode_set_screen_mode(uint16_t screen_mode) override;
    Return<void> a_hidl_a_qortvapi_screenmode_get_all_screen_mode(
            uint32_t count, a_hidl_a_qortvapi_screenmode_get_all_screen_mode_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_screenmode_get_number_screen_mode(
            a_hidl_a_qortvapi_screenmode_get_number_screen_mode_cb _hidl_cb) override;
    Return<bool> a_hidl_a_qortvapi_zoom_is_enable() override;
    Return<int32_t> a_hidl_a_qortvapi_screenmode_set_crnt_overscan(uint32_t top, uint32_t bottom,
                                                                   uint32_t left,
                                                                   uint32_t right) override;
    Return<void> a_hidl_a_qortvapi_screenmode_get_crnt_overscan(
            a_hidl_a_qortvapi_screenmode_get_crnt_overscan_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_screenmode_update_overscan_ini() override;

    // Picture and sound modes.
    Return<uint16_t> a_hidl_a_qortvapi_av_mode_get_picture_mode() override;
    Return<int32_t> a_hidl_a_qortvapi_av_mode_set_picture_mode(uint16_t picture_mode) override;
    Return<void> a_hidl_a_qortvapi_av_mode_get_all_picture_mode(
            uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_picture_mode_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_av_mode_get_number_picture_mode(
            a_hidl_a_qortvapi_av_mode_get_number_picture_mode_cb _hidl_cb) override;
    Return<uint16_t> a_hidl_a_qortvapi_av_mode_get_sound_effect() override;
    Return<int32_t> a_hidl_a_qortvapi_av_mode_set_sound_effect(uint16_t sound_effect) override;
    Return<void> a_hidl_a_qortvapi_av_mode_get_all_sound_effect(
            uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_sound_effect_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_av_mode_get_number_sound_effect(
            a_hidl_a_qortvapi_av_mode_get_number_sound_effect_cb _hidl_cb) override;

    // Banner.
    Return<void> a_hidl_a_qortvapi_banner_get_item_state(
            int32_t item, int32_t index,
            a_hidl_a_qortvapi_banner_get_item_state_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_banner_get_item_id(
            int32_t item, int32_t index, a_hidl_a_qortvapi_banner_get_item_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_banner_get_item_content(
            int32_t item, int32_t index, uint32_t length,
            a_hidl_a_qortvapi_banner_get_item_content_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_banner_get_item_content_len(
            int32_t item, int32_t index,
            a_hidl_a_qortvapi_banner_get_item_content_len_cb _hidl_cb) override;

    // Volume.
    Return<int16_t> a_hidl_a_qortvapi_volctrl_incrVolume() override;
    Return<int16_t> a_hidl_a_qortvapi_volctrl_incrVolume_by_type(int32_t type) override;
    Return<int16_t> a_hidl_a_qortvapi_volctrl_decrVolume() override;
    Return<int16_t> a_hidl_a_qortvapi_volctrl_decrVolume_by_type(int32_t type) override;
    Return<int32_t> a_hidl_a_qortvapi_volctrl_setVolume(int16_t volume) override;
    Return<int32_t> a_hidl_a_qortvapi_volctrl_setVolume_by_type(int32_t type,
                                                                int16_t volume) override;
    Return<int16_t> a_hidl_a_qortvapi_volctrl_getVolume() override;
    Return<int16_t> a_hidl_a_qortvapi_volctrl_getVolume_by_type(int32_t type) override;
    Return<int32_t> a_hidl_a_qortvapi_volctrl_setMute(bool mute) override;
    Return<int32_t> a_hidl_a_qortvapi_volctrl_setMute_by_type(int32_t type, bool mute) override;
    Return<bool> a_hidl_a_qortvapi_volctrl_getMute() override;
    Return<bool> a_hidl_a_qortvapi_volctrl_getMute_by_type(int32_t type) override;

    // Channel logo, subtitles, password dialog.
    Return<void> a_hidl_a_qortvapi_load_ch_logo(
            uint16_t original_network_id, uint16_t service_id, uint32_t frequency,
            a_hidl_a_qortvapi_load_ch_logo_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_subtitle_get_loop(
            const hidl_vec<int32_t>& values,
            a_hidl_a_qortvapi_subtitle_get_loop_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_subtitle_play(uint8_t track) override;
    Return<int32_t> a_hidl_a_qortvapi_subtitle_set_next() override;
    Return<int32_t> a_hidl_a_qortvapi_PWDDLG_checkPWD(const hidl_string& password) override;
    Return<int32_t> a_hidl_a_qortvapi_PWDDLG_show() override;

    // Power control.
    Return<void> a_hidl_c_pcl_get_wakeup_reason(
            a_hidl_c_pcl_get_wakeup_reason_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_pcl_set_wakeup_reason(HIDL_PCL_WAKE_UP_REASON_T reason,
                                                   const hidl_vec<uint8_t>& data) override;
    Return<void> a_hidl_c_pcl_get_power_down_reason(
            a_hidl_c_pcl_get_power_down_reason_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_pcl_set_power_down_reason(HIDL_PCL_POWER_DOWN_REASON_T reason,
                                                       const hidl_vec<uint8_t>& data) override;
    Return<int32_t> a_hidl_c_pcl_set_power_down() override;
    Return<int32_t> a_hidl_c_pcl_set_request_suspend() override;
    Return<int32_t> a_hidl_c_pcl_set_request_powerdown_envent() override;
    Return<void> a_hidl_c_pcl_get_gpio(uint32_t id, HIDL_PCL_GPIO_MODE_T mode,
                                       a_hidl_c_pcl_get_gpio_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_pcl_set_gpio(uint32_t id, HIDL_PCL_GPIO_STATUS_T status) override;
    Return<int32_t> a_hidl_c_pcl_set_gpio_monitor_ctrl_ex(
            const HIDL_PCL_GPIO_MONITOR_CTRL_EX_T& control) override;
    Return<void> a_hidl_c_pcl_get_wakeup_irkey(a_hidl_c_pcl_get_wakeup_irkey_cb _hidl_cb) override;
    Return<void> a_hidl_c_pcl_get_wakeup_setup(a_hidl_c_pcl_get_wakeup_setup_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_pcl_set_wakeup_setup(uint32_t setup) override;
    Return<void> a_hidl_a_qortvapi_pcl_get_wakeup_reason(
            a_hidl_a_qortvapi_pcl_get_wakeup_reason_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_pcl_get_wakeup_setup(
            a_hidl_a_qortvapi_pcl_get_wakeup_setup_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_pcl_set_wakeup_setup(uint32_t setup) override;

    // ATSC events.
    Return<void> a_hidl_a_qortvapi_event_atsc_load_events(
            uint32_t channel_id, int64_t start_time, uint32_t count,
            a_hidl_a_qortvapi_event_atsc_load_events_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_get_details_info(
            uint32_t event, uint32_t size,
            a_hidl_a_qortvapi_event_atsc_get_details_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_event_atsc_freeEvent(uint32_t event) override;
    Return<bool> a_hidl_a_qortvapi_event_atsc_check_block(uint32_t channel_id,
                                                          uint32_t event) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_load_events_by_EIT(
            uint32_t channel_id, uint16_t eit,
            a_hidl_a_qortvapi_event_atsc_load_events_by_EIT_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_get_event_number_in_EIT(
            uint32_t event_list,
            a_hidl_a_qortvapi_event_atsc_get_event_number_in_EIT_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index(
            uint32_t event_list, uint16_t index, uint32_t length,
            a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_check_EIT_status(
            uint32_t channel_id, uint8_t groups,
            a_hidl_a_qortvapi_event_atsc_check_EIT_status_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_getEvent_detail_len_by_index(
            uint32_t event_list, uint16_t index,
            a_hidl_a_qortvapi_event_atsc_getEvent_detail_len_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_getEvent_general(
            uint32_t event, a_hidl_a_qortvapi_event_atsc_getEvent_general_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index(
            uint32_t event_list, uint16_t index,
            a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index(
            uint32_t event_list, uint16_t index, const HIDL_T_RATING_MAP_TO_G& rating_map,
            a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index_cb _hidl_cb) override;

    // Audio of the current service.
    Return<void> a_hidl_a_qortvapi_audio_info_get_current_lanuage(
            uint32_t length, a_hidl_a_qortvapi_audio_info_get_current_lanuage_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_audio_info_set_next_lanuage() override;
    Return<void> a_hidl_a_qortvapi_audio_info_get_available_record(
            uint32_t count, a_hidl_a_qortvapi_audio_info_get_available_record_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_get_current_audio_info(
            a_hidl_a_qortvapi_get_current_audio_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_get_audio_apd_text(
            uint8_t index, a_hidl_a_qortvapi_get_audio_apd_text_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_get_current_ad_info(
            a_hidl_a_qortvapi_get_current_ad_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_select_audio(uint32_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_select_main_sub_audio(uint32_t main_index,
                                                            uint32_t sub_index) override;
    Return<int32_t> a_hidl_a_qortvapi_select_default_audio(const hidl_string& window) override;
    Return<void> a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(
            uint32_t count,
            a_hidl_a_qortvapi_audio_info_get_inputsource_available_record_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_get_inputsource_current_audio_info(
            a_hidl_a_qortvapi_get_inputsource_current_audio_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_audio_info_set_value(uint32_t id, uint32_t value) override;
    Return<void> a_hidl_a_qortvapi_audio_info_get_value(
            uint32_t id, a_hidl_a_qortvapi_audio_info_get_value_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_audio_info_set_data(uint32_t id,
                                                          const hidl_vec<uint8_t>& data,
                                                          uint32_t size) override;
    Return<void> a_hidl_a_qortvapi_audio_info_get_data(
            uint32_t id, uint32_t size, const hidl_vec<uint8_t>& data,
            a_hidl_a_qortvapi_audio_info_get_data_cb _hidl_cb) override;

    // Input and output manager.
    Return<void> a_hidl_c_iom_open(uint16_t device, uint16_t port, const hidl_string& name,
                                   const hidl_handle& region, uint64_t tag,
                                   a_hidl_c_iom_open_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_iom_close(uint32_t iom) override;
    Return<void> a_hidl_c_iom_get(uint32_t iom, uint16_t type, const hidl_handle& region,
                                  uint64_t size, a_hidl_c_iom_get_cb _hidl_cb) override;
    Return<int32_t> a_hidl_c_iom_set(uint32_t iom, uint16_t type, const hidl_handle& region,
                                     uint64_t size) override;
    Return<int32_t> a_hidl_c_iom_output(uint32_t iom, const hidl_vec<uint8_t>& data) override;

    // The TV application.
    Return<int32_t> a_hidl_a_qortvapi_apptv_save_timestamp(const hidl_string& name) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_set_tv_started(bool started) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_unlock_service(const hidl_string& window) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_get_matched_channel(int16_t svl_id, bool one_part,
                                                                int32_t major,
                                                                int32_t minor) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_nav_update_sys_status_by_win(
            const hidl_string& window, HIDL_QORTVAPI_APPTV_SYS_STATUS_T status) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_update_sys_status(
            HIDL_QORTVAPI_APPTV_SYS_STATUS_T status) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_start_tv() override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_stop_all() override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_get_current_channel_svc_text_len() override;
    Return<void> a_hidl_a_qortvapi_apptv_get_current_channel_svc_text(
            int32_t length,
            a_hidl_a_qortvapi_apptv_get_current_channel_svc_text_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_unblock_svc(const hidl_string& window,
                                                        bool unblock) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_swap_tmp_unlock_info(int32_t info) override;
    Return<int32_t> a_hidl_a_qortvapi_apptv_set_video_mute(const hidl_string& window,
                                                           bool mute) override;
    Return<void> a_hidl_a_qortvapi_apptv_get_capability_ex(
            int32_t item, a_hidl_a_qortvapi_apptv_get_capability_ex_cb _hidl_cb) override;
    Return<bool> a_hidl_a_qortvapi_apptv_get_video_mute(const hidl_string& window) override;

    // Over-the-air download.
    Return<int32_t> a_hidl_a_qortvapi_oad_start_manual_detect() override;
    Return<void> a_hidl_a_qortvapi_oad_get_scheduleinfo(
            a_hidl_a_qortvapi_oad_get_scheduleinfo_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_oad_get_datainfo(
            int32_t item, a_hidl_a_qortvapi_oad_get_datainfo_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_oad_stop_manual_detect() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_start_download() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_stop_download() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_set_auto_download(bool enable) override;
    Return<int32_t> a_hidl_a_qortvapi_oad_start_flash() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_accept_restart() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_remind_me_later() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_accept_schedule() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_start_jump_channel() override;
    Return<int32_t> a_hidl_a_qortvapi_oad_get_power_on_status() override;
    Return<int32_t> a_hidl_a_qortvapi_set_pkg_pathname(const hidl_string& path) override;
    Return<int32_t> a_hidl_a_qortvapi_oad_clear_version() override;

    // HbbTV data exchange.
    Return<void> a_hidl_a_qortvapi_hbbtv_exchange_data(
            const hidl_vec<uint8_t>& data,
            a_hidl_a_qortvapi_hbbtv_exchange_data_cb _hidl_cb) override;

    // MHEG-5.
    Return<void> a_hidl_a_qortvapi_mheg5_get_current_channel(
            a_hidl_a_qortvapi_mheg5_get_current_channel_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mheg5_get_pfg_info_len(
            a_hidl_a_qortvapi_mheg5_get_pfg_info_len_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mheg5_get_pfg_info(
            uint32_t length, a_hidl_a_qortvapi_mheg5_get_pfg_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mheg5_get_internal_scrn(
            a_hidl_a_qortvapi_mheg5_get_internal_scrn_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_mheg5_set_pfg_result(bool right) override;
    Return<int32_t> a_hidl_a_qortvapi_mheg5_set_hbbtv_status(uint32_t id, bool success) override;
    Return<int32_t> a_hidl_a_qortvapi_mheg5_enabled() override;
    Return<int32_t> a_hidl_a_qortvapi_mheg5_disabled() override;
    Return<int32_t> a_hidl_a_qortvapi_mheg5_set_mheg5_status(int32_t type, int32_t arg1,
                                                             int32_t arg2, int32_t arg3) override;

    // Software upgrade.
    Return<int32_t> a_hidl_a_qortvapi_upgrade_start(HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type,
                                                    bool force) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_trigger(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) override;
    Return<void> a_hidl_a_qortvapi_upgrade_get_firmware_info(
            a_hidl_a_qortvapi_upgrade_get_firmware_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_upgrade_get_item_info(
            uint32_t index, a_hidl_a_qortvapi_upgrade_get_item_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_start_download_firmware(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type, const hidl_string& url,
            const hidl_string& path) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_cancel_download_firmware(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_start_reboot_upgrade(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_query_upgrade_result(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) override;
    Return<void> a_hidl_a_qortvapi_upgrade_is_supported(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type,
            a_hidl_a_qortvapi_upgrade_is_supported_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_check_update(
            HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) override;
    Return<int32_t> a_hidl_a_qortvapi_upgrade_set(HIDL_QORTVAPI_UPGRADE_SET_TYPE_T type,
                                                  const hidl_vec<uint32_t>& ids, uint32_t count,
                                                  const hidl_vec<uint32_t>& values) override;

    // Emergency warnings, announcements.
    Return<void> a_hidl_a_qortvapi_ewspa_set(uint8_t type, uint32_t id,
                                             const hidl_vec<int32_t>& values,
                                             a_hidl_a_qortvapi_ewspa_set_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ewspa_get(uint8_t type, uint32_t id,
                                             const hidl_vec<int32_t>& values,
                                             a_hidl_a_qortvapi_ewspa_get_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_ewspa_create_monitor_inst(uint8_t type) override;
    Return<int32_t> a_hidl_a_qortvapi_ewspa_delete_monitor_inst(uint8_t type) override;

    // Teletext.
    Return<void> a_hidl_a_qortvapi_teletext_get_cur_page(
            a_hidl_a_qortvapi_teletext_get_cur_page_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_teletext_set_page(
            const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page) override;
    Return<int32_t> a_hidl_a_qortvapi_teletext_is_top_stream() override;
    Return<void> a_hidl_a_qortvapi_teletext_top_get_block_content(
            a_hidl_a_qortvapi_teletext_top_get_block_content_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_teletext_top_get_group_content(
            const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
            a_hidl_a_qortvapi_teletext_top_get_group_content_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_teletext_top_get_page_content(
            const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
            a_hidl_a_qortvapi_teletext_top_get_page_content_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_teletext_get_ttx_rating_on() override;

    // Configuration files and system properties.
    Return<void> a_hidl_a_qortvapi_get_base_config_file_path(
            int16_t length, a_hidl_a_qortvapi_get_base_config_file_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_parser_get_signed_config_data(
            const hidl_string& file, const hidl_string& key,
            a_hidl_a_qortvapi_parser_get_signed_config_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_parser_get_string_config_data(
            const hidl_string& file, const hidl_string& key, int16_t length,
            a_hidl_a_qortvapi_parser_get_string_config_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_parser_get_value(
            const hidl_string& key, a_hidl_a_qortvapi_parser_get_value_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_parser_get_string(
            const hidl_string& key, a_hidl_a_qortvapi_parser_get_string_cb _hidl_cb) override;
    Return<int32_t> a_hidl_tvapi_set_property(const hidl_string& key,
                                              const hidl_string& value) override;

    // Video of the current service.
    Return<int32_t> a_hidl_a_qortvapi_videoinfo_set_value(uint32_t id, uint32_t value) override;
    Return<void> a_hidl_a_qortvapi_videoinfo_get_value(
            uint32_t id, a_hidl_a_qortvapi_videoinfo_get_value_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_videoinfo_set_data(uint32_t id, const hidl_vec<uint8_t>& data,
                                                         uint32_t size) override;
    Return<void> a_hidl_a_qortvapi_videoinfo_get_data(
            uint32_t id, uint32_t size, const hidl_vec<uint8_t>& data,
            a_hidl_a_qortvapi_videoinfo_get_data_cb _hidl_cb) override;

    // Data exchange with the HTML agent and the advertising-insertion module.
    Return<void> a_hidl_a_qortvapi_html_agent_exchange_data(
            const hidl_vec<uint8_t>& data,
            a_hidl_a_qortvapi_html_agent_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_c_dai_tvapi_exchange_data(
            const hidl_vec<uint8_t>& data, a_hidl_c_dai_tvapi_exchange_data_cb _hidl_cb) override;

    // Metadata service, BML.
    Return<int32_t> a_hidl_a_qortvapi_mds_fvpMtdtOperator(const hidl_string& message) override;
    Return<void> a_hidl_a_qortvapi_mds_getValue(
            const hidl_string& message, int32_t item,
            a_hidl_a_qortvapi_mds_getValue_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_bml_get_current_state() override;

  private:
    Return<void> initRPC();
    Return<void> initCallback();

    sp<ClientDeathRecipient> mDeathRecipient;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
