// The TV application.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/apptv.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
