// Subtitle tracks of the service that plays.
#include <memory>

#include "middleware/result_codes.h"
#include "middleware/subtitle.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"
#include "television/viewing/track_selection.h"

namespace television {

void plugSubtitles(switchboard::Switchboard& board, const std::shared_ptr<TrackSelection>& tracks) {
    board.on<&a_qortvapi_subtitle_play>(
            [=](uint8_t track) { return tracks->selectSubtitle(track); });
    board.on<&a_qortvapi_subtitle_set_next>([=] { return tracks->nextSubtitle(); });
    board.on<&a_qortvapi_subtitle_get_loop>([=](int32_t* values, uint32_t count) -> int32_t {
        if (!writable(values) || count < SUBTITLE_LOOP_LANGUAGES) return TV_INVALID_ARGUMENT;
        const auto state = tracks->state();
        if (!state) return TV_NOT_FOUND;
        values[SUBTITLE_LOOP_COUNT] = static_cast<int32_t>(state->tracks.subtitles.size());
        values[SUBTITLE_LOOP_CURRENT] = static_cast<int32_t>(state->subtitle);
        uint32_t at = SUBTITLE_LOOP_LANGUAGES;
        for (const SubtitleTrack& track : state->tracks.subtitles) {
            if (at == count) break;
            int32_t packed = 0;  // the language, its first letter in the lowest byte
            for (size_t i = 0; i < track.language.size(); ++i) {
                packed |= static_cast<uint8_t>(track.language[i]) << (8 * i);
            }
            values[at++] = packed;
        }
        return TV_OK;
    });
}

}  // namespace television
