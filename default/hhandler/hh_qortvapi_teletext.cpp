#define LOG_TAG "hh_qortvapi_teletext"

#include "hhandler/hh_qortvapi_teletext.h"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/teletext.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _teletext_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                            void* pv_arg3) {
    const FanOut clients(LOG_TAG);
    clients.call(&IQorTvApiCallback::notifyTeletext, i4_code, pv_tag, pv_arg1, pv_arg2, pv_arg3);
}

}  // namespace

int32_t hh_a_qortvapi_tt_init() {
    return a_qortvapi_teletext_register_msg_callback(_teletext_callback_fct,
                                                     registrationTag(11111));
}

QORTVAPI_TTX_PAGE_ADDR_T toMiddleware(const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page) {
    QORTVAPI_TTX_PAGE_ADDR_T result{};
    result.ui1_magazine = page.magazine;
    result.ui1_page = page.page;
    result.ui2_sub_page = page.sub_page;
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
