// The picture of the service that plays.
#include "middleware/videoinfo.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"

namespace television {

void plugVideoInfo(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_videoinfo_get_value>([&core](uint32_t id, uint32_t* value) -> int32_t {
        if (!writable(value)) return TV_INVALID_ARGUMENT;
        const auto playing = core.playing(0);
        if (id < VIDEOINFO_VALUE_WIDTH || id > VIDEOINFO_VALUE_PID) return TV_NOT_SUPPORTED;
        if (!playing || !playing->hasVideo()) return TV_NOT_FOUND;
        const VideoFormat format = videoFormatOf(*playing);
        const uint32_t values[] = {format.width,
                                   format.height,
                                   format.frameRate,
                                   format.progressive ? 1u : 0u,
                                   playing->service.ui1_video_stream_type,
                                   playing->service.ui2_video_pid};
        *value = values[id - VIDEOINFO_VALUE_WIDTH];
        return TV_OK;
    });
    board.on<&a_qortvapi_videoinfo_set_value>(
            [](uint32_t, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_videoinfo_set_data>(
            [](uint32_t, const void*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_videoinfo_get_data>(
            [](uint32_t, void*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
}

}  // namespace television
