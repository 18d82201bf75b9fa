// Input devices: injected key and pointer events, and the devices of the input and output manager.
// A method without an entry line has its handler write a line of its own, or none.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_iom.h"
#include "hhandler/hh_keyevent.h"
#include "log.h"
#include "middleware/iom.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Key and pointer events.

Return<int32_t> QorTvApiImpl::a_hidl_send_key_and_mouse(int32_t kind, int32_t arg1, uint32_t arg2,
                                                        int32_t arg3, int32_t arg4, int32_t arg5,
                                                        int32_t arg6, int32_t arg7) {
    TVAPI_DEBUG("%s", __func__);
    return hh_send_key_and_mouse(kind, arg1, arg2, arg3, arg4, arg5, arg6, arg7);
}

// Input and output manager.

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
