// Text that comes with a service: closed captions, subtitles, teletext.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include <algorithm>

#include "bridge.h"
#include "hhandler/hh_qortvapi_teletext.h"
#include "log.h"
#include "middleware/cc.h"
#include "middleware/subtitle.h"
#include "middleware/teletext.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Closed captions.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_set_visible(bool visible) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_set_visible(visible);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_demo_set(int32_t item, int32_t value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_demo_set(item, value);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_set_visible(bool visible) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_set_visible(visible);
}

// Subtitles.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_get_loop(
        const hidl_vec<int32_t>& values, a_hidl_a_qortvapi_subtitle_get_loop_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const auto count = static_cast<uint32_t>(values.size());
    const CallerArray<int32_t> loop(count);
    std::copy_n(values.data(), count, loop.data());
    const int32_t result = a_qortvapi_subtitle_get_loop(loop.data(), count);
    _hidl_cb(borrowedVector(loop.data(), count), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_play(uint8_t track) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_subtitle_play(track);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_set_next() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_subtitle_set_next();
}

// Teletext.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_get_cur_page(
        a_hidl_a_qortvapi_teletext_get_cur_page_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_teletext_get_cur_page);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_set_page(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return a_qortvapi_teletext_set_page(&address);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_is_top_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_teletext_is_top_stream();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_block_content(
        a_hidl_a_qortvapi_teletext_top_get_block_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_block_content);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_group_content(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
        a_hidl_a_qortvapi_teletext_top_get_group_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_group_content, &address);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_page_content(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
        a_hidl_a_qortvapi_teletext_top_get_page_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_page_content, &address);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_get_ttx_rating_on() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_teletext_get_ttx_rating_on();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
