#include "hhandler/registration.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

int32_t hh_a_qortvapi_ci_init() {
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
