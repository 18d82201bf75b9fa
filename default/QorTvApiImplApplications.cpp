#define LOG_TAG "QorTvApiImpl(service)"

#include <algorithm>

#include "QorTvApiImpl.h"
#include "bridge.h"
#include "hhandler/hh_hbbtv.h"
#include "hhandler/hh_qortvapi_dai.h"
#include "hhandler/hh_qortvapi_hbbtv.h"
#include "hhandler/hh_qortvapi_html_agent.h"
#include "hhandler/hh_qortvapi_mheg5.h"
#include "log.h"
#include "middleware/apptv.h"
#include "middleware/bml.h"
#include "middleware/ginga.h"
#include "middleware/highlevel.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** The middleware's record of a Ginga application, which only the clients look into. */
struct GingaApplication {
    uint8_t bytes[284];
};

}  // namespace

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_start_tv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_start_tv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_tv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_tv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_generic_function(uint32_t id,
                                                                           uint32_t param1,
                                                                           uint32_t param2) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_generic_function(id, param1, param2);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_argument_test(
        int32_t arg1, int32_t arg2, const HIDL_QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1& structure,
        a_hidl_a_qortvapi_highlevel_argument_test_cb _hidl_cb) {
    QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1 local{structure.value1, structure.value2, structure.value3};
    const int32_t result = a_qortvapi_highlevel_argument_test(arg1, arg2, &local);
    TVAPI_DEBUG("%d %d", arg1, arg2);
    _hidl_cb({local.ui4_value1, local.ui4_value2, local.ui4_value3}, result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_3rd_party(uint8_t window,
                                                                           bool keep_tv,
                                                                           uint32_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_3rd_party(window, keep_tv, app);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_internal_ap(uint8_t window,
                                                                             bool keep_tv,
                                                                             uint32_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_internal_ap(window, keep_tv, app);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_hbbtv(
        const hidl_string& url, const hidl_string& app_id, const hidl_string& parameters) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_hbbtv(url.c_str(), app_id.c_str(), parameters.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_all() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_all();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_hbbtv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_hbbtv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_set_displayregion(int32_t window,
                                                                            uint32_t x, uint32_t y,
                                                                            uint32_t width,
                                                                            uint32_t height) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_set_displayregion(window, x, y, width, height);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_set_viewport(bool enable, int32_t x,
                                                                       int32_t y, int32_t width,
                                                                       int32_t height) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_set_viewport(enable, x, y, width, height);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_is_in_3rd_party_mode() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_is_in_3rd_party_mode();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_get_current_tv_mode() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_get_current_tv_mode();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_generic_function_ex(
        uint32_t id, uint32_t param1, uint32_t param2, const hidl_vec<uint8_t>& data,
        a_hidl_a_qortvapi_highlevel_generic_function_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    // The middleware works on a copy that is thrown away: clients get back what they sent.
    hidl_vec<uint8_t> copy(data);
    const int32_t result = a_qortvapi_highlevel_generic_function_ex(
            id, &param1, &param2, copy.data(), static_cast<uint32_t>(copy.size()));
    _hidl_cb(param1, param2, data, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_get_market_region(
        a_hidl_a_qortvapi_highlevel_get_market_region_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_highlevel_get_market_region);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_set_audio(uint16_t index) {
    return hh_c_opera_hbbtv_stm_set_audio(index);
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio(
        a_hidl_c_opera_hbbtv_stm_get_audio_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio();
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio_lang(
        uint16_t index, a_hidl_c_opera_hbbtv_stm_get_audio_lang_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio_lang(index);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio_num(
        a_hidl_c_opera_hbbtv_stm_get_audio_num_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio_num();
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_default_subtitle_lang(
        const hidl_string& language, int32_t type) {
    return hh_c_opera_hbbtv_set_default_subtitle_lang(language, type);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_default_audio_lang(
        const hidl_string& language) {
    return hh_c_opera_hbbtv_set_default_audio_lang(language);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_audio_desc(bool enable) {
    return hh_c_opera_hbbtv_set_audio_desc(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_stm_set_audio(uint16_t index) {
    return hh_c_hbbtv_stm_set_audio(index);
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio(a_hidl_c_hbbtv_stm_get_audio_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio_lang(
        uint16_t index, a_hidl_c_hbbtv_stm_get_audio_lang_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio_lang(index, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio_num(
        a_hidl_c_hbbtv_stm_get_audio_num_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio_num(_hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_default_subtitle_lang(const hidl_string& language,
                                                                       int32_t type) {
    return hh_c_hbbtv_set_default_subtitle_lang(language, type);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_default_audio_lang(const hidl_string& language) {
    return hh_c_hbbtv_set_default_audio_lang(language);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_audio_desc(bool enable) {
    return hh_c_hbbtv_set_audio_desc(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_startApplication(const hidl_string& app_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_startApplication(app_id.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_stopApplication(const hidl_string& app_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_stopApplication(app_id.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_getApplicationInfo();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_startGinga() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_startGinga();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_stopGinga() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_stopGinga();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_warning_start_cc(bool start) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_warning_start_cc(start);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_warning_start_ginga_app(bool start) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_warning_start_ginga_app(start);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationNum(
        a_hidl_a_qortvapi_ginga_getApplicationNum_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_ginga_getApplicationNum);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo_ex(
        uint32_t count, a_hidl_a_qortvapi_ginga_getApplicationInfo_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<GingaApplication> records(count, CallerArray<GingaApplication>::kOptional);
    if (records.data() == nullptr) {
        TVAPI_LOG("allocte memory fail (in a_hidl_a_qortvapi_ginga_getApplicationInfo_ex) !!!!\n");
        return Void();
    }
    uint32_t reported = count;
    const int32_t result = a_qortvapi_ginga_getApplicationInfo_ex(records.data(), &reported);
    _hidl_cb(borrowedBytes(records.data(), records.held(reported) * sizeof(GingaApplication)),
             reported, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_is_enable_screen_mode(
        bool query, a_hidl_a_qortvapi_ginga_is_enable_screen_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    uint8_t enabled = 0;
    const int32_t result = a_qortvapi_ginga_is_enable_screen_mode(query, &enabled);
    _hidl_cb(result, enabled != 0);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_save_timestamp(const hidl_string& name) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_save_timestamp(name.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_set_tv_started(bool started) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_set_tv_started(started);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_unlock_service(const hidl_string& window) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_unlock_service(window.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_get_matched_channel(int16_t svl_id,
                                                                          bool one_part,
                                                                          int32_t major,
                                                                          int32_t minor) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_get_matched_channel(svl_id, one_part, major, minor);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_nav_update_sys_status_by_win(
        const hidl_string& window, HIDL_QORTVAPI_APPTV_SYS_STATUS_T status) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_nav_update_sys_status_by_win(
            window.c_str(), static_cast<QORTVAPI_APPTV_SYS_STATUS_T>(status));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_update_sys_status(
        HIDL_QORTVAPI_APPTV_SYS_STATUS_T status) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_update_sys_status(static_cast<QORTVAPI_APPTV_SYS_STATUS_T>(status));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_start_tv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_start_tv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_stop_all() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_stop_all();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_get_current_channel_svc_text_len() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_get_current_channel_svc_text_len();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_apptv_get_current_channel_svc_text(
        int32_t length, a_hidl_a_qortvapi_apptv_get_current_channel_svc_text_cb _hidl_cb) {
    // Clients were built against an empty text: the middleware is asked for its result alone.
    const int32_t result = a_qortvapi_apptv_get_current_channel_svc_text(nullptr, length);
    TVAPI_DEBUG("file_path:%s,i4_len:%d,i4_ret = %d\n", "(null)", length, result);
    _hidl_cb(hidl_string(), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_unblock_svc(const hidl_string& window,
                                                                  bool unblock) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_unblock_svc(window.c_str(), unblock);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_swap_tmp_unlock_info(int32_t info) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_swap_tmp_unlock_info(info);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_apptv_set_video_mute(const hidl_string& window,
                                                                     bool mute) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_set_video_mute(window.c_str(), mute);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_apptv_get_capability_ex(
        int32_t item, a_hidl_a_qortvapi_apptv_get_capability_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_apptv_get_capability_ex, item);
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_apptv_get_video_mute(const hidl_string& window) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_apptv_get_video_mute(window.c_str()) != 0;
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_hbbtv_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_a_qortvapi_hbbtv_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_hbbtv_exchange_data(data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_current_channel(
        a_hidl_a_qortvapi_mheg5_get_current_channel_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_current_channel(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_pfg_info_len(
        a_hidl_a_qortvapi_mheg5_get_pfg_info_len_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_pfg_info_len(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_pfg_info(
        uint32_t length, a_hidl_a_qortvapi_mheg5_get_pfg_info_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_pfg_info(length, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_internal_scrn(
        a_hidl_a_qortvapi_mheg5_get_internal_scrn_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_internal_scrn(_hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_pfg_result(bool right) {
    return hh_a_qortvapi_mheg5_set_pfg_result(right);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_hbbtv_status(uint32_t id, bool success) {
    return hh_a_qortvapi_mheg5_set_hbbtv_status(id, success);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_enabled() {
    return hh_a_qortvapi_mheg5_enabled();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_disabled() {
    return hh_a_qortvapi_mheg5_disabled();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_mheg5_status(int32_t type, int32_t arg1,
                                                                       int32_t arg2, int32_t arg3) {
    return hh_a_qortvapi_mheg5_set_mheg5_status(type, arg1, arg2, arg3);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_html_agent_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_a_qortvapi_html_agent_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_html_agent_exchange_data(data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_dai_tvapi_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_c_dai_tvapi_exchange_data_cb /*_hidl_cb*/) {
    hh_c_dai_tvapi_exchange_data(data);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_bml_get_current_state() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bml_get_current_state();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
