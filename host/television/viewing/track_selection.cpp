#include "television/viewing/track_selection.h"

#include <algorithm>

#include "middleware/audio_info.h"
#include "middleware/result_codes.h"
#include "middleware/subtitle.h"

namespace television {
namespace {

// The names under which the core remembers the preferred languages.
constexpr char kPreferredAudio[] = "audio.language";
constexpr char kPreferredSubtitle[] = "subtitle.language";

/** Returns the number, from 1, of the first track of a language; 0 when there is none. */
template <typename Track>
size_t trackNumber(const std::vector<Track>& tracks, const std::string& language) {
    const auto found = std::find_if(tracks.begin(), tracks.end(), [&](const Track& track) {
        return !language.empty() && track.language == language;
    });
    return found == tracks.end() ? 0 : static_cast<size_t>(found - tracks.begin()) + 1;
}

}  // namespace

std::optional<TrackSelection::State> TrackSelection::stateLocked() {
    const std::optional<Playing> playing = mCore.playing(0);
    if (!playing) return std::nullopt;
    State state;
    state.channelId = playing->service.ui4_channel_id;
    state.tracks = playing->tracks;
    if (state.channelId != mChannelId) {
        mChannelId = state.channelId;
        const size_t audio = trackNumber(state.tracks.audio, mCore.remembered(kPreferredAudio));
        mAudio = audio == 0 ? 0 : audio - 1;
        mSubtitle = trackNumber(state.tracks.subtitles, mCore.remembered(kPreferredSubtitle));
    }
    // The stream may have been read anew, with fewer tracks.
    if (mAudio >= state.tracks.audio.size()) mAudio = 0;
    if (mSubtitle > state.tracks.subtitles.size()) mSubtitle = 0;
    state.audio = mAudio;
    state.subtitle = mSubtitle;
    return state;
}

std::optional<TrackSelection::State> TrackSelection::state() {
    std::lock_guard<std::mutex> lock(mMutex);
    return stateLocked();
}

int32_t TrackSelection::selectLocked(const State& state, size_t audio, size_t subtitle) {
    const auto notify = [&](RegistrationKey to, int32_t code, size_t track, size_t count) {
        mCore.notifier.post(
                {to,
                 code,
                 {state.channelId, static_cast<uint32_t>(track), static_cast<uint32_t>(count), 0}});
    };
    if (audio != mAudio) {
        mAudio = audio;
        notify(registration<&a_qortvapi_audio_info_register_callback>(),
               AUDIO_INFO_NFY_TRACK_SELECTED, audio, state.tracks.audio.size());
    }
    if (subtitle != mSubtitle) {
        mSubtitle = subtitle;
        notify(registration<&a_qortvapi_subtitle_reg_callback>(), SUBTITLE_NFY_TRACK_SELECTED,
               subtitle, state.tracks.subtitles.size());
    }
    return TV_OK;
}

int32_t TrackSelection::selectAudio(size_t index) {
    std::lock_guard<std::mutex> lock(mMutex);
    const std::optional<State> state = stateLocked();
    if (!state || index >= state->tracks.audio.size()) return TV_NOT_FOUND;
    return selectLocked(*state, index, state->subtitle);
}

int32_t TrackSelection::selectSubtitle(size_t track) {
    std::lock_guard<std::mutex> lock(mMutex);
    const std::optional<State> state = stateLocked();
    if (!state || track > state->tracks.subtitles.size()) return TV_NOT_FOUND;
    return selectLocked(*state, state->audio, track);
}

int32_t TrackSelection::nextAudio() {
    std::lock_guard<std::mutex> lock(mMutex);
    const std::optional<State> state = stateLocked();
    if (!state || state->tracks.audio.empty()) return TV_NOT_FOUND;
    selectLocked(*state, (state->audio + 1) % state->tracks.audio.size(), state->subtitle);
    return static_cast<int32_t>(mAudio);
}

int32_t TrackSelection::nextSubtitle() {
    std::lock_guard<std::mutex> lock(mMutex);
    const std::optional<State> state = stateLocked();
    if (!state || state->tracks.subtitles.empty()) return TV_NOT_FOUND;
    selectLocked(*state, state->audio,
                 (state->subtitle + 1) % (state->tracks.subtitles.size() + 1));
    return static_cast<int32_t>(mSubtitle);
}

void TrackSelection::preferSubtitle(const std::string& language) {
    mCore.remember(kPreferredSubtitle, language);
}

void TrackSelection::preferAudio(const std::string& language) {
    mCore.remember(kPreferredAudio, language);
}

}  // namespace television
