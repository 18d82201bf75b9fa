// Service contexts: selecting the service that plays in a window, and its properties.
#include <array>
#include <cstring>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "middleware/result_codes.h"
#include "middleware/svctx.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/core/service_context.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Bytes of the longest service name, with its NUL. */
constexpr size_t kLongestServiceName = 256;

size_t windowOf(uint32_t context) {
    return context == kMainContext ? 0 : 1;
}

/** Returns the id of the first channel with a name; 0 when there is none. */
uint32_t channelNamed(const ChannelLists& lists, const std::string& name) {
    for (const ChannelList& list : lists.lists) {
        for (const Service& service : list.services) {
            if (name == service.record.s_service_name) return service.record.ui4_channel_id;
        }
    }
    return 0;
}

/** Makes the handler that was passed with the selection receive the notifications for the listeners
 * of the context too, each before the listeners do. */
void addSelectorNotifications(std::vector<Notification>& events, uint32_t context,
                              c_svctx_nfy_fct handler, void* tag) {
    if (handler == nullptr) return;
    const RegistrationKey listener = registration<&c_svctx_set_listener>(context);
    std::vector<Notification> all;
    for (const Notification& event : events) {
        if (event.to == listener) {
            all.push_back({registration<&c_svctx_select_svc>(context), event.code, event.arguments,
                           [=, code = static_cast<uint32_t>(event.code), a = event.arguments] {
                               handler(context, code, a[0], a[1], tag);
                           }});
        }
        all.push_back(event);
    }
    events = std::move(all);
}

int32_t select(Core& core, uint32_t context, const SVCTX_SRC_DESC_T* source,
               c_svctx_nfy_fct handler, void* tag) {
    if (!isServiceContext(context)) return TV_NOT_FOUND;
    if (source == nullptr) return TV_INVALID_ARGUMENT;
    uint32_t channelId = source->ui4_value;
    std::string name;
    if (channelId == 0) {
        const std::optional<std::string> text =
                readText(source->ps_first_name, kLongestServiceName);
        if (!text || text->empty()) return TV_INVALID_ARGUMENT;
        name = *text;
    }
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        if (channelId == 0) channelId = channelNamed(lists, name);
        if (lists.listOf(channelId) == nullptr) {
            change.notifications.push_back({registration<&c_svctx_set_listener>(context),
                                            SVCTX_COND_NO_SERVICE,
                                            {SVCTX_CODE_SERVICE_SELECTED, SVCTX_STREAM_ALL, 0, 0}});
        } else {
            selectChannel(lists, windowOf(context), channelId, change);
        }
        addSelectorNotifications(change.notifications, context, handler, tag);
        return TV_OK;
    });
}

/** Whether the video (0) and audio (1) stream of each window is held back: blank, or muted. Any
 * thread. */
struct HeldBack {
    std::mutex mutex;
    std::array<std::array<bool, 2>, kWindowCount> streams = {};  // guarded by mutex
};

/** Writes a value when the buffer has room for it; `*size` is the buffer's size before, the value's
 * after. */
template <typename T>
int32_t putSized(const T& value, void* to, uint32_t* size) {
    if (!writable(to) || *size < sizeof(T)) return TV_INVALID_ARGUMENT;
    std::memcpy(to, &value, sizeof(T));
    *size = sizeof(T);
    return TV_OK;
}

int32_t get(const Core& core, HeldBack& held, uint32_t context, uint32_t type, void* data,
            uint32_t* size) {
    if (!isServiceContext(context)) return TV_NOT_FOUND;
    if (!writable(size)) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = core.playing(windowOf(context));
    switch (type) {
        case SVCTX_GET_CHANNEL_ID:
            return putSized(playing ? playing->service.ui4_channel_id : uint32_t{0}, data, size);
        case SVCTX_GET_SERVICE:
            return playing ? putSized(playing->service, data, size) : int32_t{TV_NOT_FOUND};
        case SVCTX_GET_MULTIPLEX:
            return playing ? putSized(playing->multiplex, data, size) : int32_t{TV_NOT_FOUND};
        case SVCTX_GET_SIGNAL_LOCKED:
            return putSized(
                    uint32_t{playing && core.reception.hasSignal(playing->multiplex) ? 1u : 0u},
                    data, size);
        case SVCTX_GET_VIDEO_BLANK:
        case SVCTX_GET_AUDIO_MUTE: {
            std::lock_guard<std::mutex> lock(held.mutex);
            const auto& streams = held.streams[windowOf(context)];
            const bool on = streams[type == SVCTX_GET_VIDEO_BLANK ? 0 : 1];
            return putSized(uint32_t{on ? 1u : 0u}, data, size);
        }
        default:
            return TV_NOT_SUPPORTED;
    }
}

int32_t resolution(const Core& core, uint32_t context, SVCTX_VIDEO_RESOLUTION_T* to) {
    if (!isServiceContext(context)) return TV_NOT_FOUND;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = core.playing(windowOf(context));
    if (!playing || !playing->hasVideo()) return TV_NOT_FOUND;
    constexpr uint8_t kWide = 3;
    const VideoFormat format = videoFormatOf(*playing);
    *to = {};
    to->ui4_width = format.width;
    to->ui4_height = format.height;
    to->ui4_frame_rate = format.frameRate;
    to->ui1_progressive = format.progressive ? 1 : 0;
    to->ui1_aspect_ratio = kWide;
    return putText(to->s_timing_type, sizeof(to->s_timing_type),
                   fmt::format("{}{}", format.height, format.progressive ? "p" : "i"));
}

int32_t audio(const Core& core, uint32_t context, SVCTX_AUDIO_INFO_T* to) {
    if (!isServiceContext(context)) return TV_NOT_FOUND;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = core.playing(windowOf(context));
    if (!playing || playing->tracks.audio.empty()) return TV_NOT_FOUND;
    const AudioTrack& track = playing->tracks.audio.front();
    *to = {};
    to->ui4_encoding = audioEncodingOf(track);
    to->ui4_sample_rate = kAudioSampleRate;
    to->ui4_channels = kAudioChannels;
    to->ui4_pid = track.pid;
    return putText(to->s_language, sizeof(to->s_language), track.language);
}

int32_t genericInfo(const Core& core, uint32_t context, uint32_t type, void* data, uint32_t size) {
    if (!isServiceContext(context)) return TV_NOT_FOUND;
    const std::optional<Playing> playing = core.playing(windowOf(context));
    auto* text = static_cast<char*>(data);
    switch (type) {
        case SVCTX_INFO_SERVICE_NAME:
            return playing ? putText(text, size, playing->service.s_service_name)
                           : int32_t{TV_NOT_FOUND};
        case SVCTX_INFO_STREAM_FILE:
            return playing ? putText(text, size, playing->multiplex.s_source)
                           : int32_t{TV_NOT_FOUND};
        default:
            return TV_NOT_SUPPORTED;
    }
}

}  // namespace

void plugServiceContexts(switchboard::Switchboard& board, Core& core) {
    const auto held = std::make_shared<HeldBack>();
    board.on<&c_svctx_select_svc>(
            [&core](uint32_t context, uint32_t, const SVCTX_SRC_DESC_T* source, const void*,
                    c_svctx_nfy_fct handler,
                    void* tag) { return select(core, context, source, handler, tag); });
    board.on<&c_svctx_get>(
            [&core, held](uint32_t context, uint32_t type, void* data, uint32_t* size) {
                return get(core, *held, context, type, data, size);
            });
    board.on<&c_svctx_get_video_src_resolution>(
            [&core](uint32_t context, SVCTX_VIDEO_RESOLUTION_T* to) {
                return resolution(core, context, to);
            });
    board.on<&c_svctx_get_audio_info>(
            [&core](uint32_t context, SVCTX_AUDIO_INFO_T* to) { return audio(core, context, to); });
    board.on<&c_svctx_set_stream_attr>([held](uint32_t context, uint32_t stream, uint32_t attribute,
                                              const void* data, uint32_t length) -> int32_t {
        if (!isServiceContext(context)) return TV_NOT_FOUND;
        if (attribute != SVCTX_ATTR_HELD_BACK) return TV_NOT_SUPPORTED;
        if (stream != SVCTX_STREAM_VIDEO && stream != SVCTX_STREAM_AUDIO) {
            return TV_INVALID_ARGUMENT;
        }
        uint32_t value;
        if (data == nullptr || length < sizeof(value)) return TV_INVALID_ARGUMENT;
        std::memcpy(&value, data, sizeof(value));
        std::lock_guard<std::mutex> lock(held->mutex);
        held->streams[windowOf(context)][stream - SVCTX_STREAM_VIDEO] = value != 0;
        return TV_OK;
    });
    board.on<&c_svctx_generic_get_info>(
            [&core](uint32_t context, uint32_t type, uint32_t, void* data, uint32_t size) {
                return genericInfo(core, context, type, data, size);
            });
    const auto notSupported = [](uint32_t context) {
        return int32_t{isServiceContext(context) ? TV_NOT_SUPPORTED : TV_NOT_FOUND};
    };
    board.on<&c_svctx_generic_set_info>([=](uint32_t context, uint32_t, uint32_t, void*, uint32_t) {
        return notSupported(context);
    });
    board.on<&c_svctx_get_conn_attr>(
            [=](uint32_t context, uint32_t, uint32_t, void*) { return notSupported(context); });
    board.on<&c_svctx_set_conn_attr>(
            [=](uint32_t context, uint32_t, uint32_t, void*) { return notSupported(context); });
}

}  // namespace television
