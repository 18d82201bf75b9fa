// Interactive applications of the broadcast: Ginga, MHEG-5, BML; exchange of data with the HTML
// agent and the advertising-insertion module. A method without an entry line has its handler write
// one.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_dai.h"
#include "hhandler/hh_qortvapi_html_agent.h"
#include "hhandler/hh_qortvapi_mheg5.h"
#include "log.h"
#include "middleware/bml.h"
#include "middleware/ginga.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** The middleware's record of a Ginga application. Only the clients read its fields. */
struct GingaApplication {
    uint8_t bytes[284];
};

}  // namespace

// Ginga.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_startApplication(const hidl_string& app_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_startApplication(app_id.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_stopApplication(const hidl_string& app_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_stopApplication(app_id.c_str());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_getApplicationInfo();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_startGinga() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_startGinga();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_stopGinga() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_stopGinga();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_warning_start_cc(bool start) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_warning_start_cc(start);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ginga_warning_start_ginga_app(bool start) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ginga_warning_start_ginga_app(start);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationNum(
        a_hidl_a_qortvapi_ginga_getApplicationNum_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_ginga_getApplicationNum);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo_ex(
        uint32_t count, a_hidl_a_qortvapi_ginga_getApplicationInfo_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<GingaApplication> records(count, CallerArray<GingaApplication>::kOptional);
    if (records.data() == nullptr) {
        TVAPI_LOG("allocte memory fail (in a_hidl_a_qortvapi_ginga_getApplicationInfo_ex) !!!!\n");
        return Void();
    }
    uint32_t reported = count;
    const int32_t result = a_qortvapi_ginga_getApplicationInfo_ex(records.data(), &reported);
    _hidl_cb(borrowedBytes(records.data(), records.held(reported) * sizeof(GingaApplication)),
             reported, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ginga_is_enable_screen_mode(
        bool query, a_hidl_a_qortvapi_ginga_is_enable_screen_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    uint8_t enabled = 0;
    const int32_t result = a_qortvapi_ginga_is_enable_screen_mode(query, &enabled);
    _hidl_cb(result, enabled != 0);
    return Void();
}

// MHEG-5.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_current_channel(
        a_hidl_a_qortvapi_mheg5_get_current_channel_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_current_channel(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_pfg_info_len(
        a_hidl_a_qortvapi_mheg5_get_pfg_info_len_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_pfg_info_len(_hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_pfg_info(
        uint32_t length, a_hidl_a_qortvapi_mheg5_get_pfg_info_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_pfg_info(length, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_get_internal_scrn(
        a_hidl_a_qortvapi_mheg5_get_internal_scrn_cb _hidl_cb) {
    hh_a_qortvapi_mheg5_get_internal_scrn(_hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_pfg_result(bool right) {
    return hh_a_qortvapi_mheg5_set_pfg_result(right);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_hbbtv_status(uint32_t id, bool success) {
    return hh_a_qortvapi_mheg5_set_hbbtv_status(id, success);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_enabled() {
    return hh_a_qortvapi_mheg5_enabled();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_disabled() {
    return hh_a_qortvapi_mheg5_disabled();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mheg5_set_mheg5_status(int32_t type, int32_t arg1,
                                                                       int32_t arg2, int32_t arg3) {
    return hh_a_qortvapi_mheg5_set_mheg5_status(type, arg1, arg2, arg3);
}

// BML.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_bml_get_current_state() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bml_get_current_state();
}

// Exchange of data.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_html_agent_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_a_qortvapi_html_agent_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_html_agent_exchange_data(data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_dai_tvapi_exchange_data(
        const hidl_vec<uint8_t>& data, a_hidl_c_dai_tvapi_exchange_data_cb /*_hidl_cb*/) {
    hh_c_dai_tvapi_exchange_data(data);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
