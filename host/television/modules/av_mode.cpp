// Picture modes and sound effects.
#include "middleware/av_mode.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/mode_setting.h"
#include "television/modules/modules.h"

namespace television {
namespace {

constexpr ModeSetting kPictureMode = {"picture.mode", PICTURE_MODE_COUNT};
constexpr ModeSetting kSoundEffect = {"sound.effect", SOUND_EFFECT_COUNT};

}  // namespace

void plugAvModes(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_av_mode_get_picture_mode>([&core] { return kPictureMode.get(core); });
    board.on<&a_qortvapi_av_mode_set_picture_mode>(
            [&core](uint16_t mode) { return kPictureMode.set(core, mode); });
    board.on<&a_qortvapi_av_mode_get_number_picture_mode>(
            [](uint32_t* count) { return kPictureMode.putCount(count); });
    board.on<&a_qortvapi_av_mode_get_sound_effect>([&core] { return kSoundEffect.get(core); });
    board.on<&a_qortvapi_av_mode_set_sound_effect>(
            [&core](uint16_t mode) { return kSoundEffect.set(core, mode); });
    board.on<&a_qortvapi_av_mode_get_number_sound_effect>(
            [](uint32_t* count) { return kSoundEffect.putCount(count); });
    const auto writeAll = [](const ModeSetting& setting, uint16_t* modes, uint32_t room) {
        if (!writable(modes)) return int32_t{TV_INVALID_ARGUMENT};
        setting.write(modes, room);
        return int32_t{TV_OK};
    };
    board.on<&a_qortvapi_av_mode_get_all_picture_mode>(
            [=](uint16_t* modes, uint32_t room) { return writeAll(kPictureMode, modes, room); });
    board.on<&a_qortvapi_av_mode_get_all_sound_effect>([=](uint16_t* effects, uint32_t room) {
        return writeAll(kSoundEffect, effects, room);
    });
}

}  // namespace television
