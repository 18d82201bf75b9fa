// Screen mode, zoom, overscan, freezing, picture and sound modes, screen-saver messages.
#include <algorithm>
#include <array>
#include <memory>
#include <mutex>

#include "calls.h"
#include "client_text.h"
#include "input_sources.h"
#include "middleware/av_mode.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/util.h"
#include "playing.h"

namespace television {
namespace {

/** One of a number of modes that is remembered. Modes count from 0, and mode 0 is the first one. */
struct ModeSetting {
    const char* name;
    uint16_t count;

    int32_t get(const Core& core) const { return core.rememberedNumber(name, 0); }
    int32_t set(Core& core, uint16_t mode) const {
        if (mode >= count) return TV_INVALID_ARGUMENT;
        core.rememberNumber(name, mode);
        return TV_OK;
    }
    int32_t answerCount(uint32_t* to) const {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = count;
        return TV_OK;
    }
    /** Writes the first modes and answers their number. */
    uint32_t write(uint16_t* modes, uint32_t room) const {
        const uint32_t written = std::min<uint32_t>(room, count);
        for (uint32_t i = 0; i < written; ++i) modes[i] = static_cast<uint16_t>(i);
        return written;
    }
};
constexpr ModeSetting kScreenMode = {"screen.mode", SCREEN_MODE_COUNT};
constexpr ModeSetting kPictureMode = {"picture.mode", PICTURE_MODE_COUNT};
constexpr ModeSetting kSoundEffect = {"sound.effect", SOUND_EFFECT_COUNT};

/** Top, bottom, left, right. */
struct Overscan {
    static constexpr const char* kNames[] = {"overscan.top", "overscan.bottom", "overscan.left",
                                             "overscan.right"};
    std::mutex mutex;
    std::array<uint32_t, 4> edges = {};  // guarded by mutex
};

void plugScreenMode(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    board.on<&a_qortvapi_screenmode_get_screen_mode>([&core] { return kScreenMode.get(core); });
    board.on<&a_qortvapi_screenmode_set_screen_mode>(
            [&core](uint16_t mode) { return kScreenMode.set(core, mode); });
    board.on<&a_qortvapi_screenmode_get_number_screen_mode>(
            [](uint32_t* count) { return kScreenMode.answerCount(count); });
    board.on<&a_qortvapi_screenmode_get_all_screen_mode>([](uint16_t* modes, uint32_t* count) {
        if (!writable(count)) return int32_t{TV_INVALID_ARGUMENT};
        *count = writable(modes) ? kScreenMode.write(modes, *count) : kScreenMode.count;
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_zoom_is_enable>(
            [&inputs] { return int32_t{inputs.pictureIn(0).width != 0 ? 1 : 0}; });
}

void plugOverscan(switchboard::Switchboard& board, Core& core) {
    const auto overscan = std::make_shared<Overscan>();
    for (size_t i = 0; i < overscan->edges.size(); ++i) {
        overscan->edges[i] = static_cast<uint32_t>(core.rememberedNumber(Overscan::kNames[i], 0));
    }
    board.on<&a_qortvapi_screenmode_set_crnt_overscan>(
            [overscan](uint32_t top, uint32_t bottom, uint32_t left, uint32_t right) -> int32_t {
                const std::array<uint32_t, 4> edges = {top, bottom, left, right};
                if (*std::max_element(edges.begin(), edges.end()) > OVERSCAN_MAX) {
                    return TV_INVALID_ARGUMENT;
                }
                std::lock_guard<std::mutex> lock(overscan->mutex);
                overscan->edges = edges;
                return TV_OK;
            });
    board.on<&a_qortvapi_screenmode_get_crnt_overscan>(
            [overscan](uint32_t* top, uint32_t* bottom, uint32_t* left, uint32_t* right) {
                std::lock_guard<std::mutex> lock(overscan->mutex);
                uint32_t* const to[] = {top, bottom, left, right};
                for (size_t i = 0; i < overscan->edges.size(); ++i) put(to[i], overscan->edges[i]);
                return int32_t{TV_OK};
            });
    board.on<&a_qortvapi_screenmode_update_overscan_ini>([overscan, &core] {
        std::lock_guard<std::mutex> lock(overscan->mutex);
        for (size_t i = 0; i < overscan->edges.size(); ++i) {
            core.rememberNumber(Overscan::kNames[i], static_cast<int32_t>(overscan->edges[i]));
        }
        return int32_t{TV_OK};
    });
}

void plugModes(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_av_mode_get_picture_mode>([&core] { return kPictureMode.get(core); });
    board.on<&a_qortvapi_av_mode_set_picture_mode>(
            [&core](uint16_t mode) { return kPictureMode.set(core, mode); });
    board.on<&a_qortvapi_av_mode_get_number_picture_mode>(
            [](uint32_t* count) { return kPictureMode.answerCount(count); });
    board.on<&a_qortvapi_av_mode_get_sound_effect>([&core] { return kSoundEffect.get(core); });
    board.on<&a_qortvapi_av_mode_set_sound_effect>(
            [&core](uint16_t mode) { return kSoundEffect.set(core, mode); });
    board.on<&a_qortvapi_av_mode_get_number_sound_effect>(
            [](uint32_t* count) { return kSoundEffect.answerCount(count); });
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

}  // namespace

void plugPicture(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    plugScreenMode(board, core, inputs);
    plugOverscan(board, core);
    plugModes(board, core);
    board.on<&a_qortvapi_screensaver_get_msgID>([&inputs] { return inputs.screenMessage(); });
    struct Frozen {
        std::mutex mutex;
        std::array<bool, kWindowCount> windows = {};  // guarded by mutex
    };
    const auto frozen = std::make_shared<Frozen>();
    board.on<&a_qortvapi_freeze_set_freeze>([frozen](const char* name, bool freeze) -> int32_t {
        const std::optional<size_t> window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(frozen->mutex);
        frozen->windows[*window] = freeze;
        return TV_OK;
    });
    board.on<&a_qortvapi_freeze_is_freeze>([frozen](const char* name) -> int32_t {
        const std::optional<size_t> window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(frozen->mutex);
        return frozen->windows[*window] ? 1 : 0;
    });
}

}  // namespace television
