#define LOG_TAG "hh_svctx"

#include "hhandler/hh_svctx.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/svctx.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

uint32_t gMainSvctx = 0;
uint32_t gSubSvctx = 0;

namespace {

void _svctx_listener_nfy_fct(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code,
                             uint32_t ui4_stream, void* pv_tag) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG(" e_code = %d, %p\n", ui4_code, pv_tag);
    clients.call(&IQorTvApiCallback::notifySvctxListener, h_svctx, static_cast<uint16_t>(ui4_cond),
                 static_cast<uint16_t>(ui4_code), static_cast<uint16_t>(ui4_stream), pv_tag);
}

}  // namespace

void _svctx_select_nfy_fct(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code,
                           uint32_t ui4_stream, void* pv_tag) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("e_code = %d, %p\n", ui4_code, pv_tag);
    clients.call(&IQorTvApiCallback::notifySvctxSelect, h_svctx, static_cast<uint16_t>(ui4_cond),
                 static_cast<uint16_t>(ui4_code), static_cast<uint16_t>(ui4_stream), pv_tag);
}

int32_t hh_c_svctx_init() {
    if (gMainSvctx == 0) c_svctx_open("main_svctx", &gMainSvctx);
    if (gSubSvctx == 0) c_svctx_open("sub_svctx", &gSubSvctx);

    int32_t i4_ret =
            c_svctx_set_listener(gMainSvctx, _svctx_listener_nfy_fct, registrationTag(12345678));
    TVAPI_DEBUG("c_svctx_set_listener i4_ret = %d\n", i4_ret);
    i4_ret = c_svctx_set_listener(gSubSvctx, _svctx_listener_nfy_fct, registrationTag(87654321));
    TVAPI_DEBUG("c_svctx_set_listener i4_ret = %d\n", i4_ret);
    return i4_ret;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
