// Screen mode, zoom and overscan.
#include <algorithm>
#include <array>
#include <memory>
#include <mutex>

#include "middleware/result_codes.h"
#include "middleware/screenmode.h"
#include "television/core/client_memory.h"
#include "television/modules/mode_setting.h"
#include "television/modules/modules.h"
#include "television/settings/input_sources.h"

namespace television {
namespace {

constexpr ModeSetting kScreenMode = {"screen.mode", SCREEN_MODE_COUNT};

/** The overscan at the top, bottom, left and right, and the names under which the core remembers it
 * once a client asks for that. Any thread. */
struct Overscan {
    static constexpr const char* kNames[] = {"overscan.top", "overscan.bottom", "overscan.left",
                                             "overscan.right"};
    std::mutex mutex;
    std::array<uint32_t, 4> edges = {};  // guarded by mutex
};

void plugMode(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    board.on<&a_qortvapi_screenmode_get_screen_mode>([&core] { return kScreenMode.get(core); });
    board.on<&a_qortvapi_screenmode_set_screen_mode>(
            [&core](uint16_t mode) { return kScreenMode.set(core, mode); });
    board.on<&a_qortvapi_screenmode_get_number_screen_mode>(
            [](uint32_t* count) { return kScreenMode.putCount(count); });
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

}  // namespace

void plugScreenMode(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    plugMode(board, core, inputs);
    plugOverscan(board, core);
}

}  // namespace television
