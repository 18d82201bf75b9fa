/**
 * The service contexts of the process: the notification handler of a service selection, and the
 * request handlers.
 *
 * A request handler calls the middleware function of its name with the client's arguments. An
 * `answer` is called exactly once, before the function returns, with the outputs and then the
 * middleware's result. Any thread.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

using BytesAnswer = std::function<void(const hidl_vec<uint8_t>&, int32_t)>;
using HandleAnswer = std::function<void(uint32_t, int32_t)>;

/** The handles of the contexts "main_svctx" and "sub_svctx", 0 until they are opened at start-up.
 * Read and written without a lock. */
extern uint32_t gMainSvctx;
extern uint32_t gSubSvctx;

/** Passes the progress of a selection on to the clients. The middleware gets this handler with the
 * selection. */
void _svctx_select_nfy_fct(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code,
                           uint32_t ui4_stream, void* pv_tag);

/**
 * Answers with the handle that all clients share. Any prefix of "main_svctx", also the empty text,
 * names the main context; any text that begins with "sub_svctx" names the sub context. For any
 * other name the answer is (0, -1). A context that is not open yet is opened now, and the answer is
 * (0, the middleware's result); the next call answers with its handle. An empty `answer` is not
 * called.
 */
void hh_c_svctx_open(const hidl_string& name, const HandleAnswer& answer);

/** Has no effect: the context stays open for the other clients. Returns 0. */
int32_t hh_c_svctx_close(uint32_t h_svctx);

/** Answers with as many bytes as `data` has, whatever size the middleware reports. */
void hh_c_svctx_get_64(uint32_t h_svctx, uint32_t ui4_type, const hidl_vec<uint8_t>& data,
                       const BytesAnswer& answer);

void hh_c_svctx_get_video_src_resolution(uint32_t h_svctx, const BytesAnswer& answer);
void hh_c_svctx_get_audio_info(uint32_t h_svctx, const BytesAnswer& answer);

/** A record of more than 260 bytes ends the process. Only the low 32 bits of `tag` count. */
int32_t hh_c_svctx_select_svc_64(uint32_t h_svctx, uint32_t ui4_mode, const HIDL_SRC_DESC_T& source,
                                 const hidl_vec<uint8_t>& sink, uint64_t tag);

int32_t hh_c_svctx_set_stream_attr_64(uint32_t h_svctx, uint32_t ui4_stream_type,
                                      uint32_t ui4_attribute, const hidl_vec<uint8_t>& data);

/** Answers with `size` bytes; those that the middleware does not write have no defined value. */
void hh_c_svctx_get_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute,
                              uint32_t size, const BytesAnswer& answer);

/** The middleware writes into `data`, which is then answered. */
void hh_c_svctx_set_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute,
                              const hidl_vec<uint8_t>& data, const BytesAnswer& answer);

/** Answers with `ui4_size` bytes; those that the middleware does not write have no defined value.
 */
void hh_c_svctx_generic_get_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype,
                                 uint32_t ui4_size, const BytesAnswer& answer);

/** The middleware writes into a copy of `data`, which is then answered. */
void hh_c_svctx_generic_set_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype,
                                 const hidl_vec<uint8_t>& data, const BytesAnswer& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
