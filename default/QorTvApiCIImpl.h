/** Conditional access: the CI module's properties, dialogues and PIN, and the host's CI+ keys. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCI.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method is the middleware function of its name, less the prefix. No state: any thread, any
 * number at a time. Data of a fixed size that a client sends too long end the process.
 */
class QorTvApiCIImpl : public IQorTvApiCI {
  public:
    /** Answers at most what the buffer of the type holds; not at all where the type is unknown or
     * memory is short. */
    Return<void> a_hidl_a_qortvapi_ci_get(uint32_t type, uint32_t info,
                                          const hidl_vec<uint8_t>& in_data, uint32_t in_data_length,
                                          a_hidl_a_qortvapi_ci_get_cb _hidl_cb) override;
    /** Answers type 29 alone, with four zeros where the module has written no PIN. */
    Return<void> a_hidl_a_qortvapi_ci_get_cam_pin_code(
            uint32_t type, uint32_t info,
            a_hidl_a_qortvapi_ci_get_cam_pin_code_cb _hidl_cb) override;
    /** Returns 0 without a call for types that are unknown. */
    Return<int32_t> a_hidl_a_qortvapi_ci_set(uint32_t type, uint32_t info,
                                             const hidl_vec<uint8_t>& data) override;
    /** Takes type 2 alone; returns 0 without a call for others. */
    Return<int32_t> a_hidl_a_qortvapi_ci_set_mmi_enq_ans(
            uint32_t type, uint32_t info, const HIDL_CI_MMI_ENQ_ANS_T& enq_ans) override;
    Return<void> a_hidl_a_qortvapi_ci_get_virtual_channel_info(
            uint32_t size, a_hidl_a_qortvapi_ci_get_virtual_channel_info_cb _hidl_cb) override;

    // The host's CI+ keys.
    Return<int32_t> a_hidl_a_qortvapi_ci_key_erase() override;
    Return<void> a_hidl_a_qortvapi_ci_key_get_host_id(
            uint8_t size, a_hidl_a_qortvapi_ci_key_get_host_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ci_key_query(
            a_hidl_a_qortvapi_ci_key_query_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ci_key_query_exist(
            a_hidl_a_qortvapi_ci_key_query_exist_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_ci_key_query_exist_ex(
            uint32_t key, a_hidl_a_qortvapi_ci_key_query_exist_ex_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_update() override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_update_with_path(const hidl_string& path) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_update_with_path_ex(const hidl_string& path,
                                                                 uint32_t key) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_update_ex(uint32_t key) override;
    /** Passes `length` on as it is, also where it is more than `key` has. */
    Return<int32_t> a_hidl_a_qortvapi_ci_key_write(const hidl_vec<uint8_t>& key,
                                                   uint32_t length) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_activate() override;

    /** Only the first call of the process reaches the middleware. */
    Return<void> a_hidl_a_qortvapi_ci_reg_callback(
            uint32_t number, uint32_t category_tag,
            a_hidl_a_qortvapi_ci_reg_callback_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_unreg_callback(uint32_t ci) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
