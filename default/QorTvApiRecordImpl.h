/** Recording: recordings by their handles, the disk, schedules. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRecord.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiRecordImpl : public IQorTvApiRecord {
  public:
    QorTvApiRecordImpl();

    // Events of recordings.
    Return<int32_t> a_hidl_a_qortvapi_pvr_set_event(uint32_t event, uint32_t argument) override;
    Return<int32_t> a_hidl_a_qortvapi_pvr_set_event_extra(uint32_t event, uint32_t argument1,
                                                          uint32_t argument2,
                                                          const hidl_string& text) override;
    Return<int32_t> a_hidl_a_qortvapi_pvr_get_booking_count() override;

    // Files and disk. Sizes are MiB.
    /** Passes `length` on unchanged. The buffer holds 256 bytes, however large `length` is. */
    Return<void> a_hidl_a_qortvapi_record_pvr_get_recording_file_name(
            uint32_t recording, uint32_t length,
            a_hidl_a_qortvapi_record_pvr_get_recording_file_name_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_record_create_register_file(const hidl_string& path) override;
    /** The middleware gets a reference to `registered`; the client does not learn what it writes.
     */
    Return<int32_t> a_hidl_a_qortvapi_record_check_register_file(const hidl_string& path,
                                                                 bool registered) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_error_id(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_disk_total_size(uint32_t disk) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_disk_free_size(uint32_t disk) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_recording_file_size(
            uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_del_schedule_record(int32_t id) override;
    Return<int32_t> a_hidl_a_qortvapi_get_recording_position(uint32_t recording) override;

    // Recordings.
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_set_mode(uint32_t recording, int32_t mode,
                                                          uint32_t argument,
                                                          int32_t value) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_mode(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_hdd_speed_test(const hidl_string& path,
                                                            int32_t size) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_set_recording_file_name(
            uint32_t recording, const hidl_string& name) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_open(int32_t source) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_close(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_start(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_stop(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_status(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_source_type(uint32_t recording) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_get_current_handle() override;
    /** Ends the process if there is no memory for `length` bytes and a NUL. */
    Return<void> a_hidl_a_qortvapi_record_pvr_get_disk(
            uint32_t disk, uint32_t length,
            a_hidl_a_qortvapi_record_pvr_get_disk_cb _hidl_cb) override;

    // Schedules: records of 248 bytes.
    /** Only the first 248 bytes of a longer `record` count; a shorter one is filled with zeros. */
    Return<int32_t> a_hidl_a_qortvapi_set_schedule_record(const hidl_vec<uint8_t>& record,
                                                          int32_t operation) override;
    Return<void> a_hidl_a_qortvapi_get_schedule_record(
            int32_t index, a_hidl_a_qortvapi_get_schedule_record_cb _hidl_cb) override;
    /** A source has at most 72 bytes; a longer one ends the process. */
    Return<bool> a_hidl_a_qortvapi_record_pvr_chk_src_conflict(
            const hidl_vec<uint8_t>& source, const hidl_vec<uint8_t>& other_source) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_set_disk(
            uint32_t disk, const hidl_string& path,
            const HIDL_RECORD_DEV_PARAM_T& parameter) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_open_ex(int32_t source, bool background) override;
    Return<int32_t> a_hidl_a_qortvapi_record_pvr_select_svc(uint32_t recording, uint32_t channel_id,
                                                            uint16_t svl_id) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
