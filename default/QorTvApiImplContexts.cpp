// Service contexts and stream components. A method without an entry line has its handler write a
// line of its own, or none.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_scc.h"
#include "hhandler/hh_svctx.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/scc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Service contexts.

Return<void> QorTvApiImpl::a_hidl_c_svctx_open(const hidl_string& name,
                                               a_hidl_c_svctx_open_cb _hidl_cb) {
    hh_c_svctx_open(name, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_close(uint32_t svctx) {
    return hh_c_svctx_close(svctx);
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_64(uint32_t svctx, uint32_t type,
                                                 const hidl_vec<uint8_t>& data,
                                                 a_hidl_c_svctx_get_64_cb _hidl_cb) {
    hh_c_svctx_get_64(svctx, type, data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_video_src_resolution(
        uint32_t svctx, a_hidl_c_svctx_get_video_src_resolution_cb _hidl_cb) {
    hh_c_svctx_get_video_src_resolution(svctx, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_select_svc_64(uint32_t svctx, uint32_t mode,
                                                           const HIDL_SRC_DESC_T& source,
                                                           const hidl_vec<uint8_t>& sink,
                                                           uint64_t tag) {
    return hh_c_svctx_select_svc_64(svctx, mode, source, sink, tag);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_svctx_set_stream_attr_64(uint32_t svctx,
                                                                uint32_t stream_type,
                                                                uint32_t attribute,
                                                                const hidl_vec<uint8_t>& data) {
    return hh_c_svctx_set_stream_attr_64(svctx, stream_type, attribute, data);
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_conn_attr(uint32_t svctx, uint32_t type,
                                                        uint32_t attribute, uint32_t size,
                                                        a_hidl_c_svctx_get_conn_attr_cb _hidl_cb) {
    hh_c_svctx_get_conn_attr(svctx, type, attribute, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_set_conn_attr(uint32_t svctx, uint32_t type,
                                                        uint32_t attribute,
                                                        const hidl_vec<uint8_t>& data,
                                                        a_hidl_c_svctx_set_conn_attr_cb _hidl_cb) {
    hh_c_svctx_set_conn_attr(svctx, type, attribute, data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_get_audio_info(
        uint32_t svctx, a_hidl_c_svctx_get_audio_info_cb _hidl_cb) {
    hh_c_svctx_get_audio_info(svctx, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_generic_get_info(
        uint32_t svctx, uint32_t type, uint32_t subtype, uint32_t size,
        a_hidl_c_svctx_generic_get_info_cb _hidl_cb) {
    hh_c_svctx_generic_get_info(svctx, type, subtype, size, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_c_svctx_generic_set_info(
        uint32_t svctx, uint32_t type, uint32_t subtype, const hidl_vec<uint8_t>& data,
        a_hidl_c_svctx_generic_set_info_cb _hidl_cb) {
    hh_c_svctx_generic_set_info(svctx, type, subtype, data, _hidl_cb);
    return Void();
}

// Stream components.

Return<void> QorTvApiImpl::a_hidl_c_scc_comp_open(uint32_t type, const hidl_string& sink,
                                                  uint32_t code, const hidl_vec<uint8_t>& data,
                                                  a_hidl_c_scc_comp_open_cb _hidl_cb) {
    hh_c_scc_comp_open(type, sink, code, data, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_c_scc_comp_close(uint32_t component) {
    return hh_c_scc_comp_close(component);
}

Return<int32_t> QorTvApiImpl::a_hidl_c_scc_vid_set_src_detect_nfy(uint32_t component,
                                                                  uint64_t tag) {
    TVAPI_DEBUG("%s", __func__);
    return c_scc_vid_set_src_detect_nfy(component, _inps_detect_cb,
                                        registrationTag(static_cast<uint32_t>(tag)));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
