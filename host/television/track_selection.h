/** Which audio and subtitle track of the main window's service is in use. */
#pragma once

#include <mutex>
#include <optional>

#include "core.h"
#include "playing.h"

namespace television {

/**
 * Keeps the choice for as long as the service stays; a service that is new to it begins with the
 * audio and subtitle languages that the viewer prefers, else with its first audio track and without
 * subtitles.
 * Any thread.
 */
class TrackSelection {
  public:
    /** The tracks of the service that plays, and which are in use. */
    struct State {
        uint32_t channelId = 0;
        ServiceTracks tracks;
        size_t audio = 0;     ///< index; below the number of tracks unless there is none
        size_t subtitle = 0;  ///< from 1; 0: off

        const AudioTrack* currentAudio() const {
            return tracks.audio.empty() ? nullptr : &tracks.audio[audio];
        }
    };

    explicit TrackSelection(Core& core) : mCore(core) {}

    /** Empty while nothing plays. */
    std::optional<State> state();

    /** Both tell the handlers. TV_NOT_FOUND when nothing plays or there is no such track. */
    int32_t selectAudio(size_t index);
    int32_t selectSubtitle(size_t track);
    /** Goes on to the track after the present one, and answers it. */
    int32_t nextAudio();
    int32_t nextSubtitle();

    /** The languages, three letters, with which services begin from now on; empty: none. */
    void preferAudio(const std::string& language);
    void preferSubtitle(const std::string& language);

  private:
    std::optional<State> stateLocked();
    int32_t selectLocked(const State& state, size_t audio, size_t subtitle);

    Core& mCore;
    std::mutex mMutex;
    uint32_t mChannelId = 0;  // guarded by mMutex, as all below
    size_t mAudio = 0;
    size_t mSubtitle = 0;
};

}  // namespace television
