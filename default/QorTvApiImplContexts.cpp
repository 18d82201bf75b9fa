#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_iom.h"
#include "hhandler/hh_keyevent.h"
#include "hhandler/hh_scc.h"
#include "hhandler/hh_svctx.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/iom.h"
#include "middleware/pcl.h"
#include "middleware/scc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/**
 * Answers a reason that power control gives, with the word of data beside it as four bytes.
 * `Reason` is the interface's enumeration; `translate` is applied to the middleware's number.
 */
template <typename Reason, typename Callback, typename Translate>
Return<void> answerReason(const Callback& callback, int32_t (*function)(uint32_t*, uint32_t*),
                          const Translate& translate) {
    uint32_t reason = 0;
    uint32_t data = 0;
    const int32_t result = function(&reason, &data);
    callback(static_cast<Reason>(translate(reason)), borrowedBytes(&data, sizeof(data)), result);
    return Void();
}

uint32_t unchanged(uint32_t reason) {
    return reason;
}

/** The reasons that applications know: 1 to 44 and 60 to 80. Every other is unknown to them, 0. */
uint32_t reasonForApplications(uint32_t reason) {
    return reason <= 44 || (reason >= 60 && reason <= 80) ? reason : 0;
}

}  // namespace

// Service contexts, stream components and devices: a method without an entry line has its handler
// write a line of its own, or none.

Return<void> QorTvApiImpl::a_hidl_c_svctx_open(const hidl_string& name,
                                               a_hidl_c_svctx_open_cb _hidl_cb) {
    hh_c_svctx_open(name, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_close(uint32_t svctx) {
    return hh_c_svctx_close(svctx);
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_64(uint32_t svctx, uint32_t type,
                                                 const hidl_vec<uint8_t>& data,
                                                 a_hidl_c_svctx_get_64_cb _hidl_cb) {
    hh_c_svctx_get_64(svctx, type, data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_video_src_resolution(
        uint32_t svctx, a_hidl_c_svctx_get_video_src_resolution_cb _hidl_cb) {
    hh_c_svctx_get_video_src_resolution(svctx, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_select_svc_64(uint32_t svctx, uint32_t mode,
                                                           const HIDL_SRC_DESC_T& source,
                                                           const hidl_vec<uint8_t>& sink,
                                                           uint64_t tag) {
    return hh_c_svctx_select_svc_64(svctx, mode, source, sink, tag);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_set_stream_attr_64(uint32_t svctx,
                                                                uint32_t stream_type,
                                                                uint32_t attribute,
                                                                const hidl_vec<uint8_t>& data) {
    return hh_c_svctx_set_stream_attr_64(svctx, stream_type, attribute, data);
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_conn_attr(uint32_t svctx, uint32_t type,
                                                        uint32_t attribute, uint32_t size,
                                                        a_hidl_c_svctx_get_conn_attr_cb _hidl_cb) {
    hh_c_svctx_get_conn_attr(svctx, type, attribute, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_set_conn_attr(uint32_t svctx, uint32_t type,
                                                        uint32_t attribute,
                                                        const hidl_vec<uint8_t>& data,
                                                        a_hidl_c_svctx_set_conn_attr_cb _hidl_cb) {
    hh_c_svctx_set_conn_attr(svctx, type, attribute, data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_audio_info(
        uint32_t svctx, a_hidl_c_svctx_get_audio_info_cb _hidl_cb) {
    hh_c_svctx_get_audio_info(svctx, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_generic_get_info(
        uint32_t svctx, uint32_t type, uint32_t subtype, uint32_t size,
        a_hidl_c_svctx_generic_get_info_cb _hidl_cb) {
    hh_c_svctx_generic_get_info(svctx, type, subtype, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_generic_set_info(
        uint32_t svctx, uint32_t type, uint32_t subtype, const hidl_vec<uint8_t>& data,
        a_hidl_c_svctx_generic_set_info_cb _hidl_cb) {
    hh_c_svctx_generic_set_info(svctx, type, subtype, data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_scc_comp_open(uint32_t type, const hidl_string& sink,
                                                  uint32_t code, const hidl_vec<uint8_t>& data,
                                                  a_hidl_c_scc_comp_open_cb _hidl_cb) {
    hh_c_scc_comp_open(type, sink, code, data, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_scc_comp_close(uint32_t component) {
    return hh_c_scc_comp_close(component);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_scc_vid_set_src_detect_nfy(uint32_t component,
                                                                  uint64_t tag) {
    TVAPI_DEBUG("%s", __func__);
    return c_scc_vid_set_src_detect_nfy(component, _inps_detect_cb,
                                        registrationTag(static_cast<uint32_t>(tag)));
}

Return<int32_t> QorTvApiImpl::a_hidl_send_key_and_mouse(int32_t kind, int32_t arg1, uint32_t arg2,
                                                        int32_t arg3, int32_t arg4, int32_t arg5,
                                                        int32_t arg6, int32_t arg7) {
    TVAPI_DEBUG("%s", __func__);
    return hh_send_key_and_mouse(kind, arg1, arg2, arg3, arg4, arg5, arg6, arg7);
}

Return<void> QorTvApiImpl::a_hidl_c_pcl_get_wakeup_reason(
        a_hidl_c_pcl_get_wakeup_reason_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerReason<HIDL_PCL_WAKE_UP_REASON_T>(_hidl_cb, c_pcl_get_wakeup_reason, unchanged);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_wakeup_reason(HIDL_PCL_WAKE_UP_REASON_T reason,
                                                             const hidl_vec<uint8_t>& data) {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_wakeup_reason(static_cast<PCL_WAKE_UP_REASON_T>(reason), data.data());
}

Return<void> QorTvApiImpl::a_hidl_c_pcl_get_power_down_reason(
        a_hidl_c_pcl_get_power_down_reason_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerReason<HIDL_PCL_POWER_DOWN_REASON_T>(_hidl_cb, c_pcl_get_power_down_reason,
                                                      unchanged);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_power_down_reason(
        HIDL_PCL_POWER_DOWN_REASON_T reason, const hidl_vec<uint8_t>& data) {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_power_down_reason(static_cast<PCL_POWER_DOWN_REASON_T>(reason), data.data());
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_power_down() {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_power_down();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_request_suspend() {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_request_suspend();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_request_powerdown_envent() {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_request_powerdown_envent();
}

Return<void> QorTvApiImpl::a_hidl_c_pcl_get_gpio(uint32_t id, HIDL_PCL_GPIO_MODE_T mode,
                                                 a_hidl_c_pcl_get_gpio_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    PCL_GPIO_STATUS_T status = 0;
    const int32_t result = c_pcl_get_gpio(id, static_cast<PCL_GPIO_MODE_T>(mode), &status);
    _hidl_cb(static_cast<HIDL_PCL_GPIO_STATUS_T>(status), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_gpio(uint32_t id, HIDL_PCL_GPIO_STATUS_T status) {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_gpio(id, static_cast<PCL_GPIO_STATUS_T>(status));
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_gpio_monitor_ctrl_ex(
        const HIDL_PCL_GPIO_MONITOR_CTRL_EX_T& control) {
    TVAPI_DEBUG("%s", __func__);
    PCL_GPIO_MONITOR_CTRL_EX_T record = {};
    record.ui4_id = control.id;
    record.ui1_polarity = control.polarity;
    return c_pcl_set_gpio_monitor_ctrl_ex(&record);
}

Return<void> QorTvApiImpl::a_hidl_c_pcl_get_wakeup_irkey(
        a_hidl_c_pcl_get_wakeup_irkey_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    PCL_WAKEUP_KEY_T record = {};
    const int32_t result = c_pcl_get_wakeup_irkey(&record);
    HIDL_PCL_WAKEUP_KEY_T key = {};
    key.key_code = record.ui4_key_code;
    key.key_data = record.ui4_key_data;
    _hidl_cb(key, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_pcl_get_wakeup_setup(
        a_hidl_c_pcl_get_wakeup_setup_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, c_pcl_get_wakeup_setup);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_pcl_set_wakeup_setup(uint32_t setup) {
    TVAPI_DEBUG("%s", __func__);
    return c_pcl_set_wakeup_setup(setup);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_pcl_get_wakeup_reason(
        a_hidl_a_qortvapi_pcl_get_wakeup_reason_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerReason<HIDL_QORTVAPI_PCL_WAKEUP_REASON_T>(
            _hidl_cb, a_qortvapi_pcl_get_wakeup_reason, reasonForApplications);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_pcl_get_wakeup_setup(
        a_hidl_a_qortvapi_pcl_get_wakeup_setup_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_pcl_get_wakeup_setup);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_pcl_set_wakeup_setup(uint32_t setup) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_pcl_set_wakeup_setup(setup);
}

Return<void> QorTvApiImpl::a_hidl_c_iom_open(uint16_t device, uint16_t port,
                                             const hidl_string& name, const hidl_handle& region,
                                             uint64_t tag, a_hidl_c_iom_open_cb _hidl_cb) {
    hh_c_iom_open(device, port, name, region, tag, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_iom_close(uint32_t iom) {
    TVAPI_DEBUG("%s", __func__);
    return c_iom_close(iom);
}

Return<void> QorTvApiImpl::a_hidl_c_iom_get(uint32_t iom, uint16_t type, const hidl_handle& region,
                                            uint64_t size, a_hidl_c_iom_get_cb _hidl_cb) {
    hh_c_iom_get(iom, type, region, size, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_iom_set(uint32_t iom, uint16_t type,
                                               const hidl_handle& region, uint64_t size) {
    return hh_c_iom_set(iom, type, region, size);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_iom_output(uint32_t iom, const hidl_vec<uint8_t>& data) {
    TVAPI_DEBUG("%s", __func__);
    const IOM_OUTPUT_T output = {static_cast<uint32_t>(data.size()), data.data()};
    return c_iom_output(iom, &output);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
