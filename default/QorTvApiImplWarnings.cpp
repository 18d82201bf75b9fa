// Warnings that are broadcast: emergency alerts and warning announcements.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_ews_pa.h"
#include "log.h"
#include "middleware/eas.h"
#include "middleware/ewspa.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Emergency alerts.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_eas_get_status(
        a_hidl_a_qortvapi_eas_get_status_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_eas_get_status);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_set_android_launch_status(bool launched) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_set_android_launch_status(launched);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_get_android_launch_status() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_get_android_launch_status();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(
        bool keep_channel) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(keep_channel);
}

// Warning announcements.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_set(uint8_t type, uint32_t id,
                                                       const hidl_vec<int32_t>& values,
                                                       a_hidl_a_qortvapi_ewspa_set_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_ewspa_set(type, id, values, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_get(uint8_t type, uint32_t id,
                                                       const hidl_vec<int32_t>& values,
                                                       a_hidl_a_qortvapi_ewspa_get_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_ewspa_get(type, id, values, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_create_monitor_inst(uint8_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ewspa_create_monitor_inst(type);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_delete_monitor_inst(uint8_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ewspa_delete_monitor_inst(type);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
