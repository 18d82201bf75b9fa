// The set itself: its modes, its volume, what it shows on the screen, its software and files.
#define LOG_TAG "QorTvApiImpl(service)"

#include <cutils/properties.h>

#include <algorithm>

#include "QorTvApiImpl.h"
#include "bridge.h"
#include "hhandler/hh_qortvapi_upgrade.h"
#include "hhandler/hh_qortvapi_util.h"
#include "log.h"
#include "middleware/av_mode.h"
#include "middleware/banner.h"
#include "middleware/network.h"
#include "middleware/oad.h"
#include "middleware/parser.h"
#include "middleware/pwddlg.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/volctrl.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Wake on network.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_network_set_wifi_wol_ctrl(int32_t control) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_network_set_wifi_wol_ctrl(control);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_network_get_wifi_wol_ctrl(
        a_hidl_a_qortvapi_network_get_wifi_wol_ctrl_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_network_get_wifi_wol_ctrl);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_network_set_eth_wol_ctrl(int32_t control) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_network_set_eth_wol_ctrl(control);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_network_get_eth_wol_ctrl(
        a_hidl_a_qortvapi_network_get_eth_wol_ctrl_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_network_get_eth_wol_ctrl);
}

// Special mode and the closing of a client: reserved, answered with 0 and of no effect.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_enter_special_mode(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_quit_special_mode(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_query_special_mode_status(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_rpc_close_client() {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

// Utilities, the frozen picture.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_set(const hidl_string& name, int32_t kind,
                                                         const hidl_vec<uint8_t>& data,
                                                         uint64_t size) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_set(name.c_str(), kind, SentArray(data, size).data(), size);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_get(const hidl_string& name, int32_t kind,
                                                      const hidl_vec<uint8_t>& data, uint64_t size,
                                                      a_hidl_a_qortvapi_util_get_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_util_get(name, kind, data, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_get_sys_version(
        int32_t kind, a_hidl_a_qortvapi_util_get_sys_version_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<100> version;
    const int32_t result = a_qortvapi_util_get_sys_version(kind, version.data());
    _hidl_cb(version.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_open_diag(
        bool flag, a_hidl_a_qortvapi_util_tuner_fac_open_diag_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_util_tuner_fac_open_diag, flag);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_close_diag(bool flag) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_tuner_fac_close_diag(flag);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_query_diag(
        bool flag, uint64_t size, a_hidl_a_qortvapi_util_tuner_fac_query_diag_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_util_tuner_fac_query_diag(flag, size, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_set_android_osd_opacity(uint32_t opacity) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_set_android_osd_opacity(opacity);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_start_native_app(uint8_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_start_native_app(app);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_freeze_set_freeze(const hidl_string& window,
                                                                  bool freeze) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_freeze_set_freeze(window.c_str(), freeze);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_freeze_is_freeze(const hidl_string& window) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_freeze_is_freeze(window.c_str());
}

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

// Picture and sound modes.

Return<uint16_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_picture_mode() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint16_t>(a_qortvapi_av_mode_get_picture_mode());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_set_picture_mode(uint16_t picture_mode) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_av_mode_set_picture_mode(picture_mode);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_all_picture_mode(
        uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_picture_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint16_t> modes(count);
    const int32_t result = a_qortvapi_av_mode_get_all_picture_mode(modes.data(), count);
    _hidl_cb(borrowedVector(modes.data(), count), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_number_picture_mode(
        a_hidl_a_qortvapi_av_mode_get_number_picture_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_av_mode_get_number_picture_mode);
}

Return<uint16_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_sound_effect() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint16_t>(a_qortvapi_av_mode_get_sound_effect());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_set_sound_effect(uint16_t sound_effect) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_av_mode_set_sound_effect(sound_effect);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_all_sound_effect(
        uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_sound_effect_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint16_t> effects(count);
    const int32_t result = a_qortvapi_av_mode_get_all_sound_effect(effects.data(), count);
    _hidl_cb(borrowedVector(effects.data(), count), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_number_sound_effect(
        a_hidl_a_qortvapi_av_mode_get_number_sound_effect_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_av_mode_get_number_sound_effect);
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

// Volume.

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_incrVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_incrVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_incrVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_incrVolume_by_type(type));
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_decrVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_decrVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_decrVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_decrVolume_by_type(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setVolume(int16_t volume) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setVolume(volume);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setVolume_by_type(int32_t type,
                                                                          int16_t volume) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setVolume_by_type(type, volume);
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_getVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_getVolume_by_type(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setMute(bool mute) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setMute(mute);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setMute_by_type(int32_t type, bool mute) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setMute_by_type(type, mute);
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getMute() {
    TVAPI_DEBUG("%s", __func__);
    // On purpose no question about mute: applications rely on true for any volume but 0.
    return a_qortvapi_volctrl_getVolume() != 0;
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getMute_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_getMute_by_type(type) != 0;
}

// Over-the-air download.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_start_manual_detect() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_start_manual_detect();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_oad_get_scheduleinfo(
        a_hidl_a_qortvapi_oad_get_scheduleinfo_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<200> schedule;
    const int32_t result = a_qortvapi_oad_get_scheduleinfo(schedule.data(), schedule.size());
    _hidl_cb(schedule.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_oad_get_datainfo(
        int32_t item, a_hidl_a_qortvapi_oad_get_datainfo_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<200> info;
    const int32_t result = a_qortvapi_oad_get_datainfo(item, info.data(), info.size());
    _hidl_cb(info.forClient(), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_stop_manual_detect() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_stop_manual_detect();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_start_download() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_start_download();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_stop_download() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_stop_download();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_set_auto_download(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_set_auto_download(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_start_flash() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_start_flash();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_accept_restart() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_accept_restart();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_remind_me_later() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_remind_me_later();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_accept_schedule() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_accept_schedule();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_start_jump_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_start_jump_channel();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_get_power_on_status() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_get_power_on_status();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_set_pkg_pathname(const hidl_string& path) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_set_pkg_pathname(path.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_clear_version() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_clear_version();
}

// Software upgrade.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_start(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type, bool force) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_start(static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type), force);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_trigger(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_trigger(static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_get_firmware_info(
        a_hidl_a_qortvapi_upgrade_get_firmware_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_UPGRADE_FW_INFO_T info{};
    const int32_t result = a_qortvapi_upgrade_get_firmware_info(&info);
    _hidl_cb(toInterface(info), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_get_item_info(
        uint32_t index, a_hidl_a_qortvapi_upgrade_get_item_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_UPGRADE_ITEM_T item{};
    const int32_t result = a_qortvapi_upgrade_get_item_info(index, &item);
    _hidl_cb(toInterface(item), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_start_download_firmware(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type, const hidl_string& url, const hidl_string& path) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_start_download_firmware(
            static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type), url.c_str(), path.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_cancel_download_firmware(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_cancel_download_firmware(
            static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_start_reboot_upgrade(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_start_reboot_upgrade(
            static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_query_upgrade_result(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_query_upgrade_result(
            static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_is_supported(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type,
        a_hidl_a_qortvapi_upgrade_is_supported_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_upgrade_is_supported,
                      static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_check_update(
        HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_check_update(static_cast<QORTVAPI_UPGRADE_DLIVRY_TYPE_T>(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_upgrade_set(HIDL_QORTVAPI_UPGRADE_SET_TYPE_T type,
                                                            const hidl_vec<uint32_t>& ids,
                                                            uint32_t count,
                                                            const hidl_vec<uint32_t>& values) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_upgrade_set(static_cast<QORTVAPI_UPGRADE_SET_TYPE_T>(type),
                                  SentArray(ids, count).data(), count,
                                  SentArray(values, count).data());
}

// Configuration files and system properties.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_base_config_file_path(
        int16_t length, a_hidl_a_qortvapi_get_base_config_file_path_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerText path(length);
    const int32_t result = a_qortvapi_get_base_config_file_path(path.data(), length);
    _hidl_cb(path.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_signed_config_data(
        const hidl_string& file, const hidl_string& key,
        a_hidl_a_qortvapi_parser_get_signed_config_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_parser_get_signed_config_data, file.c_str(), key.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_string_config_data(
        const hidl_string& file, const hidl_string& key, int16_t length,
        a_hidl_a_qortvapi_parser_get_string_config_data_cb _hidl_cb) {
    TVAPI_DEBUG(
            "Enter.a_hidl_a_qortvapi_parser_get_string_config_data,s_file_path:%s,s_key_name:%s",
            file.c_str(), key.c_str());
    const CallerText value(length);
    const int32_t result = a_qortvapi_parser_get_string_config_data(file.c_str(), key.c_str(),
                                                                    value.data(), length);
    _hidl_cb(value.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_value(
        const hidl_string& key, a_hidl_a_qortvapi_parser_get_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_parser_get_value, key.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_string(
        const hidl_string& key, a_hidl_a_qortvapi_parser_get_string_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<256> value;
    uint32_t length = 0;
    const int32_t result = a_qortvapi_parser_get_string(key.c_str(), value.data(), &length);
    _hidl_cb(value.forClient(), length, result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_tvapi_set_property(const hidl_string& key,
                                                        const hidl_string& value) {
    TVAPI_DEBUG("%s", __func__);
    return property_set(key.c_str(), value.c_str());
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
