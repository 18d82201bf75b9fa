#define LOG_TAG "hh_qortvapi_rating"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/rating.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _rating_nfy_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3,
                     void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyRating, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_rating_init() {
    return a_qortvapi_rating_op_vchip_reg_callback(_rating_nfy_fct, registrationTag(1111));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
