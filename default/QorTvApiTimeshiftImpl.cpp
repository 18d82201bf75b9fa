#define LOG_TAG "QorTvApiTimeshiftImpl(service)"

#include "QorTvApiTimeshiftImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/timeshift.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

QorTvApiTimeshiftImpl::QorTvApiTimeshiftImpl() {
    TVAPI_DEBUG("QorTvApiTimeshiftImpl");
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_registerdevice_schedule() {
    return a_qortvapi_timeshift_get_registerdevice_schedule();
}

Return<int64_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_duration() {
    return a_qortvapi_timeshift_get_duration();
}

Return<int64_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_position() {
    return a_qortvapi_timeshift_get_position();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_registerDevice(
        const hidl_string& path, int64_t size) {
    return a_qortvapi_timeshift_registerDevice(path.c_str(), size);
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_start() {
    return a_qortvapi_timeshift_start();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_stop() {
    return a_qortvapi_timeshift_stop();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_play() {
    return a_qortvapi_timeshift_play();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_pause() {
    return a_qortvapi_timeshift_pause();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_seek(int32_t seconds) {
    return a_qortvapi_timeshift_seek(seconds);
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_trickplay(int32_t speed) {
    return a_qortvapi_timeshift_trickplay(speed);
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_device_status() {
    return a_qortvapi_timeshift_get_device_status();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_error_id() {
    return a_qortvapi_timeshift_get_error_id();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_record_status() {
    return a_qortvapi_timeshift_get_record_status();
}

Return<int64_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_current_position() {
    return a_qortvapi_timeshift_get_current_position();
}

Return<int64_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_get_start_position() {
    return a_qortvapi_timeshift_get_start_position();
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_set_auto_record(bool enabled) {
    return a_qortvapi_timeshift_set_auto_record(enabled);
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_set_play_before_full(
        bool enabled) {
    return a_qortvapi_timeshift_set_play_before_full(enabled);
}

Return<int32_t> QorTvApiTimeshiftImpl::a_hidl_a_qortvapi_timeshift_stop_ex(
        HIDL_TIMESHIFT_STOP_FLAG flag) {
    return a_qortvapi_timeshift_stop_ex(static_cast<TIMESHIFT_STOP_FLAG>(flag));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
