#define LOG_TAG "QorTvApiCec(service)"

#include "QorTvApiCec.h"

#include "log.h"
#include "qral/qral.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

Return<bool> QorTvApiCec::a_hidl_a_qortvapi_get_earc_caps() {
    if (QRAL_Init() != 0) {
        TVAPI_LOG("QRAL_Init failed");
        return false;
    }
    uint32_t caps = 0;
    if (QRCEC_GetEARCCaps(&caps) != 0) {
        TVAPI_LOG("QRCEC_GetEARCCaps failed");
        return false;
    }
    TVAPI_DEBUG("eARC caps= %d", caps);
    return caps == 1;
}

Return<int32_t> QorTvApiCec::a_hidl_a_qortvapi_set_earc_enable(bool enabled) {
    if (QRAL_Init() != 0) {
        TVAPI_LOG("QRAL_Init failed");
        return -1;
    }
    int32_t result = 0;
    if (QRCEC_SetEARCEnable(enabled) != 0) {
        TVAPI_LOG("QRCEC_SetEARCEnable failed");
        result = -1;
    }
    TVAPI_DEBUG("a_hidl_a_qortvapi_set_earc_enable i4_ret=%d", result);
    return result;
}

Return<bool> QorTvApiCec::a_hidl_a_qortvapi_get_earc_status(int32_t port) {
    if (QRAL_Init() != 0) {
        TVAPI_LOG("QRAL_Init failed");
        return false;
    }
    uint8_t status = 0;
    if (QRCEC_GetEARCStatus(port, &status) != 0) {
        TVAPI_LOG("QRCEC_GetEARCCaps failed");  // this wrong name is what log readers look for
        return false;
    }
    TVAPI_DEBUG("eARC Status= %d", status);
    return status == 1;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
