#define LOG_TAG "hh_qortvapi_mheg5"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/mheg5.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// Clients receive the first argument in all three places: they were written against that.
void _mheg5_nfy_fct(int32_t i4_callback_type, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2,
                    int32_t i4_arg3) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("{MHEG5} i4_callback_type = %d, pv_tag:%llu, arg1:%d, arg2:%d, arg3:%d.\n",
                i4_callback_type, printable(pv_tag), i4_arg1, i4_arg2, i4_arg3);
    clients.call(&IQorTvApiCallback::notifyMheg5, i4_callback_type, pv_tag, i4_arg1, i4_arg1,
                 i4_arg1);
}

void _mheg5_lanuch_hbbtv_fct(const char* ps_location, void* pv_tag, int32_t i4_arg1) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("{MHEG5} ps_location = (%s), pv_tag:%llu, arg1:%d.\n", ps_location,
                printable(pv_tag), i4_arg1);
    const hidl_string location(ps_location);
    clients.call(&IQorTvApiCallback::notifyMheg5LaunchHbbtv, location, pv_tag, i4_arg1);
}

/** Every client is asked; the last one that answers with a result other than -1 decides. */
void _mheg5_is_mime_type_support_fct(const char* ps_mime_type, uint8_t* pb_supported, void* pv_tag,
                                     int32_t i4_arg1) {
    const FanOut clients(LOG_TAG);
    const hidl_string mime_type(ps_mime_type);
    TVAPI_DEBUG("{MHEG5} ps_mime_type = (%s), pv_tag:%llu, arg1:%d.\n", ps_mime_type,
                printable(pv_tag), i4_arg1);
    const IQorTvApiCallback::isMheg5MimeTypeSupported_cb take = [&](bool supported,
                                                                    int32_t result) {
        if (result == -1) return;
        *pb_supported = supported ? 1 : 0;
        TVAPI_DEBUG("{MHEG5} b_supported = %d.\n", *pb_supported);
    };
    clients.call(&IQorTvApiCallback::isMheg5MimeTypeSupported, mime_type, pv_tag, i4_arg1, take);
}

}  // namespace

int32_t hh_a_qortvapi_mheg5_init() {
    int32_t ret = a_qortvapi_mheg5_register_msg_callback(_mheg5_nfy_fct, registrationTag(9000));
    if (ret != 0) TVAPI_DEBUG("{MHEG5} ret = %d.\n", ret);
    ret = a_qortvapi_mheg5_reg_launch_hbbtv_nfy(0, _mheg5_lanuch_hbbtv_fct, registrationTag(9001));
    if (ret != 0) TVAPI_DEBUG("{MHEG5} ret = %d.\n", ret);
    ret = a_qortvapi_mheg5_reg_is_mime_type_support_fct(0, _mheg5_is_mime_type_support_fct,
                                                        registrationTag(9002));
    if (ret != 0) TVAPI_DEBUG("{MHEG5} ret = %d.\n", ret);
    return ret;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
