#define LOG_TAG "hh_qortvapi_mheg5"

#include "hhandler/hh_qortvapi_mheg5.h"

#include "bridge.h"
#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/mheg5.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// Clients receive the first argument in all three places, on which they rely.
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

/** Asks every client; the last one that answers with a result other than -1 decides. */
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

void hh_a_qortvapi_mheg5_get_current_channel(
        const std::function<void(uint16_t, const hidl_vec<uint8_t>&, const hidl_vec<uint8_t>&,
                                 int32_t)>& answer) {
    uint16_t svl_id = 0;
    Output<SVL_REC_T> svl_rec;
    Output<TSL_REC_T> tsl_rec;
    const int32_t ret =
            a_qortvapi_mheg5_get_current_channel(&svl_id, svl_rec.pointer(), tsl_rec.pointer());
    TVAPI_DEBUG("{MHEG5} ui2_svl_id:%d, i4_ret:%d\n", svl_id, ret);
    answer(svl_id, svl_rec.forClient(), tsl_rec.forClient(), ret);
}

void hh_a_qortvapi_mheg5_get_pfg_info_len(const std::function<void(uint32_t, int32_t)>& answer) {
    uint32_t length = 0;
    const int32_t ret = a_qortvapi_mheg5_get_pfg_info_len(&length);
    answer(length, ret);
    TVAPI_DEBUG("{MHEG5} ui4_str_len:%d, i4_ret:%d\n", length, ret);
}

void hh_a_qortvapi_mheg5_get_pfg_info(
        uint32_t length, const std::function<void(const hidl_string&, bool, int32_t)>& answer) {
    CallerText info(length);
    uint8_t flag = 0;
    const int32_t ret = a_qortvapi_mheg5_get_pfg_info(info.data(), &length, &flag);
    const bool show = flag != 0;
    TVAPI_DEBUG("{MHEG5} ui4_len:%d, b_show:%d, i4_ret:%d\n", length, show, ret);
    answer(info.forClient(), show, ret);
}

void hh_a_qortvapi_mheg5_get_internal_scrn(const std::function<void(bool, int32_t)>& answer) {
    uint8_t flag = 0;
    const int32_t ret = a_qortvapi_mheg5_get_internal_scrn(&flag);
    const bool internal = flag != 0;
    answer(internal, ret);
    TVAPI_DEBUG("{MHEG5} b_internal_scrn:%d, i4_ret:%d\n", internal, ret);
}

int32_t hh_a_qortvapi_mheg5_set_pfg_result(bool right) {
    const int32_t ret = a_qortvapi_mheg5_set_pfg_result(right);
    TVAPI_DEBUG("{MHEG5} b_right:%d, i4_ret:%d\n", right, ret);
    return ret;
}

int32_t hh_a_qortvapi_mheg5_set_hbbtv_status(uint32_t id, bool success) {
    const int32_t ret = a_qortvapi_mheg5_set_hbbtv_status(id, success);
    TVAPI_DEBUG("{MHEG5} b_success:%d, i4_ret:%d\n", success, ret);
    return ret;
}

int32_t hh_a_qortvapi_mheg5_enabled() {
    TVAPI_DEBUG("{MHEG5} enable mheg5.\n");
    return a_qortvapi_mheg5_enabled();
}

int32_t hh_a_qortvapi_mheg5_disabled() {
    TVAPI_DEBUG("{MHEG5} disable mheg5.\n");
    return a_qortvapi_mheg5_disabled();
}

int32_t hh_a_qortvapi_mheg5_set_mheg5_status(int32_t type, int32_t arg1, int32_t arg2,
                                             int32_t arg3) {
    TVAPI_DEBUG("{MHEG5} updateType:%d, argv1:%d, argv2:%d, argv3:%d.\n", type, arg1, arg2, arg3);
    return a_qortvapi_mheg5_set_mheg5_status(type, arg1, arg2, arg3);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
