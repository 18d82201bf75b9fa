// HbbTV: audio streams and languages of its two browsers, and its exchange of data. A method
// without an entry line has its handler write one.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_hbbtv.h"
#include "hhandler/hh_qortvapi_hbbtv.h"
#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// The browser that this television does not have.

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_set_audio(uint16_t index) {
    return hh_c_opera_hbbtv_stm_set_audio(index);
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio(
        a_hidl_c_opera_hbbtv_stm_get_audio_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio();
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio_lang(
        uint16_t index, a_hidl_c_opera_hbbtv_stm_get_audio_lang_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio_lang(index);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_opera_hbbtv_stm_get_audio_num(
        a_hidl_c_opera_hbbtv_stm_get_audio_num_cb /*_hidl_cb*/) {
    hh_c_opera_hbbtv_stm_get_audio_num();
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_default_subtitle_lang(
        const hidl_string& language, int32_t type) {
    return hh_c_opera_hbbtv_set_default_subtitle_lang(language, type);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_default_audio_lang(
        const hidl_string& language) {
    return hh_c_opera_hbbtv_set_default_audio_lang(language);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_opera_hbbtv_set_audio_desc(bool enable) {
    return hh_c_opera_hbbtv_set_audio_desc(enable);
}

// The browser of this television.

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_stm_set_audio(uint16_t index) {
    return hh_c_hbbtv_stm_set_audio(index);
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio(a_hidl_c_hbbtv_stm_get_audio_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio_lang(
        uint16_t index, a_hidl_c_hbbtv_stm_get_audio_lang_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio_lang(index, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_hbbtv_stm_get_audio_num(
        a_hidl_c_hbbtv_stm_get_audio_num_cb _hidl_cb) {
    hh_c_hbbtv_stm_get_audio_num(_hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_default_subtitle_lang(const hidl_string& language,
                                                                       int32_t type) {
    return hh_c_hbbtv_set_default_subtitle_lang(language, type);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_default_audio_lang(const hidl_string& language) {
    return hh_c_hbbtv_set_default_audio_lang(language);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_hbbtv_set_audio_desc(bool enable) {
    return hh_c_hbbtv_set_audio_desc(enable);
}

// Exchange of data.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_hbbtv_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_a_qortvapi_hbbtv_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_hbbtv_exchange_data(data, _hidl_cb);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
