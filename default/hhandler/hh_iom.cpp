#define LOG_TAG "hh_iom"

#include "hhandler/hh_iom.h"

#include "QorTvApiShareMemory.h"
#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/iom.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using ::qortvapi::QorTvApiShareMemory;

constexpr uint32_t kSettingSize = 16;  // bytes

}  // namespace

void _iom_nfy_fct(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("pui1_data = %p, ui4_len=%d pv_tag=%p \n", static_cast<const void*>(pui1_data),
                ui4_length, pv_tag);
    clients.call(&IQorTvApiCallback::notifyIom, pv_tag, ui4_cond,
                 borrowedBytes(pui1_data, ui4_length));
}

void hh_c_iom_open(uint16_t device, uint16_t port, const hidl_string& name,
                   const hidl_handle& region, uint64_t tag,
                   const std::function<void(uint32_t, int32_t)>& answer) {
    uint32_t h_iom = 0;
    int32_t result = -1;
    QorTvApiShareMemory setting(region, kSettingSize);
    void* const pv_setting = setting.hasDescriptor() ? setting.getPointer() : nullptr;
    if (pv_setting != nullptr) {
        result = c_iom_open_uart(device, port, name.c_str(), pv_setting,
                                 registrationTag(static_cast<uint32_t>(tag)), _iom_nfy_fct, &h_iom);
    }
    setting.commit();
    if (answer) answer(h_iom, result);
}

void hh_c_iom_get(uint32_t h_iom, uint16_t type, const hidl_handle& region, uint64_t size,
                  const std::function<void(uint64_t, int32_t)>& answer) {
    uint32_t ui4_size = static_cast<uint32_t>(size);
    QorTvApiShareMemory data(region, ui4_size);
    if (!data.hasDescriptor()) return answer(size, -1);
    const int32_t result = c_iom_get(h_iom, type, data.getPointer(), &ui4_size);
    data.commit();
    answer(ui4_size, result);
}

int32_t hh_c_iom_set(uint32_t h_iom, uint16_t type, const hidl_handle& region, uint64_t size) {
    const uint32_t ui4_size = static_cast<uint32_t>(size);
    QorTvApiShareMemory data(region, ui4_size);
    const void* const pv_data = data.hasDescriptor() ? data.getPointer() : nullptr;
    if (pv_data == nullptr) return -1;
    const int32_t result = c_iom_set(h_iom, type, pv_data, ui4_size);
    data.commit();
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
