// High-level TV control: start and stop of TV and of other applications, their regions of the
// screen.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/highlevel.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_start_tv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_start_tv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_tv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_tv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_generic_function(uint32_t id,
                                                                           uint32_t param1,
                                                                           uint32_t param2) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_generic_function(id, param1, param2);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_argument_test(
        int32_t arg1, int32_t arg2, const HIDL_QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1& structure,
        a_hidl_a_qortvapi_highlevel_argument_test_cb _hidl_cb) {
    QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1 local{structure.value1, structure.value2, structure.value3};
    const int32_t result = a_qortvapi_highlevel_argument_test(arg1, arg2, &local);
    TVAPI_DEBUG("%d %d", arg1, arg2);
    _hidl_cb({local.ui4_value1, local.ui4_value2, local.ui4_value3}, result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_3rd_party(uint8_t window,
                                                                           bool keep_tv,
                                                                           uint32_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_3rd_party(window, keep_tv, app);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_internal_ap(uint8_t window,
                                                                             bool keep_tv,
                                                                             uint32_t app) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_internal_ap(window, keep_tv, app);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_launch_hbbtv(
        const hidl_string& url, const hidl_string& app_id, const hidl_string& parameters) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_launch_hbbtv(url.c_str(), app_id.c_str(), parameters.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_all() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_all();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_stop_hbbtv() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_stop_hbbtv();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_set_displayregion(int32_t window,
                                                                            uint32_t x, uint32_t y,
                                                                            uint32_t width,
                                                                            uint32_t height) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_set_displayregion(window, x, y, width, height);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_set_viewport(bool enable, int32_t x,
                                                                       int32_t y, int32_t width,
                                                                       int32_t height) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_set_viewport(enable, x, y, width, height);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_is_in_3rd_party_mode() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_is_in_3rd_party_mode();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_get_current_tv_mode() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_highlevel_get_current_tv_mode();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_generic_function_ex(
        uint32_t id, uint32_t param1, uint32_t param2, const hidl_vec<uint8_t>& data,
        a_hidl_a_qortvapi_highlevel_generic_function_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    // The middleware works on a copy that is thrown away: clients get back what they sent.
    hidl_vec<uint8_t> copy(data);
    const int32_t result = a_qortvapi_highlevel_generic_function_ex(
            id, &param1, &param2, copy.data(), static_cast<uint32_t>(copy.size()));
    _hidl_cb(param1, param2, data, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_highlevel_get_market_region(
        a_hidl_a_qortvapi_highlevel_get_market_region_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_highlevel_get_market_region);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
