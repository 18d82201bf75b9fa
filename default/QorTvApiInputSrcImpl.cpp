#define LOG_TAG "QorTvApiInputSrcImpl(service)"

#include "QorTvApiInputSrcImpl.h"

#include "bridge.h"
#include "hhandler/record_text.h"
#include "log.h"
#include "middleware/inputsource.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

HIDL_QORTVAPI_INPUT_SHARE_PIN_RECORD_T toInterface(
        const QORTVAPI_INPUT_SHARE_PIN_RECORD_T& record) {
    static_assert(sizeof(HIDL_QORTVAPI_INPUT_SHARE_PIN_RECORD_T) == sizeof(record));
    HIDL_QORTVAPI_INPUT_SHARE_PIN_RECORD_T sources{};
    sources.source_id = record.ui1_source_id;
    sources.other_source_id = record.ui1_other_source_id;
    return sources;
}

/** The name refers to the record, which must outlive the result. */
HIDL_QORTVAPI_INPUT_SOURCE_RECORD_T toInterface(const QORTVAPI_INPUT_SOURCE_RECORD_T& record) {
    HIDL_QORTVAPI_INPUT_SOURCE_RECORD_T source{};
    source.source_id = record.ui1_source_id;
    source.device_type = record.ui1_device_type;
    source.internal_index = record.ui1_internal_index;
    source.name = textOf(record.s_name);
    source.flags = record.ui4_flags;
    source.connected = record.ui1_connected;
    return source;
}

/** Answers with the name that `read` writes to its argument, then logs it for `method`. */
template <typename Callback, typename Read>
Return<void> answerName(const Callback& callback, const Read& read,
                        const char* method = __builtin_FUNCTION(), int line = __builtin_LINE()) {
    FixedText<256> name;
    const int32_t result = read(name.data());
    callback(name.forClient(), result);
    if (mTvApiDebug != 0) {
        __android_log_print(ANDROID_LOG_DEBUG, LOG_TAG, "<%s:%d> %s,name:%s", method, line, method,
                            name.data());
    }
    return Void();
}

}  // namespace

QorTvApiInputSrcImpl::QorTvApiInputSrcImpl() {
    TVAPI_DEBUG("QorTvApiInputSrcImpl");
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_isVideoSignalAvailable(
        const hidl_string& video_path,
        a_hidl_a_qortvapi_inputsource_isVideoSignalAvailable_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_isVideoSignalAvailable, video_path.c_str());
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_isAudioSignalAvailable(
        const hidl_string& video_path,
        a_hidl_a_qortvapi_inputsource_isAudioSignalAvailable_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_isAudioSignalAvailable, video_path.c_str());
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_gpioid_byidx(
        HIDL_INPUT_GPIO_T_IDX index, a_hidl_a_qortvapi_inputsource_get_gpioid_byidx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_inputsource_get_gpioid_byidx,
                  static_cast<INPUT_GPIO_T_IDX>(index));
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_hybrid_video_internal_id() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_get_hybrid_video_internal_id();
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_hybrid_comp_internal_id() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_get_hybrid_comp_internal_id();
}

Return<uint8_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_sourcetotalnum() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint8_t>(a_qortvapi_inputsource_get_sourcetotalnum());
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_sharepinrec_byidx(
        int32_t index, a_hidl_a_qortvapi_inputsource_get_sharepinrec_byidx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_INPUT_SHARE_PIN_RECORD_T record{};
    const int32_t result = a_qortvapi_inputsource_get_sharepinrec_byidx(index, &record);
    _hidl_cb(toInterface(record), result);
    return Void();
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx(
        int32_t index, a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_INPUT_SOURCE_RECORD_T record{};
    const int32_t result = a_qortvapi_inputsource_get_sourcerec_byidx(index, &record);
    _hidl_cb(toInterface(record), result);
    return Void();
}

// Names.

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_currentsourcename(
        uint32_t length, a_hidl_a_qortvapi_inputsource_get_currentsourcename_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerName(_hidl_cb, [&](char* name) {
        return a_qortvapi_inputsource_get_currentsourcename(name, length);
    });
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath(
        uint32_t length, const hidl_string& video_path,
        a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerName(_hidl_cb, [&](char* name) {
        return a_qortvapi_inputsource_get_currentsourcename_bypath(name, length,
                                                                   video_path.c_str());
    });
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_sourcename_bysourceid(
        int32_t source_id, uint32_t length,
        a_hidl_a_qortvapi_inputsource_get_sourcename_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerName(_hidl_cb, [&](char* name) {
        return a_qortvapi_inputsource_get_sourcename_bysourceid(source_id, name, length);
    });
}

// Change of source.

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_changesource_bysourceid(
        int32_t source_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_changesource_bysourceid(source_id);
}

Return<void>
QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_is_source_available_bysourceidandpath(
        int32_t source_id, const hidl_string& video_path,
        a_hidl_a_qortvapi_inputsource_is_source_available_bysourceidandpath_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_is_source_available_bysourceidandpath,
                      source_id, video_path.c_str());
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_changesource_bysourceidandpath(
        int32_t source_id, const hidl_string& video_path) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_changesource_bysourceidandpath(source_id, video_path.c_str());
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_cs_bysourceidandpathandpriority(
        int32_t source_id, const hidl_string& video_path, uint16_t priority) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_cs_bysourceidandpathandpriority(source_id, video_path.c_str(),
                                                                  priority);
}

// State and labels.

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_is_block_bysourceid(
        int32_t source_id, a_hidl_a_qortvapi_inputsource_is_block_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_is_block_bysourceid, source_id);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_is_source_block_bysourceid(
        int32_t source_id, a_hidl_a_qortvapi_inputsource_is_source_block_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_is_source_block_bysourceid, source_id);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_is_source_autodetect_bysourceid(
        int32_t source_id,
        a_hidl_a_qortvapi_inputsource_is_source_autodetect_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_is_source_autodetect_bysourceid, source_id);
}

Return<int32_t>
QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_set_source_blockstatus_bysourceid(
        int32_t source_id, bool blocked) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_set_source_blockstatus_bysourceid(source_id, blocked);
}

Return<int32_t>
QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(
        int32_t source_id, bool autodetect) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(source_id, autodetect);
}

Return<void>
QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid(
        int32_t source_id,
        a_hidl_a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid, source_id);
}

Return<int32_t>
QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(
        int32_t source_id, uint8_t label_index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(source_id, label_index);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_userdefname_bysourceid(
        int32_t source_id, uint32_t length,
        a_hidl_a_qortvapi_inputsource_get_userdefname_bysourceid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerName(_hidl_cb, [&](char* name) {
        return a_qortvapi_inputsource_get_userdefname_bysourceid(source_id, name, length);
    });
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_set_userdefname_bysourceid(
        int32_t source_id, const hidl_string& name) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_set_userdefname_bysourceid(source_id, name.c_str());
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_external_device_has_signal(
        HIDL_INPUT_DEVICE_TYPE_T device_type, int32_t index,
        a_hidl_a_qortvapi_inputsource_get_external_device_has_signal_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_get_external_device_has_signal,
                      static_cast<INPUT_DEVICE_TYPE_T>(device_type), index);
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_sync_stop(
        const hidl_string& video_path, bool block) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_sync_stop(video_path.c_str(), block);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_query_conflict(
        int32_t source_id, int32_t other_source_id,
        a_hidl_a_qortvapi_inputsource_query_conflict_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_query_conflict, source_id, other_source_id);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_get_mhl_port_num(
        a_hidl_a_qortvapi_inputsource_get_mhl_port_num_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_inputsource_get_mhl_port_num);
}

Return<void> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_check_menu_tv_block(
        a_hidl_a_qortvapi_inputsource_check_menu_tv_block_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_inputsource_check_menu_tv_block);
}

Return<int32_t> QorTvApiInputSrcImpl::a_hidl_a_qortvapi_inputsource_set_scart_auto_jump(
        bool enabled) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_inputsource_set_scart_auto_jump(enabled);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
