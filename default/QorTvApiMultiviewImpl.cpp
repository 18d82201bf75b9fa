#define LOG_TAG "QorTvApiMultiviewImpl(service)"

#include "QorTvApiMultiviewImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/multiview.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

QORTVAPI_MULTIVIEW_REGION_T toMiddleware(const HIDL_QORTVAPI_MULTIVIEW_REGION_T& region) {
    static_assert(sizeof(HIDL_QORTVAPI_MULTIVIEW_REGION_T) == sizeof(QORTVAPI_MULTIVIEW_REGION_T));
    QORTVAPI_MULTIVIEW_REGION_T record{};
    record.ui4_x = region.x;
    record.ui4_y = region.y;
    record.ui4_width = region.width;
    record.ui4_height = region.height;
    return record;
}

}  // namespace

QorTvApiMultiviewImpl::QorTvApiMultiviewImpl() {
    TVAPI_DEBUG("QorTvApiMultiviewImpl");
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_getPOPTunerFocus() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_getPOPTunerFocus();
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_setAudioFocusbySourceid(
        uint8_t source_id) {
    TVAPI_DEBUG("ARG=[%d].", source_id);
    return a_qortvapi_multiview_setAudioFocusbySourceid(source_id);
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_setAudioFocus(
        const hidl_string& video_path) {
    return a_qortvapi_multiview_setAudioFocus(video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_getAudioFocus() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_getAudioFocus();
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_setNewTvMode(uint8_t mode) {
    TVAPI_DEBUG("ARG=[%d].", mode);
    return a_qortvapi_multiview_setNewTvMode(mode);
}

Return<void>
QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_is_source_available_bysourceidandpath(
        uint8_t source_id, const hidl_string& video_path,
        a_hidl_a_qortvapi_multiview_is_source_available_bysourceidandpath_cb _hidl_cb) {
    TVAPI_DEBUG("ARG=[%d].", source_id);
    return answerFlag(_hidl_cb, a_qortvapi_multiview_is_source_available_bysourceidandpath,
                      source_id, video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_startMainVideo(
        uint8_t source_id, const HIDL_QORTVAPI_MULTIVIEW_REGION_T& region) {
    TVAPI_DEBUG("ARG=[%d].", source_id);
    const QORTVAPI_MULTIVIEW_REGION_T record = toMiddleware(region);
    return a_qortvapi_multiview_startMainVideo(source_id, &record);
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_startSubVideo(
        uint8_t source_id, const HIDL_QORTVAPI_MULTIVIEW_REGION_T& region) {
    TVAPI_DEBUG("ARG=[%d].", source_id);
    const QORTVAPI_MULTIVIEW_REGION_T record = toMiddleware(region);
    return a_qortvapi_multiview_startSubVideo(source_id, &record);
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_stopMainVideo() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_stopMainVideo();
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_stopSubVideo() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_stopSubVideo();
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_startVideoWithoutVideoPath(
        uint8_t source_id, const hidl_string& video_path) {
    TVAPI_DEBUG("ARG=[%d].", source_id);
    return a_qortvapi_multiview_startVideoWithoutVideoPath(source_id, video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_stopVideoWithoutVideoPath(
        const hidl_string& video_path) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_stopVideoWithoutVideoPath(video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_getVideoResource(
        const hidl_string& video_path) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_getVideoResource(video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_setChgSource(bool changing) {
    TVAPI_DEBUG("ARG=[%d].", changing);
    return a_qortvapi_multiview_setChgSource(changing);
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_getChgSource() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_getChgSource();
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_get_video_state(
        const hidl_string& video_path) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_multiview_get_video_state(video_path.c_str());
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_set_video_state(
        const hidl_string& video_path, bool playing) {
    TVAPI_DEBUG("ARG=[%d].", playing);
    return a_qortvapi_multiview_set_video_state(video_path.c_str(), playing);
}

Return<int32_t> QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_only_chg_focus(
        const hidl_string& video_path) {
    return a_qortvapi_multiview_only_chg_focus(video_path.c_str());
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
