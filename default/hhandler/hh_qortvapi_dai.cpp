#define LOG_TAG "hh_qortvapi_dai"

#include "hhandler/hh_qortvapi_dai.h"

#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

void hh_c_dai_tvapi_exchange_data(const hidl_vec<uint8_t>& /*data*/) {
    TVAPI_LOG("not implemented");
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
