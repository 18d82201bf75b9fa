#define LOG_TAG "QorTvApiPvrbrowserImpl(service)"

#include "QorTvApiPvrbrowserImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/mmp.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// Sizes of the buffers for the texts that the middleware writes, in bytes with the NUL.
constexpr size_t kNameSize = 257;  // of names and paths, and of every text that is read by path
constexpr size_t kDateSize = 16;
constexpr size_t kTimeSize = 16;
constexpr size_t kWeekDaySize = 6;

/** Answers with the text that `function` writes for `recording`, at most `Size` - 1 characters. */
template <size_t Size, typename Callback, typename Recording>
Return<void> answerText(const Callback& callback, int32_t (*function)(Recording, char*),
                        Recording recording) {
    char text[Size] = {};
    const int32_t result = function(recording, text);
    text[Size - 1] = '\0';  // the middleware may have filled the buffer to its end
    callback(borrowedText(text), result);
    return Void();
}

/** Answers with the number that `function` writes for `recording`, sign-extended. */
template <typename Callback, typename Recording>
Return<void> answerWide(const Callback& callback, int32_t (*function)(Recording, int32_t*),
                        Recording recording) {
    int32_t number = 0;
    const int32_t result = function(recording, &number);
    callback(static_cast<uint64_t>(int64_t{number}), result);
    return Void();
}

}  // namespace

QorTvApiPvrbrowserImpl::QorTvApiPvrbrowserImpl() {
    TVAPI_DEBUG("QorTvApiPvrbrowserImpl");
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_path_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelid_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_path_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelname_by_path,
                                 path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_path_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_duration_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_path_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_programname_by_path,
                                 path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_path_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_start_time_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_item_path_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_item_path_by_index_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_item_path_by_index,
                                 index);
}

Return<void>
QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index(
        int32_t index,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index, index);
}

Return<void>
QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index(
        int32_t index,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_channelname_by_index_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelname_by_index,
                                 index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_duration_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_duration_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_start_time_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_start_time_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_programname_by_index_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_programname_by_index,
                                 index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_index_cb _hidl_cb) {
    return answerText<kDateSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_date_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_index_cb _hidl_cb) {
    return answerText<kTimeSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_time_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_channelid_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelid_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_index_cb _hidl_cb) {
    return answerText<kWeekDaySize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_week_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_num(
        a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_num_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_recording_file_num);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_name(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_name_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_recording_file_name,
                                 index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_path(
        const hidl_string& path, a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_path_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_item_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_index_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_item_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_item_count(
        a_hidl_a_qortvapi_mmp_get_pvr_browser_item_count_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_item_count);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_info(
        a_hidl_a_qortvapi_mmp_get_pvr_browser_recording_file_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_recording_file_info);
}

Return<int32_t> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_pvr_browser_delete_file_by_index(
        uint32_t index) {
    return a_qortvapi_mmp_pvr_browser_delete_file_by_index(index);
}

Return<void>
QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path,
                  path.c_str());
}

Return<void>
QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path,
                  path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_path(
        const hidl_string& path, a_hidl_a_qortvapi_mmp_get_pvr_browser_date_by_path_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_date_by_path,
                                 path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_path(
        const hidl_string& path, a_hidl_a_qortvapi_mmp_get_pvr_browser_week_by_path_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_week_by_path,
                                 path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_path(
        const hidl_string& path, a_hidl_a_qortvapi_mmp_get_pvr_browser_time_by_path_cb _hidl_cb) {
    return answerText<kNameSize>(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_time_by_path,
                                 path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_first_rating_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_first_rating_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_first_rating_by_index, index);
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_path(
        const hidl_string& path,
        a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_path_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_first_rating_by_path, path.c_str());
}

Return<void> QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_index(
        int32_t index, a_hidl_a_qortvapi_mmp_get_pvr_browser_retention_by_index_cb _hidl_cb) {
    return answerWide(_hidl_cb, a_qortvapi_mmp_get_pvr_browser_retention_by_index, index);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
