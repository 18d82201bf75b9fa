/** The input sources of the television. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiInputSrc.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiInputSrcImpl : public IQorTvApiInputSrc {
  public:
    QorTvApiInputSrcImpl();

    Return<void> a_hidl_a_qortvapi_inputsource_isVideoSignalAvailable(
            const hidl_string& video_path,
            a_hidl_a_qortvapi_inputsource_isVideoSignalAvailable_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_isAudioSignalAvailable(
            const hidl_string& video_path,
            a_hidl_a_qortvapi_inputsource_isAudioSignalAvailable_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_gpioid_byidx(
            HIDL_INPUT_GPIO_T_IDX index,
            a_hidl_a_qortvapi_inputsource_get_gpioid_byidx_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_get_hybrid_video_internal_id() override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_get_hybrid_comp_internal_id() override;
    /** Returns the low byte of the number that the middleware returns. */
    Return<uint8_t> a_hidl_a_qortvapi_inputsource_get_sourcetotalnum() override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_sharepinrec_byidx(
            int32_t index,
            a_hidl_a_qortvapi_inputsource_get_sharepinrec_byidx_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx(
            int32_t index, a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx_cb _hidl_cb) override;

    // Names. The middleware is told `length` as the client sent it. Its buffer holds 256 bytes,
    // however large `length` is.
    Return<void> a_hidl_a_qortvapi_inputsource_get_currentsourcename(
            uint32_t length,
            a_hidl_a_qortvapi_inputsource_get_currentsourcename_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath(
            uint32_t length, const hidl_string& video_path,
            a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_sourcename_bysourceid(
            int32_t source_id, uint32_t length,
            a_hidl_a_qortvapi_inputsource_get_sourcename_bysourceid_cb _hidl_cb) override;

    // Change of source.
    Return<int32_t> a_hidl_a_qortvapi_inputsource_changesource_bysourceid(
            int32_t source_id) override;
    Return<void> a_hidl_a_qortvapi_inputsource_is_source_available_bysourceidandpath(
            int32_t source_id, const hidl_string& video_path,
            a_hidl_a_qortvapi_inputsource_is_source_available_bysourceidandpath_cb _hidl_cb)
            override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_changesource_bysourceidandpath(
            int32_t source_id, const hidl_string& video_path) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_cs_bysourceidandpathandpriority(
            int32_t source_id, const hidl_string& video_path, uint16_t priority) override;

    // State and labels.
    Return<void> a_hidl_a_qortvapi_inputsource_is_block_bysourceid(
            int32_t source_id,
            a_hidl_a_qortvapi_inputsource_is_block_bysourceid_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_is_source_block_bysourceid(
            int32_t source_id,
            a_hidl_a_qortvapi_inputsource_is_source_block_bysourceid_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_is_source_autodetect_bysourceid(
            int32_t source_id,
            a_hidl_a_qortvapi_inputsource_is_source_autodetect_bysourceid_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_set_source_blockstatus_bysourceid(
            int32_t source_id, bool blocked) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(
            int32_t source_id, bool autodetect) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid(
            int32_t source_id,
            a_hidl_a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(
            int32_t source_id, uint8_t label_index) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_userdefname_bysourceid(
            int32_t source_id, uint32_t length,
            a_hidl_a_qortvapi_inputsource_get_userdefname_bysourceid_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_set_userdefname_bysourceid(
            int32_t source_id, const hidl_string& name) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_external_device_has_signal(
            HIDL_INPUT_DEVICE_TYPE_T device_type, int32_t index,
            a_hidl_a_qortvapi_inputsource_get_external_device_has_signal_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_sync_stop(const hidl_string& video_path,
                                                            bool block) override;
    Return<void> a_hidl_a_qortvapi_inputsource_query_conflict(
            int32_t source_id, int32_t other_source_id,
            a_hidl_a_qortvapi_inputsource_query_conflict_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_get_mhl_port_num(
            a_hidl_a_qortvapi_inputsource_get_mhl_port_num_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_inputsource_check_menu_tv_block(
            a_hidl_a_qortvapi_inputsource_check_menu_tv_block_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_inputsource_set_scart_auto_jump(bool enabled) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
