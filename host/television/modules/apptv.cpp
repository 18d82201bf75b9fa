// The TV application: started or stopped, the state of each window, whether its picture is muted.
#include <array>
#include <memory>
#include <mutex>

#include "middleware/apptv.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Bytes of the longest name of a time stamp, with its NUL. */
constexpr size_t kLongestStampName = 256;

/** Any thread. */
struct Application {
    std::mutex mutex;
    std::array<bool, kWindowCount> videoMuted = {};  // guarded by mutex
};

/** Returns the id of the channel of a list that has a number. The minor number has to be 0, unless
 * numbers have one part: then it is ignored. */
int32_t matchedChannel(const Core& core, int16_t listId, bool onePart, int32_t major,
                       int32_t minor) {
    if (listId < 0 || major < 0) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(static_cast<uint32_t>(listId));
        if (list == nullptr || (!onePart && minor != 0)) return TV_NOT_FOUND;
        const Service* found = list->byNumber(static_cast<uint32_t>(major));
        if (found == nullptr) return TV_NOT_FOUND;
        return static_cast<int32_t>(found->record.ui4_channel_id);
    });
}

/** Returns the name of the service in the main window; empty when there is none. */
std::string serviceText(const Core& core) {
    const auto playing = core.playing(0);
    return playing ? playing->service.s_service_name : std::string();
}

void plugServiceText(switchboard::Switchboard& board, const Core& core) {
    board.on<&a_qortvapi_apptv_get_current_channel_svc_text_len>([&core] {
        const std::string text = serviceText(core);
        return text.empty() ? int32_t{TV_NOT_FOUND} : static_cast<int32_t>(text.size() + 1);
    });
    board.on<&a_qortvapi_apptv_get_current_channel_svc_text>(
            [&core](char* to, int32_t length) -> int32_t {
                if (length < 0) return TV_INVALID_ARGUMENT;
                const std::string text = serviceText(core);
                if (text.empty()) return TV_NOT_FOUND;
                // A client may pass no buffer, to receive the result alone.
                return to == nullptr ? TV_OK : putText(to, static_cast<uint32_t>(length), text);
            });
}

}  // namespace

void plugTvApplication(switchboard::Switchboard& board, Core& core) {
    const auto application = std::make_shared<Application>();
    const auto notify = [&core](int32_t type, uint32_t value, size_t window) {
        core.notifier.post({registration<&a_qortvapi_apptv_register_callback>(),
                            type,
                            {value, static_cast<uint32_t>(window), 0, 0}});
        return int32_t{TV_OK};
    };
    board.on<&a_qortvapi_apptv_save_timestamp>([](const char* name) -> int32_t {
        const auto text = readText(name, kLongestStampName);
        if (!text) return TV_INVALID_ARGUMENT;
        LOG_TV_INFO("time stamp of the application: {}", *text);
        return TV_OK;
    });
    board.on<&a_qortvapi_apptv_set_tv_started>([=](bool started) {
        return notify(started ? APPTV_NFY_STARTED : APPTV_NFY_STOPPED, 0, 0);
    });
    board.on<&a_qortvapi_apptv_start_tv>([=] { return notify(APPTV_NFY_STARTED, 0, 0); });
    board.on<&a_qortvapi_apptv_stop_all>([=] { return notify(APPTV_NFY_STOPPED, 0, 0); });
    board.on<&a_qortvapi_apptv_update_sys_status>(
            [=](uint32_t status) { return notify(APPTV_NFY_SYS_STATUS, status, 0); });
    board.on<&a_qortvapi_apptv_nav_update_sys_status_by_win>(
            [=](const char* name, uint32_t status) {
                const auto window = windowNamed(name);
                return window ? notify(APPTV_NFY_SYS_STATUS, status, *window)
                              : int32_t{TV_INVALID_ARGUMENT};
            });
    // No service is ever locked, so there is nothing to unlock.
    const auto known = [](const char* name) {
        return int32_t{windowNamed(name) ? TV_OK : TV_INVALID_ARGUMENT};
    };
    board.on<&a_qortvapi_apptv_unlock_service>(known);
    board.on<&a_qortvapi_apptv_unblock_svc>([=](const char* name, bool) { return known(name); });
    board.on<&a_qortvapi_apptv_swap_tmp_unlock_info>([](int32_t) { return int32_t{TV_OK}; });
    board.on<&a_qortvapi_apptv_get_matched_channel>(
            [&core](int16_t listId, bool onePart, int32_t major, int32_t minor) {
                return matchedChannel(core, listId, onePart, major, minor);
            });
    plugServiceText(board, core);
    board.on<&a_qortvapi_apptv_set_video_mute>([=](const char* name, bool mute) -> int32_t {
        const auto window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(application->mutex);
        if (application->videoMuted[*window] == mute) return TV_OK;
        application->videoMuted[*window] = mute;
        return notify(APPTV_NFY_VIDEO_MUTE, mute ? 1 : 0, *window);
    });
    // The result is 0 or 1, and no error code: 0 also when there is no such window.
    board.on<&a_qortvapi_apptv_get_video_mute>([=](const char* name) -> int32_t {
        const auto window = windowNamed(name);
        if (!window) return 0;
        std::lock_guard<std::mutex> lock(application->mutex);
        return application->videoMuted[*window] ? 1 : 0;
    });
    board.on<&a_qortvapi_apptv_get_capability_ex>([](int32_t item, uint32_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        if (item != APPTV_CAPABILITY_WINDOWS && item != APPTV_CAPABILITY_TUNERS) {
            return TV_NOT_SUPPORTED;
        }
        *to = kWindowCount;
        return TV_OK;
    });
}

}  // namespace television
