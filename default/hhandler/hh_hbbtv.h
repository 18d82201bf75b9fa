/**
 * The request handlers for audio streams and languages of the two HbbTV browsers. Any thread.
 *
 * Each calls the middleware function of its name with the client's arguments. An `answer` is called
 * exactly once, before the function returns, with the output and the middleware's result.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;

using StreamAnswer = std::function<void(uint16_t, int32_t)>;
using LanguageAnswer = std::function<void(const hidl_string&, int32_t)>;

int32_t hh_c_hbbtv_stm_set_audio(uint16_t index);
void hh_c_hbbtv_stm_get_audio(const StreamAnswer& answer);
void hh_c_hbbtv_stm_get_audio_lang(uint16_t index, const LanguageAnswer& answer);
void hh_c_hbbtv_stm_get_audio_num(const StreamAnswer& answer);
int32_t hh_c_hbbtv_set_default_subtitle_lang(const hidl_string& language, int32_t type);
int32_t hh_c_hbbtv_set_default_audio_lang(const hidl_string& language);
int32_t hh_c_hbbtv_set_audio_desc(bool enable);

// The second browser is not part of this television. Its requests write a log line, whether
// debugging is on or not, and reach no middleware: the setters succeed with 0, and the clients of
// the others get no answer.

int32_t hh_c_opera_hbbtv_stm_set_audio(uint16_t index);
void hh_c_opera_hbbtv_stm_get_audio();
void hh_c_opera_hbbtv_stm_get_audio_lang(uint16_t index);
void hh_c_opera_hbbtv_stm_get_audio_num();
int32_t hh_c_opera_hbbtv_set_default_subtitle_lang(const hidl_string& language, int32_t type);
int32_t hh_c_opera_hbbtv_set_default_audio_lang(const hidl_string& language);
int32_t hh_c_opera_hbbtv_set_audio_desc(bool enable);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
