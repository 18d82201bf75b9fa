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
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time. The process ends if a client sends more bytes
 * than fit where the middleware takes data of a fixed size.
 */
class QorTvApiCIImpl : public IQorTvApiCI {
  public:
    /** Answers with at most the bytes that the buffer for the type holds. There is no answer if the
     * type is unknown or memory is short. */
    Return<void> a_hidl_a_qortvapi_ci_get(uint32_t type, uint32_t info,
                                          const hidl_vec<uint8_t>& in_data, uint32_t in_data_length,
                                          a_hidl_a_qortvapi_ci_get_cb _hidl_cb) override;
    /** Answers for type 29 only. The PIN is four zeros if the module has written none. */
    Return<void> a_hidl_a_qortvapi_ci_get_cam_pin_code(
            uint32_t type, uint32_t info,
            a_hidl_a_qortvapi_ci_get_cam_pin_code_cb _hidl_cb) override;
    /** Returns 0, without calling the middleware, for an unknown type. */
    Return<int32_t> a_hidl_a_qortvapi_ci_set(uint32_t type, uint32_t info,
                                             const hidl_vec<uint8_t>& data) override;
    /** Returns 0, without calling the middleware, for any type but 2. */
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
    /** Passes `length` on unchanged, even if it is more than the bytes of `key`. */
    Return<int32_t> a_hidl_a_qortvapi_ci_key_write(const hidl_vec<uint8_t>& key,
                                                   uint32_t length) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_key_activate() override;

    /** Only the first call in the process reaches the middleware. */
    Return<void> a_hidl_a_qortvapi_ci_reg_callback(
            uint32_t number, uint32_t category_tag,
            a_hidl_a_qortvapi_ci_reg_callback_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_ci_unreg_callback(uint32_t ci) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
