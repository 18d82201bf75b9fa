// Picture-and-picture: main and sub video, and their foci.
#include <atomic>
#include <memory>

#include "middleware/inputsource.h"
#include "middleware/multiview.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/settings/video_paths.h"

namespace television {
namespace {

static_assert(int{MULTIVIEW_FOCUS_MAIN} == 0 && int{MULTIVIEW_FOCUS_SUB} == 1);

bool isOnScreen(const QORTVAPI_MULTIVIEW_REGION_T& region) {
    const uint64_t right = uint64_t{region.ui4_x} + region.ui4_width;
    const uint64_t bottom = uint64_t{region.ui4_y} + region.ui4_height;
    return region.ui4_width != 0 && region.ui4_height != 0 && right <= MULTIVIEW_SCREEN_WIDTH &&
           bottom <= MULTIVIEW_SCREEN_HEIGHT;
}

int32_t start(VideoPaths& paths, size_t path, uint8_t sourceId) {
    const InputSource* const source = inputSource(sourceId);
    return source == nullptr ? int32_t{TV_NOT_FOUND} : paths.start(path, *source);
}

int32_t startIn(VideoPaths& paths, size_t path, uint8_t sourceId,
                const QORTVAPI_MULTIVIEW_REGION_T* region) {
    if (!writable(region) || !isOnScreen(*region)) return TV_INVALID_ARGUMENT;
    return start(paths, path, sourceId);
}

int32_t stop(VideoPaths& paths, size_t path) {
    paths.stop(path);
    return TV_OK;
}

int32_t resourceOf(const VideoPaths::State& state) {
    if (!state.playing) return MULTIVIEW_RESOURCE_NONE;
    const uint32_t flags = inputSource(state.source)->flags;
    if ((flags & INPUT_SOURCE_HAS_TUNER) != 0) return MULTIVIEW_RESOURCE_TUNER;
    const bool digital = (flags & INPUT_SOURCE_DIGITAL) != 0;
    return digital ? MULTIVIEW_RESOURCE_DIGITAL : MULTIVIEW_RESOURCE_ANALOGUE;
}

/** Plugs a function whose first argument names a video path; it returns `act(path, arguments...)`.
 */
template <auto Function, typename... Arguments, typename Act>
void plugPath(switchboard::Switchboard& board, Act act) {
    board.on<Function>([act](const char* name, Arguments... arguments) -> int32_t {
        const std::optional<size_t> path = windowNamed(name);
        return path ? act(*path, arguments...) : int32_t{TV_INVALID_ARGUMENT};
    });
}

void plugFocus(switchboard::Switchboard& board, VideoPaths& paths) {
    board.on<&a_qortvapi_multiview_getPOPTunerFocus>(
            [&paths] { return static_cast<int32_t>(paths.focus()); });
    board.on<&a_qortvapi_multiview_getAudioFocus>(
            [&paths] { return static_cast<int32_t>(paths.soundFocus()); });
    board.on<&a_qortvapi_multiview_setAudioFocusbySourceid>(
            [&paths](uint8_t sourceId) { return paths.setFocusBySource(sourceId); });
    plugPath<&a_qortvapi_multiview_setAudioFocus>(
            board, [&paths](size_t path) { return paths.setFocus(path, true); });
    plugPath<&a_qortvapi_multiview_only_chg_focus>(
            board, [&paths](size_t path) { return paths.setFocus(path, false); });
}

}  // namespace

void plugMultiview(switchboard::Switchboard& board, VideoPaths& paths) {
    plugFocus(board, paths);
    board.on<&a_qortvapi_multiview_setNewTvMode>(
            [&paths](uint8_t mode) { return paths.setMode(mode); });
    board.on<&a_qortvapi_multiview_is_source_available_bysourceidandpath>(
            [](uint8_t sourceId, const char* path, uint8_t* available) {
                return a_qortvapi_inputsource_is_source_available_bysourceidandpath(sourceId, path,
                                                                                    available);
            });
    board.on<&a_qortvapi_multiview_startMainVideo>(
            [&paths](uint8_t sourceId, const QORTVAPI_MULTIVIEW_REGION_T* region) {
                return startIn(paths, MULTIVIEW_FOCUS_MAIN, sourceId, region);
            });
    board.on<&a_qortvapi_multiview_startSubVideo>(
            [&paths](uint8_t sourceId, const QORTVAPI_MULTIVIEW_REGION_T* region) {
                return startIn(paths, MULTIVIEW_FOCUS_SUB, sourceId, region);
            });
    board.on<&a_qortvapi_multiview_stopMainVideo>(
            [&paths] { return stop(paths, MULTIVIEW_FOCUS_MAIN); });
    board.on<&a_qortvapi_multiview_stopSubVideo>(
            [&paths] { return stop(paths, MULTIVIEW_FOCUS_SUB); });
    board.on<&a_qortvapi_multiview_startVideoWithoutVideoPath>(
            [&paths](uint8_t sourceId, const char* name) -> int32_t {
                const std::optional<size_t> path = windowNamed(name);
                return path ? start(paths, *path, sourceId) : int32_t{TV_INVALID_ARGUMENT};
            });
    plugPath<&a_qortvapi_multiview_stopVideoWithoutVideoPath>(
            board, [&paths](size_t path) { return stop(paths, path); });
    plugPath<&a_qortvapi_multiview_getVideoResource>(
            board, [&paths](size_t path) { return resourceOf(paths.state(path)); });
    plugPath<&a_qortvapi_multiview_get_video_state>(
            board, [&paths](size_t path) { return paths.state(path).playing ? 1 : 0; });
    plugPath<&a_qortvapi_multiview_set_video_state, bool>(
            board, [&paths](size_t path, bool playing) {
                return playing ? paths.resume(path) : stop(paths, path);
            });
    const auto changing = std::make_shared<std::atomic<bool>>(false);
    board.on<&a_qortvapi_multiview_setChgSource>([changing](bool on) {
        *changing = on;
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_multiview_getChgSource>([changing] { return *changing ? 1 : 0; });
}

}  // namespace television
