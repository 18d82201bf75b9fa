/** Time-shifted playback of the current channel. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiTimeshift.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiTimeshiftImpl : public IQorTvApiTimeshift {
  public:
    QorTvApiTimeshiftImpl();

    Return<int32_t> a_hidl_a_qortvapi_timeshift_get_registerdevice_schedule() override;
    Return<int64_t> a_hidl_a_qortvapi_timeshift_get_duration() override;
    Return<int64_t> a_hidl_a_qortvapi_timeshift_get_position() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_registerDevice(const hidl_string& path,
                                                               int64_t size) override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_start() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_stop() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_play() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_pause() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_seek(int32_t seconds) override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_trickplay(int32_t speed) override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_get_device_status() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_get_error_id() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_get_record_status() override;
    Return<int64_t> a_hidl_a_qortvapi_timeshift_get_current_position() override;
    Return<int64_t> a_hidl_a_qortvapi_timeshift_get_start_position() override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_set_auto_record(bool enabled) override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_set_play_before_full(bool enabled) override;
    Return<int32_t> a_hidl_a_qortvapi_timeshift_stop_ex(HIDL_TIMESHIFT_STOP_FLAG flag) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
