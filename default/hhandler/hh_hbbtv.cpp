#define LOG_TAG "hh_hbbtv"

#include "hhandler/hh_hbbtv.h"

#include "bridge.h"
#include "log.h"
#include "middleware/hbbtv.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// In bytes. The middleware is told no size: it writes an ISO 639 code of three letters and a NUL.
// The rest of the buffer is for codes that are followed by a region or script.
constexpr size_t kLanguageSize = 16;

}  // namespace

int32_t hh_c_hbbtv_stm_set_audio(uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return c_hbbtv_stm_set_audio(index);
}

void hh_c_hbbtv_stm_get_audio(const StreamAnswer& answer_client) {
    TVAPI_DEBUG("%s", __func__);
    answer(answer_client, c_hbbtv_stm_get_audio);
}

void hh_c_hbbtv_stm_get_audio_lang(uint16_t index, const LanguageAnswer& answer_client) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<kLanguageSize> language;
    const int32_t result = c_hbbtv_stm_get_audio_lang(index, language.data());
    answer_client(language.forClient(), result);
}

void hh_c_hbbtv_stm_get_audio_num(const StreamAnswer& answer_client) {
    TVAPI_DEBUG("%s", __func__);
    answer(answer_client, c_hbbtv_stm_get_audio_num);
}

int32_t hh_c_hbbtv_set_default_subtitle_lang(const hidl_string& language, int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return c_hbbtv_set_default_subtitle_lang(language.c_str(), type);
}

int32_t hh_c_hbbtv_set_default_audio_lang(const hidl_string& language) {
    TVAPI_DEBUG("%s", __func__);
    return c_hbbtv_set_default_audio_lang(language.c_str());
}

int32_t hh_c_hbbtv_set_audio_desc(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return c_hbbtv_set_audio_desc(enable);
}

int32_t hh_c_opera_hbbtv_stm_set_audio(uint16_t index) {
    TVAPI_LOG("%d, not implemented", index);
    return 0;
}

void hh_c_opera_hbbtv_stm_get_audio() {
    TVAPI_LOG("not implemented");
}

void hh_c_opera_hbbtv_stm_get_audio_lang(uint16_t /*index*/) {
    TVAPI_LOG("not implemented");
}

void hh_c_opera_hbbtv_stm_get_audio_num() {
    TVAPI_LOG("not implemented");
}

int32_t hh_c_opera_hbbtv_set_default_subtitle_lang(const hidl_string& language, int32_t type) {
    TVAPI_LOG("%s %d, not implemented", language.c_str(), type);
    return 0;
}

int32_t hh_c_opera_hbbtv_set_default_audio_lang(const hidl_string& language) {
    TVAPI_LOG("%s, not implemented", language.c_str());
    return 0;
}

int32_t hh_c_opera_hbbtv_set_audio_desc(bool enable) {
    TVAPI_LOG("%d, not implemented", enable);
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
