/** Picture-and-picture. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiMultiview.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiMultiviewImpl : public IQorTvApiMultiview {
  public:
    QorTvApiMultiviewImpl();

    Return<int32_t> a_hidl_a_qortvapi_multiview_getPOPTunerFocus() override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_setAudioFocusbySourceid(uint8_t source_id) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_setAudioFocus(
            const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_getAudioFocus() override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_setNewTvMode(uint8_t mode) override;
    Return<void> a_hidl_a_qortvapi_multiview_is_source_available_bysourceidandpath(
            uint8_t source_id, const hidl_string& video_path,
            a_hidl_a_qortvapi_multiview_is_source_available_bysourceidandpath_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_startMainVideo(
            uint8_t source_id, const HIDL_QORTVAPI_MULTIVIEW_REGION_T& region) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_startSubVideo(
            uint8_t source_id, const HIDL_QORTVAPI_MULTIVIEW_REGION_T& region) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_stopMainVideo() override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_stopSubVideo() override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_startVideoWithoutVideoPath(
            uint8_t source_id, const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_stopVideoWithoutVideoPath(
            const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_getVideoResource(
            const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_setChgSource(bool changing) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_getChgSource() override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_get_video_state(
            const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_set_video_state(const hidl_string& video_path,
                                                                bool playing) override;
    Return<int32_t> a_hidl_a_qortvapi_multiview_only_chg_focus(
            const hidl_string& video_path) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
