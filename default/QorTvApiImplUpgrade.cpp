// Upgrades of the set's software: over the air, and from a file system or the internet.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_upgrade.h"
#include "log.h"
#include "middleware/oad.h"
#include "middleware/upgrade.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

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

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_oad_clear_version() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_oad_clear_version();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_set_pkg_pathname(const hidl_string& path) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_set_pkg_pathname(path.c_str());
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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
