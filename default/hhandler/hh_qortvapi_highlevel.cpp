#define LOG_TAG "hh_qortvapi_highlevel"

#include <cstring>

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/highlevel.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _highlevel_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3,
                        void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyHighlevel, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

/**
 * Asks every client; the last one whose attribute is not -1 decides. All the bytes of its answer
 * are copied: by the contract with the middleware, the client knows the size of the buffer for its
 * question, and the length is not checked here.
 */
void _query_android_nfy_fct(uint32_t ui4_code, void* pv_tag, uint32_t ui4_attribute,
                            uint32_t* pui4_result, void* pv_buffer, uint32_t /*ui4_length*/) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("e_code = %d, %d\n", ui4_code, ui4_attribute);
    const IQorTvApiCallback::queryAndroid_cb take = [&](int32_t attribute,
                                                        const hidl_vec<uint8_t>& data) {
        if (attribute == -1) return;
        TVAPI_DEBUG("ui4_attr_1 = %d\n", attribute);
        *pui4_result = static_cast<uint32_t>(attribute);
        if (data.size() != 0) memcpy(pv_buffer, data.data(), data.size());
    };
    clients.call(&IQorTvApiCallback::queryAndroid, ui4_code, pv_tag, ui4_attribute, take);
}

}  // namespace

int32_t hh_a_qortvapi_highlevel_init() {
    a_qortvapi_highlevel_register_callback(_highlevel_nfy_fct, registrationTag(1111));
    return a_qortvapi_highlevel_register_android_responser(_query_android_nfy_fct,
                                                           registrationTag(2222));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
