// Picture modes, sound effects and volume.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/av_mode.h"
#include "middleware/volctrl.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Picture modes and sound effects.

Return<uint16_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_picture_mode() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint16_t>(a_qortvapi_av_mode_get_picture_mode());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_set_picture_mode(uint16_t picture_mode) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_av_mode_set_picture_mode(picture_mode);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_all_picture_mode(
        uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_picture_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint16_t> modes(count);
    const int32_t result = a_qortvapi_av_mode_get_all_picture_mode(modes.data(), count);
    _hidl_cb(borrowedVector(modes.data(), count), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_number_picture_mode(
        a_hidl_a_qortvapi_av_mode_get_number_picture_mode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_av_mode_get_number_picture_mode);
}

Return<uint16_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_sound_effect() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<uint16_t>(a_qortvapi_av_mode_get_sound_effect());
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_set_sound_effect(uint16_t sound_effect) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_av_mode_set_sound_effect(sound_effect);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_all_sound_effect(
        uint32_t count, a_hidl_a_qortvapi_av_mode_get_all_sound_effect_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint16_t> effects(count);
    const int32_t result = a_qortvapi_av_mode_get_all_sound_effect(effects.data(), count);
    _hidl_cb(borrowedVector(effects.data(), count), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_av_mode_get_number_sound_effect(
        a_hidl_a_qortvapi_av_mode_get_number_sound_effect_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_av_mode_get_number_sound_effect);
}

// Volume.

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_incrVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_incrVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_incrVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_incrVolume_by_type(type));
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_decrVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_decrVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_decrVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_decrVolume_by_type(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setVolume(int16_t volume) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setVolume(volume);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setVolume_by_type(int32_t type,
                                                                          int16_t volume) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setVolume_by_type(type, volume);
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getVolume() {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_getVolume());
}

Return<int16_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getVolume_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return static_cast<int16_t>(a_qortvapi_volctrl_getVolume_by_type(type));
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setMute(bool mute) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setMute(mute);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_setMute_by_type(int32_t type, bool mute) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_setMute_by_type(type, mute);
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getMute() {
    TVAPI_DEBUG("%s", __func__);
    // On purpose no question about mute: applications rely on true for any volume but 0.
    return a_qortvapi_volctrl_getVolume() != 0;
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_volctrl_getMute_by_type(int32_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_volctrl_getMute_by_type(type) != 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
