#define LOG_TAG "QorTvApiRecordImpl(service)"

#include "QorTvApiRecordImpl.h"

#include <algorithm>

#include "bridge.h"
#include "log.h"
#include "middleware/record.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

RECORD_DEV_PARAM_T toMiddleware(const HIDL_RECORD_DEV_PARAM_T& parameter) {
    RECORD_DEV_PARAM_T result{};
    result.ui8_size = parameter.size;
    result.ui8_timeshift_size = parameter.timeshift_size;
    result.ui4_flags = parameter.flags;
    return result;
}

}  // namespace

QorTvApiRecordImpl::QorTvApiRecordImpl() {
    TVAPI_DEBUG("QorTvApiRecordImpl");
}

// Events of recordings.

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_pvr_set_event(uint32_t event,
                                                                    uint32_t argument) {
    return a_qortvapi_pvr_set_event(event, argument);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_pvr_set_event_extra(uint32_t event,
                                                                          uint32_t argument1,
                                                                          uint32_t argument2,
                                                                          const hidl_string& text) {
    return a_qortvapi_pvr_set_event_extra(event, argument1, argument2, text.c_str());
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_pvr_get_booking_count() {
    return a_qortvapi_pvr_get_booking_count();
}

// Files and disk. Sizes are MiB.

Return<void> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_recording_file_name(
        uint32_t recording, uint32_t length,
        a_hidl_a_qortvapi_record_pvr_get_recording_file_name_cb _hidl_cb) {
    FixedText<256> name;
    const int32_t result =
            a_qortvapi_record_pvr_get_recording_file_name(recording, name.data(), length);
    _hidl_cb(name.forClient(), result);
    return Void();
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_create_register_file(
        const hidl_string& path) {
    return a_qortvapi_record_create_register_file(path.c_str());
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_check_register_file(
        const hidl_string& path, bool registered) {
    return a_qortvapi_record_check_register_file(path.c_str(), &registered);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_error_id(uint32_t recording) {
    return a_qortvapi_record_pvr_get_error_id(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_disk_total_size(
        uint32_t disk) {
    return a_qortvapi_record_pvr_get_disk_total_size(disk);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_disk_free_size(uint32_t disk) {
    return a_qortvapi_record_pvr_get_disk_free_size(disk);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_recording_file_size(
        uint32_t recording) {
    return a_qortvapi_record_pvr_get_recording_file_size(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_del_schedule_record(int32_t id) {
    return a_qortvapi_del_schedule_record(id);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_get_recording_position(uint32_t recording) {
    return a_qortvapi_get_recording_position(recording);
}

// Recordings.

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_set_mode(uint32_t recording,
                                                                          int32_t mode,
                                                                          uint32_t argument,
                                                                          int32_t value) {
    return a_qortvapi_record_pvr_set_mode(recording, mode, argument, value);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_mode(uint32_t recording) {
    return a_qortvapi_record_pvr_get_mode(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_hdd_speed_test(const hidl_string& path,
                                                                            int32_t size) {
    return a_qortvapi_record_hdd_speed_test(path.c_str(), size);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_set_recording_file_name(
        uint32_t recording, const hidl_string& name) {
    return a_qortvapi_record_pvr_set_recording_file_name(recording, name.c_str());
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_open(int32_t source) {
    return a_qortvapi_record_pvr_open(source);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_close(uint32_t recording) {
    return a_qortvapi_record_pvr_close(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_start(uint32_t recording) {
    return a_qortvapi_record_pvr_start(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_stop(uint32_t recording) {
    return a_qortvapi_record_pvr_stop(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_status(uint32_t recording) {
    return a_qortvapi_record_pvr_get_status(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_source_type(
        uint32_t recording) {
    return a_qortvapi_record_pvr_get_source_type(recording);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_current_handle() {
    return a_qortvapi_record_pvr_get_current_handle();
}

Return<void> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_get_disk(
        uint32_t disk, uint32_t length, a_hidl_a_qortvapi_record_pvr_get_disk_cb _hidl_cb) {
    const CallerText path(length);
    const int32_t result = a_qortvapi_record_pvr_get_disk(disk, path.data(), length);
    _hidl_cb(path.forClient(), result);
    return Void();
}

// Schedules: records of 248 bytes.

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_set_schedule_record(
        const hidl_vec<uint8_t>& record, int32_t operation) {
    SCHEDULE_RECORD_T schedule{};
    std::copy_n(record.data(), std::min(record.size(), sizeof(schedule)),
                reinterpret_cast<uint8_t*>(&schedule));
    return a_qortvapi_set_schedule_record(&schedule, operation);
}

Return<void> QorTvApiRecordImpl::a_hidl_a_qortvapi_get_schedule_record(
        int32_t index, a_hidl_a_qortvapi_get_schedule_record_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_get_schedule_record, index);
}

Return<bool> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_chk_src_conflict(
        const hidl_vec<uint8_t>& source, const hidl_vec<uint8_t>& other_source) {
    return a_qortvapi_record_pvr_chk_src_conflict(InputImage<RECORD_SOURCE_T>(source),
                                                  InputImage<RECORD_SOURCE_T>(other_source)) != 0;
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_set_disk(
        uint32_t disk, const hidl_string& path, const HIDL_RECORD_DEV_PARAM_T& parameter) {
    const RECORD_DEV_PARAM_T record = toMiddleware(parameter);
    return a_qortvapi_record_pvr_set_disk(disk, path.c_str(), &record);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_open_ex(int32_t source,
                                                                         bool background) {
    return a_qortvapi_record_pvr_open_ex(source, background);
}

Return<int32_t> QorTvApiRecordImpl::a_hidl_a_qortvapi_record_pvr_select_svc(uint32_t recording,
                                                                            uint32_t channel_id,
                                                                            uint16_t svl_id) {
    return a_qortvapi_record_pvr_select_svc(recording, channel_id, svl_id);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
