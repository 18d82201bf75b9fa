/** The recordings on the disk, by the path of the file or by the index in the list, from 0. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiPvrbrowser.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method, with one exception, calls the middleware function of its name without the prefix
 * `a_hidl_`. Numbers of 64 bits are the middleware's signed numbers of 32 bits, sign-extended: -1
 * becomes all ones. A text has at most the characters that fit in the middleware's buffer for it.
 * There is no state: any number of threads may call at a time.
 */
class QorTvApiPvrbrowserImpl : public IQorTvApiPvrbrowser {
  public:
    QorTvApiPvrbrowserImpl();

    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_item_path_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_item_path_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_num(
            a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_num_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_name(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_name_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_item_count(
            a_hidl_a_qortvapi_mmp_get_pvr_browser_item_count_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_info(
            a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_mmp_pvr_browser_delete_file_by_index(uint32_t index) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_first_rating_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_first_rating_by_index_cb _hidl_cb) override;
    /** Calls the function for the first rating by path: the middleware has none for the retention
     * by path. */
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_path(
            const hidl_string& path,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_path_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_index(
            int32_t index,
            a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_index_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
