// What is on the screen: screen saver, screen mode, zoom, overscan, frozen picture, banner,
// password dialog.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/banner.h"
#include "middleware/pwddlg.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/util.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Screen saver, screen mode, zoom and overscan.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_screensaver_get_msgID() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_screensaver_get_msgID();
}

Return<uint16_t> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_get_screen_mode() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint16_t>(a_qortvapi_screenmode_get_screen_mode());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_set_screen_mode(uint16_t screen_mode) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_screenmode_set_screen_mode(screen_mode);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_get_all_screen_mode(
        uint32_t count, a_hidl_a_qortvapi_screenmode_get_all_screen_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint16_t> modes(count);
    uint32_t reported = count;
    const int32_t result = a_qortvapi_screenmode_get_all_screen_mode(modes.data(), &reported);
    _hidl_cb(borrowedVector(modes.data(), modes.held(reported)), reported, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_get_number_screen_mode(
        a_hidl_a_qortvapi_screenmode_get_number_screen_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_screenmode_get_number_screen_mode);
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_zoom_is_enable() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_zoom_is_enable() != 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_set_crnt_overscan(uint32_t top,
                                                                             uint32_t bottom,
                                                                             uint32_t left,
                                                                             uint32_t right) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_screenmode_set_crnt_overscan(top, bottom, left, right);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_get_crnt_overscan(
        a_hidl_a_qortvapi_screenmode_get_crnt_overscan_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    uint32_t overscan[4] = {};
    const int32_t result = a_qortvapi_screenmode_get_crnt_overscan(&overscan[0], &overscan[1],
                                                                   &overscan[2], &overscan[3]);
    _hidl_cb(borrowedVector(overscan, 4), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_screenmode_update_overscan_ini() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_screenmode_update_overscan_ini();
}

// The frozen picture.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_freeze_set_freeze(const hidl_string& window,
                                                                  bool freeze) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_freeze_set_freeze(window.c_str(), freeze);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_freeze_is_freeze(const hidl_string& window) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_freeze_is_freeze(window.c_str());
}

// Banner, password dialog.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_banner_get_item_state(
        int32_t item, int32_t index, a_hidl_a_qortvapi_banner_get_item_state_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_banner_get_item_state, item, index);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_banner_get_item_id(
        int32_t item, int32_t index, a_hidl_a_qortvapi_banner_get_item_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_banner_get_item_id, item, index);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_banner_get_item_content(
        int32_t item, int32_t index, uint32_t length,
        a_hidl_a_qortvapi_banner_get_item_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerText content(length);
    const int32_t result = a_qortvapi_banner_get_item_content(item, index, content.data(), length);
    _hidl_cb(content.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_banner_get_item_content_len(
        int32_t item, int32_t index, a_hidl_a_qortvapi_banner_get_item_content_len_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_banner_get_item_content_len, item, index);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_PWDDLG_checkPWD(const hidl_string& password) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_PWDDLG_checkPWD(password.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_PWDDLG_show() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_PWDDLG_show();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
