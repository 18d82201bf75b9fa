#define LOG_TAG "hh_svctx"

#include "hhandler/hh_svctx.h"

#include <cstring>
#include <memory>
#include <new>

#include "bridge.h"
#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/svctx.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

uint32_t gMainSvctx = 0;
uint32_t gSubSvctx = 0;

namespace {

constexpr char kMainName[] = "main_svctx";
constexpr char kSubName[] = "sub_svctx";

/**
 * Returns the middleware's record for the source descriptor of a client, which has the layout for
 * pointers of four bytes. With pointers of eight bytes the fields are at other offsets, so the
 * record is filled field by field on every processor. The bytes in the place of a pointer are not
 * used.
 */
SVCTX_SRC_DESC_T sourceDescriptor(const HIDL_SRC_DESC_T& source, const char* method) {
    constexpr size_t kBeforeValue = 4;
    constexpr size_t kBeforeSecond = 12;
    constexpr size_t kRest = 220;
    uint8_t image[260] = {};
    boundedCopy(image, sizeof(image), source.record, method);
    SVCTX_SRC_DESC_T record = {};
    static_assert(kRest + sizeof(record.aui1_rest) == sizeof(image));
    record.ps_first_name = source.first_name.c_str();
    memcpy(record.aui1_before_value, image + kBeforeValue, sizeof(record.aui1_before_value));
    record.ui4_value = source.value;
    memcpy(record.aui1_before_second, image + kBeforeSecond, sizeof(record.aui1_before_second));
    record.ps_second_name = source.second_name.c_str();
    memcpy(record.aui1_rest, image + kRest, sizeof(record.aui1_rest));
    return record;
}

/**
 * Returns a buffer for a read whose size the client chose; ends the process if memory is short. It
 * is deliberately not zeroed: the client knows from the attribute which bytes the middleware wrote,
 * and by the contract the bytes after those have no defined value.
 */
std::unique_ptr<uint8_t[]> uninitialisedBytes(uint32_t size, const char* method) {
    std::unique_ptr<uint8_t[]> bytes(new (std::nothrow) uint8_t[size]);
    if (bytes == nullptr) endForLackOfMemory(size, 1, method);
    return bytes;
}

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
    if (gMainSvctx == 0) c_svctx_open(kMainName, &gMainSvctx);
    if (gSubSvctx == 0) c_svctx_open(kSubName, &gSubSvctx);

    int32_t i4_ret =
            c_svctx_set_listener(gMainSvctx, _svctx_listener_nfy_fct, registrationTag(12345678));
    TVAPI_DEBUG("c_svctx_set_listener i4_ret = %d\n", i4_ret);
    i4_ret = c_svctx_set_listener(gSubSvctx, _svctx_listener_nfy_fct, registrationTag(87654321));
    TVAPI_DEBUG("c_svctx_set_listener i4_ret = %d\n", i4_ret);
    return i4_ret;
}

void hh_c_svctx_open(const hidl_string& name, const HandleAnswer& answer) {
    uint32_t h_svctx = 0;
    int32_t i4_ret = -1;
    const auto use = [&](const char* ps_name, uint32_t& handle) {
        h_svctx = handle;
        // A handle that is opened here is answered from the next call on: clients rely on that.
        i4_ret = h_svctx != 0 ? 0 : c_svctx_open(ps_name, &handle);
    };
    if (strncmp(name.c_str(), kMainName, strlen(name.c_str())) == 0) {
        use(kMainName, gMainSvctx);
    } else if (strncmp(name.c_str(), kSubName, strlen(kSubName)) == 0) {
        use(kSubName, gSubSvctx);
    }
    TVAPI_DEBUG("%s %d", name.c_str(), i4_ret);
    if (answer) answer(h_svctx, i4_ret);
}

int32_t hh_c_svctx_close(uint32_t /*h_svctx*/) {
    TVAPI_DEBUG(".");
    return 0;
}

void hh_c_svctx_get_64(uint32_t h_svctx, uint32_t ui4_type, const hidl_vec<uint8_t>& data,
                       const BytesAnswer& answer) {
    const CallerArray<uint8_t> buffer(data.size());
    boundedCopy(buffer.data(), data.size(), data);
    uint32_t ui4_size = static_cast<uint32_t>(data.size());
    const int32_t i4_ret = c_svctx_get(h_svctx, ui4_type, buffer.data(), &ui4_size);
    answer(borrowedBytes(buffer.data(), data.size()), i4_ret);
    TVAPI_DEBUG("h_svctx %d %d\n", h_svctx, i4_ret);
}

void hh_c_svctx_get_video_src_resolution(uint32_t h_svctx, const BytesAnswer& answer) {
    Output<SVCTX_VIDEO_RESOLUTION_T> resolution;
    const int32_t i4_ret = c_svctx_get_video_src_resolution(h_svctx, resolution.pointer());
    answer(resolution.forClient(), i4_ret);
    TVAPI_DEBUG("h_svctx %d\n", h_svctx);
}

void hh_c_svctx_get_audio_info(uint32_t h_svctx, const BytesAnswer& answer) {
    Output<SVCTX_AUDIO_INFO_T> audio_info;
    const int32_t i4_ret = c_svctx_get_audio_info(h_svctx, audio_info.pointer());
    answer(audio_info.forClient(), i4_ret);
    TVAPI_DEBUG("h_svctx %d %d\n", h_svctx, i4_ret);
}

int32_t hh_c_svctx_select_svc_64(uint32_t h_svctx, uint32_t ui4_mode, const HIDL_SRC_DESC_T& source,
                                 const hidl_vec<uint8_t>& sink, uint64_t tag) {
    const SVCTX_SRC_DESC_T record = sourceDescriptor(source, __func__);
    TVAPI_DEBUG("h_svctx %d %d\n", h_svctx, ui4_mode);
    return c_svctx_select_svc(h_svctx, ui4_mode, &record, sink.data(), _svctx_select_nfy_fct,
                              registrationTag(static_cast<uint32_t>(tag)));
}

int32_t hh_c_svctx_set_stream_attr_64(uint32_t h_svctx, uint32_t ui4_stream_type,
                                      uint32_t ui4_attribute, const hidl_vec<uint8_t>& data) {
    const int32_t i4_ret = c_svctx_set_stream_attr(h_svctx, ui4_stream_type, ui4_attribute,
                                                   data.data(), static_cast<uint32_t>(data.size()));
    TVAPI_DEBUG("h_svctx %d %d %d %d\n", h_svctx, ui4_stream_type, ui4_attribute, i4_ret);
    return i4_ret;
}

void hh_c_svctx_get_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute,
                              uint32_t size, const BytesAnswer& answer) {
    const std::unique_ptr<uint8_t[]> buffer = uninitialisedBytes(size, __func__);
    const int32_t i4_ret = c_svctx_get_conn_attr(h_svctx, ui4_type, ui4_attribute, buffer.get());
    answer(borrowedBytes(buffer.get(), size), i4_ret);
    TVAPI_DEBUG("h_svctx %d %d %x %d\n", h_svctx, ui4_type, ui4_attribute, i4_ret);
}

void hh_c_svctx_set_conn_attr(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_attribute,
                              const hidl_vec<uint8_t>& data, const BytesAnswer& answer) {
    const int32_t i4_ret = c_svctx_set_conn_attr(h_svctx, ui4_type, ui4_attribute,
                                                 const_cast<uint8_t*>(data.data()));
    answer(data, i4_ret);
    TVAPI_DEBUG("h_svctx %d %d %d %d\n", h_svctx, ui4_type, ui4_attribute, i4_ret);
}

void hh_c_svctx_generic_get_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype,
                                 uint32_t ui4_size, const BytesAnswer& answer) {
    const std::unique_ptr<uint8_t[]> buffer = uninitialisedBytes(ui4_size, __func__);
    const int32_t i4_ret =
            c_svctx_generic_get_info(h_svctx, ui4_type, ui4_subtype, buffer.get(), ui4_size);
    answer(borrowedBytes(buffer.get(), ui4_size), i4_ret);
    TVAPI_DEBUG("%d %d %d %d\n", h_svctx, ui4_type, ui4_subtype, i4_ret);
}

void hh_c_svctx_generic_set_info(uint32_t h_svctx, uint32_t ui4_type, uint32_t ui4_subtype,
                                 const hidl_vec<uint8_t>& data, const BytesAnswer& answer) {
    const CallerArray<uint8_t> buffer(data.size());
    boundedCopy(buffer.data(), data.size(), data);
    const int32_t i4_ret = c_svctx_generic_set_info(h_svctx, ui4_type, ui4_subtype, buffer.data(),
                                                    static_cast<uint32_t>(data.size()));
    answer(borrowedBytes(buffer.data(), data.size()), i4_ret);
    TVAPI_DEBUG("%d %d %d %d\n", h_svctx, ui4_type, ui4_subtype, i4_ret);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
