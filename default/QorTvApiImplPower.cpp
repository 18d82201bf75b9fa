// Power control: why the television woke up or powered down, the wake-up set-up, GPIO lines.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/pcl.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/**
 * Answers with the reason that `function` of power control writes, and with its word of data as
 * four bytes. `Reason` is the interface's enumeration; `translate` is applied to the middleware's
 * number.
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

/** Applications know the reasons 1 to 44 and 60 to 80; every other becomes 0, unknown. */
uint32_t reasonForApplications(uint32_t reason) {
    return reason <= 44 || (reason >= 60 && reason <= 80) ? reason : 0;
}

}  // namespace

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
