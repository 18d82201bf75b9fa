/** The configuration of the television: numbers and texts under keys. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiConfig.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiConfigImpl : public IQorTvApiConfig {
  public:
    QorTvApiConfigImpl();

    // Numbers.
    Return<void> a_hidl_a_qortvapi_config_get_minmaxvalue(
            int16_t group, const hidl_string& key,
            a_hidl_a_qortvapi_config_get_minmaxvalue_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_config_get_value(
            int16_t group, const hidl_string& key,
            a_hidl_a_qortvapi_config_get_value_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_config_set_value(int16_t group, const hidl_string& key,
                                                       int32_t value, int16_t update_flag) override;
    Return<int32_t> a_hidl_a_qortvapi_config_set_value_for_all_elems(int16_t group,
                                                                     const hidl_string& key,
                                                                     int32_t value,
                                                                     int16_t update_flag) override;
    Return<int32_t> a_hidl_a_qortvapi_config_is_visible(int16_t group,
                                                        const hidl_string& key) override;
    Return<int32_t> a_hidl_a_qortvapi_config_is_enabled(int16_t group,
                                                        const hidl_string& key) override;
    Return<int32_t> a_hidl_a_qortvapi_config_reset_values(int16_t group) override;

    // Texts.
    /** The length is 256, the size of the buffer, if the middleware does not write one. */
    Return<void> a_hidl_a_qortvapi_config_get_str_value(
            const hidl_string& key, a_hidl_a_qortvapi_config_get_str_value_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_config_set_str_value(const hidl_string& key,
                                                           const hidl_string& value) override;
    Return<int32_t> a_hidl_a_qortvapi_config_set_str_value_ex(const hidl_string& key,
                                                              const hidl_string& value,
                                                              uint32_t option) override;

    // Notifications of changes.
    Return<int32_t> a_hidl_a_qortvapi_config_add_value_changed_callback(
            const hidl_string& key) override;
    Return<int32_t> a_hidl_a_qortvapi_config_remove_value_changed_callback(
            const hidl_string& key) override;

    // The choices of an item; the television as a whole.
    /** Answers with the count before the length; the middleware has them the other way round. */
    Return<void> a_hidl_a_qortvapi_config_get_items_enabled(
            int16_t group, const hidl_string& key,
            a_hidl_a_qortvapi_config_get_items_enabled_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_config_set_android_world_info(int16_t country,
                                                                    int16_t language) override;
    Return<void> a_hidl_a_qortvapi_config_get_video_resolution(
            a_hidl_a_qortvapi_config_get_video_resolution_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
