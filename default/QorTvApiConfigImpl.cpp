#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiConfigImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/config.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

constexpr uint32_t kTextRoom = 256;  // bytes for a text

}  // namespace

QorTvApiConfigImpl::QorTvApiConfigImpl() {
    TVAPI_DEBUG("QorTvApiConfigImpl");
}

// Numbers.

Return<void> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_get_minmaxvalue(
        int16_t group, const hidl_string& key,
        a_hidl_a_qortvapi_config_get_minmaxvalue_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_config_get_minmaxvalue, group, key.c_str());
}

Return<void> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_get_value(
        int16_t group, const hidl_string& key, a_hidl_a_qortvapi_config_get_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_config_get_value, group, key.c_str());
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_set_value(int16_t group,
                                                                       const hidl_string& key,
                                                                       int32_t value,
                                                                       int16_t update_flag) {
    TVAPI_DEBUG("%s,str:%s,val=%d,update_flag=%d", __func__, key.c_str(), value, update_flag);
    return a_qortvapi_config_set_value(group, key.c_str(), value, update_flag);
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_set_value_for_all_elems(
        int16_t group, const hidl_string& key, int32_t value, int16_t update_flag) {
    TVAPI_DEBUG("%s,str:%s,val=%d,update_flag=%d", __func__, key.c_str(), value, update_flag);
    return a_qortvapi_config_set_value_for_all_elems(group, key.c_str(), value, update_flag);
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_is_visible(int16_t group,
                                                                        const hidl_string& key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_is_visible(group, key.c_str());
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_is_enabled(int16_t group,
                                                                        const hidl_string& key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_is_enabled(group, key.c_str());
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_reset_values(int16_t group) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_reset_values(group);
}

// Texts.

Return<void> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_get_str_value(
        const hidl_string& key, a_hidl_a_qortvapi_config_get_str_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<kTextRoom> value;
    uint32_t length = kTextRoom;
    const int32_t result = a_qortvapi_config_get_str_value(key.c_str(), value.data(), &length);
    _hidl_cb(value.forClient(), length, result);
    TVAPI_DEBUG("%s,value:%s", __func__, value.data());
    return Void();
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_set_str_value(
        const hidl_string& key, const hidl_string& value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_set_str_value(key.c_str(), value.c_str());
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_set_str_value_ex(
        const hidl_string& key, const hidl_string& value, uint32_t option) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_set_str_value_ex(key.c_str(), value.c_str(), option);
}

// Notifications of changes.

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_add_value_changed_callback(
        const hidl_string& key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_add_value_changed_callback(key.c_str());
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_remove_value_changed_callback(
        const hidl_string& key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_remove_value_changed_callback(key.c_str());
}

// The choices of an item; the television as a whole.

Return<void> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_get_items_enabled(
        int16_t group, const hidl_string& key,
        a_hidl_a_qortvapi_config_get_items_enabled_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<kTextRoom> items;
    uint32_t length = kTextRoom;
    uint32_t count = 0;
    const int32_t result =
            a_qortvapi_config_get_items_enabled(group, key.c_str(), items.data(), &length, &count);
    // Clients expect the two numbers in the opposite order.
    _hidl_cb(items.forClient(), count, static_cast<int32_t>(length), result);
    TVAPI_DEBUG("%s,value:%s", __func__, items.data());
    return Void();
}

Return<int32_t> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_set_android_world_info(
        int16_t country, int16_t language) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_config_set_android_world_info(country, language);
}

Return<void> QorTvApiConfigImpl::a_hidl_a_qortvapi_config_get_video_resolution(
        a_hidl_a_qortvapi_config_get_video_resolution_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_config_get_video_resolution);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
