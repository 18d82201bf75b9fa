// The system that the television runs on: power-up over the network, utilities, configuration files
// and system properties.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include <cutils/properties.h>

#include "bridge.h"
#include "hhandler/hh_qortvapi_util.h"
#include "log.h"
#include "middleware/network.h"
#include "middleware/parser.h"
#include "middleware/util.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Wake on network.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_network_set_wifi_wol_ctrl(int32_t control) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_network_set_wifi_wol_ctrl(control);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_network_get_wifi_wol_ctrl(
        a_hidl_a_qortvapi_network_get_wifi_wol_ctrl_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_network_get_wifi_wol_ctrl);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_network_set_eth_wol_ctrl(int32_t control) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_network_set_eth_wol_ctrl(control);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_network_get_eth_wol_ctrl(
        a_hidl_a_qortvapi_network_get_eth_wol_ctrl_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_network_get_eth_wol_ctrl);
}

// Special mode and the closing of a client: reserved. They return 0 and have no effect.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_enter_special_mode(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_quit_special_mode(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_query_special_mode_status(uint32_t) {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

Return<int32_t> QorTvApiImpl::a_hidl_a_rpc_close_client() {
    TVAPI_DEBUG("%s", __func__);
    return 0;
}

// Utilities.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_set(const hidl_string& name, int32_t kind,
                                                         const hidl_vec<uint8_t>& data,
                                                         uint64_t size) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_set(name.c_str(), kind, SentArray(data, size).data(), size);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_get(const hidl_string& name, int32_t kind,
                                                      const hidl_vec<uint8_t>& data, uint64_t size,
                                                      a_hidl_a_qortvapi_util_get_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_util_get(name, kind, data, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_get_sys_version(
        int32_t kind, a_hidl_a_qortvapi_util_get_sys_version_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<100> version;
    const int32_t result = a_qortvapi_util_get_sys_version(kind, version.data());
    _hidl_cb(version.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_open_diag(
        bool flag, a_hidl_a_qortvapi_util_tuner_fac_open_diag_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_util_tuner_fac_open_diag, flag);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_close_diag(bool flag) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_tuner_fac_close_diag(flag);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_util_tuner_fac_query_diag(
        bool flag, uint64_t size, a_hidl_a_qortvapi_util_tuner_fac_query_diag_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_util_tuner_fac_query_diag(flag, size, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_set_android_osd_opacity(uint32_t opacity) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_set_android_osd_opacity(opacity);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_util_start_native_app(uint8_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_util_start_native_app(app);
}

// Configuration files and system properties.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_base_config_file_path(
        int16_t length, a_hidl_a_qortvapi_get_base_config_file_path_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerText path(length);
    const int32_t result = a_qortvapi_get_base_config_file_path(path.data(), length);
    _hidl_cb(path.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_signed_config_data(
        const hidl_string& file, const hidl_string& key,
        a_hidl_a_qortvapi_parser_get_signed_config_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_parser_get_signed_config_data, file.c_str(), key.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_string_config_data(
        const hidl_string& file, const hidl_string& key, int16_t length,
        a_hidl_a_qortvapi_parser_get_string_config_data_cb _hidl_cb) {
    TVAPI_DEBUG(
            "Enter.a_hidl_a_qortvapi_parser_get_string_config_data,s_file_path:%s,s_key_name:%s",
            file.c_str(), key.c_str());
    const CallerText value(length);
    const int32_t result = a_qortvapi_parser_get_string_config_data(file.c_str(), key.c_str(),
                                                                    value.data(), length);
    _hidl_cb(value.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_value(
        const hidl_string& key, a_hidl_a_qortvapi_parser_get_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_parser_get_value, key.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_parser_get_string(
        const hidl_string& key, a_hidl_a_qortvapi_parser_get_string_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    FixedText<256> value;
    uint32_t length = 0;
    const int32_t result = a_qortvapi_parser_get_string(key.c_str(), value.data(), &length);
    _hidl_cb(value.forClient(), length, result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_tvapi_set_property(const hidl_string& key,
                                                        const hidl_string& value) {
    TVAPI_DEBUG("%s", __func__);
    return property_set(key.c_str(), value.c_str());
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
