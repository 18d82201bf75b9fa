#define LOG_TAG "hh_pcl"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/pcl.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

uint32_t sPcl = 0;

void _pcl_nfy_fct(uint32_t h_pcl, void* pv_tag, uint32_t ui4_cond, uint32_t ui4_data) {
    const FanOut clients(LOG_TAG);
    clients.call(&IQorTvApiCallback::notifyPcl, h_pcl, pv_tag, ui4_cond, ui4_data);
}

}  // namespace

int32_t hh_c_pcl_init() {
    return c_pcl_reg_nfy_fct(registrationTag(1111), _pcl_nfy_fct, &sPcl);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
