// Audio tracks of the service that plays.
#include <algorithm>
#include <memory>

#include "middleware/audio_info.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/stream/dvb_text.h"
#include "television/viewing/track_selection.h"

namespace television {
namespace {

using Tracks = std::shared_ptr<TrackSelection>;

std::string trackName(const AudioTrack& track) {
    std::string language = track.language.empty() ? "und" : track.language;
    switch (track.audioType) {
        case AUDIO_TYPE_CLEAN:
            return language + " clean";
        case AUDIO_TYPE_HEARING_IMPAIRED:
            return language + " hearing";
        case AUDIO_TYPE_VISUALLY_IMPAIRED:
            return language + " described";
        default:
            return language;
    }
}

QORTVAPI_AUDIO_RECORD_T recordOf(const TrackSelection::State& state, size_t index) {
    const AudioTrack& track = state.tracks.audio[index];
    QORTVAPI_AUDIO_RECORD_T record = {};
    record.ui4_index = static_cast<uint32_t>(index);
    record.ui4_encoding = audioEncodingOf(track);
    record.ui4_channels = kAudioChannels;
    record.ui4_sample_rate = kAudioSampleRate;
    record.ui2_pid = track.pid;
    record.ui1_audio_type = track.audioType;
    copyText(record.s_language, track.language);
    copyText(record.s_name, trackName(track));
    return record;
}

/** Returns the index of the track for the visually impaired in the current language, else in any.
 */
std::optional<size_t> describedTrack(const TrackSelection::State& state) {
    std::optional<size_t> found;
    for (size_t i = 0; i < state.tracks.audio.size(); ++i) {
        const AudioTrack& track = state.tracks.audio[i];
        if (track.audioType != AUDIO_TYPE_VISUALLY_IMPAIRED) continue;
        if (track.language == state.currentAudio()->language) return i;
        if (!found) found = i;
    }
    return found;
}

int32_t availableRecords(const Tracks& tracks, QORTVAPI_AUDIO_RECORD_T* records, uint32_t* count) {
    if (!writable(count)) return TV_INVALID_ARGUMENT;
    const auto state = tracks->state();
    const size_t all = state ? state->tracks.audio.size() : 0;
    const size_t written = writable(records) ? std::min<size_t>(*count, all) : all;
    if (writable(records)) {
        for (size_t i = 0; i < written; ++i) records[i] = recordOf(*state, i);
    }
    *count = static_cast<uint32_t>(written);
    return TV_OK;
}

void plugAudioRecords(switchboard::Switchboard& board, const Tracks& tracks) {
    board.on<&a_qortvapi_audio_info_get_available_record>(
            [=](QORTVAPI_AUDIO_RECORD_T* records, uint32_t* count) {
                return availableRecords(tracks, records, count);
            });
    board.on<&a_qortvapi_get_current_audio_info>([=](QORTVAPI_AUDIO_RECORD_T* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        const auto state = tracks->state();
        if (!state || state->tracks.audio.empty()) return TV_NOT_FOUND;
        *to = recordOf(*state, state->audio);
        return TV_OK;
    });
    board.on<&a_qortvapi_get_current_ad_info>([=](QORTVAPI_AUDIO_RECORD_T* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        const auto state = tracks->state();
        const auto described = state ? describedTrack(*state) : std::nullopt;
        if (!described) return TV_NOT_FOUND;
        *to = recordOf(*state, *described);
        return TV_OK;
    });
    board.on<&a_qortvapi_get_audio_apd_text>(
            [=](uint8_t index, QORTVAPI_AUDIO_APD_TEXT_T* text, int32_t* value) -> int32_t {
                if (!writable(text)) return TV_INVALID_ARGUMENT;
                const auto state = tracks->state();
                if (!state || index >= state->tracks.audio.size()) return TV_NOT_FOUND;
                const AudioTrack& track = state->tracks.audio[index];
                put(value, track.audioType);
                return putText(text->s_text, sizeof(text->s_text), trackName(track));
            });
    board.on<&a_qortvapi_audio_info_get_inputsource_available_record>(
            [](QORTVAPI_AUDIO_RECORD_T*, uint32_t*) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_get_inputsource_current_audio_info>(
            [](QORTVAPI_AUDIO_RECORD_T*) { return int32_t{TV_NOT_SUPPORTED}; });
}

void plugAudioSelection(switchboard::Switchboard& board, const Tracks& tracks) {
    board.on<&a_qortvapi_audio_info_get_current_lanuage>([=](char* to, uint32_t length) -> int32_t {
        const auto state = tracks->state();
        if (!state || state->tracks.audio.empty()) return TV_NOT_FOUND;
        return putText(to, length, state->currentAudio()->language);
    });
    board.on<&a_qortvapi_audio_info_set_next_lanuage>([=] {
        const int32_t track = tracks->nextAudio();
        return track < 0 ? track : int32_t{TV_OK};
    });
    board.on<&a_qortvapi_select_audio>([=](uint32_t index) { return tracks->selectAudio(index); });
    // The set plays one track at a time: the second one is checked, but not played.
    board.on<&a_qortvapi_select_main_sub_audio>([=](uint32_t main, uint32_t sub) -> int32_t {
        const auto state = tracks->state();
        if (!state || sub >= state->tracks.audio.size()) return TV_NOT_FOUND;
        return tracks->selectAudio(main);
    });
    board.on<&a_qortvapi_select_default_audio>([=](const char* name) -> int32_t {
        const std::optional<size_t> window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        return *window == 0 ? tracks->selectAudio(0) : int32_t{TV_OK};
    });
}

void plugAudioValues(switchboard::Switchboard& board, Core& core, const Tracks& tracks) {
    board.on<&a_qortvapi_audio_info_get_value>([=, &core](uint32_t id, uint32_t* value) -> int32_t {
        if (!writable(value)) return TV_INVALID_ARGUMENT;
        if (id == AUDIO_INFO_VALUE_DESCRIPTION_ON) {
            *value = static_cast<uint32_t>(core.rememberedNumber(kAudioDescriptionName, 0));
            return TV_OK;
        }
        if (id != AUDIO_INFO_VALUE_TRACK && id != AUDIO_INFO_VALUE_COUNT) return TV_NOT_SUPPORTED;
        const auto state = tracks->state();
        if (!state) return TV_NOT_FOUND;
        *value = static_cast<uint32_t>(id == AUDIO_INFO_VALUE_TRACK ? state->audio
                                                                    : state->tracks.audio.size());
        return TV_OK;
    });
    board.on<&a_qortvapi_audio_info_set_value>([&core](uint32_t id, uint32_t value) -> int32_t {
        if (id != AUDIO_INFO_VALUE_DESCRIPTION_ON) return TV_NOT_SUPPORTED;
        core.rememberNumber(kAudioDescriptionName, value != 0 ? 1 : 0);
        return TV_OK;
    });
    board.on<&a_qortvapi_audio_info_set_data>(
            [](uint32_t, const void*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_audio_info_get_data>(
            [](uint32_t, void*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
}

}  // namespace

void plugAudioInfo(switchboard::Switchboard& board, Core& core,
                   const std::shared_ptr<TrackSelection>& tracks) {
    plugAudioRecords(board, tracks);
    plugAudioSelection(board, tracks);
    plugAudioValues(board, core, tracks);
}

}  // namespace television
