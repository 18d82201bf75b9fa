/** Which audio and subtitle track of the main window's service is in use. */
#pragma once

#include <mutex>
#include <optional>

#include "television/core/core.h"
#include "television/core/playing.h"

namespace television {

/** The name under which the core remembers the audio description setting: 0 or 1, default 0. */
constexpr char kAudioDescriptionName[] = "audio.description";

/**
 * The choice lasts until another service plays. That one begins with the audio and subtitle
 * languages that the viewer prefers, else with its first audio track and without subtitles. Any
 * thread; its lock is held while the core is read and while notifications are queued.
 */
class TrackSelection {
  public:
    /** The tracks of the service that plays, and which of them are in use. */
    struct State {
        uint32_t channelId = 0;
        ServiceTracks tracks;
        size_t audio = 0;     ///< index of the track; 0 also when there is no track
        size_t subtitle = 0;  ///< number of the track, from 1; 0: off

        /** Null when the service has no audio track. */
        const AudioTrack* currentAudio() const {
            return tracks.audio.empty() ? nullptr : &tracks.audio[audio];
        }
    };

    /** `core` outlives this. */
    explicit TrackSelection(Core& core) : mCore(core) {}

    /** Empty while nothing plays. */
    std::optional<State> state();

    // Selections notify handlers when they change the track. They return TV_NOT_FOUND when nothing
    // plays or there is no such track.

    /** `index`: as State::audio. Returns TV_OK. */
    int32_t selectAudio(size_t index);
    /** `track`: as State::subtitle. Returns TV_OK. */
    int32_t selectSubtitle(size_t track);
    /** Selects the track after the current one, after the last one the first. Returns its index. */
    int32_t nextAudio();
    /** Selects the track after the current one, after the last one none. Returns its number. */
    int32_t nextSubtitle();

    /** Sets the language, three letters, with which services begin from now on; empty: none. */
    void preferAudio(const std::string& language);
    void preferSubtitle(const std::string& language);

  private:
    std::optional<State> stateLocked();
    int32_t selectLocked(const State& state, size_t audio, size_t subtitle);

    Core& mCore;
    std::mutex mMutex;
    uint32_t mChannelId = 0;  // whose tracks the next two are; guarded by mMutex, as they are
    size_t mAudio = 0;
    size_t mSubtitle = 0;
};

}  // namespace television
