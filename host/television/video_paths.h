/** The two video paths: which source each plays, and which of them has the focus. */
#pragma once

#include <array>
#include <cstdint>
#include <mutex>

#include "core.h"
#include "input_sources.h"
#include "playing.h"

namespace television {

/**
 * Changes of source by the rules of middleware/inputsource.h, and what middleware/multiview.h adds.
 * Paths are windows: 0 main, 1 sub. Functions that answer a number answer a code of
 * middleware/result_codes.h. Any thread; the lock of its own is taken before the core's.
 */
class VideoPaths {
  public:
    /** Both outlive this. Watches the core. */
    VideoPaths(Core& core, InputSources& inputs);
    VideoPaths(const VideoPaths&) = delete;
    VideoPaths& operator=(const VideoPaths&) = delete;

    /** What a path shows. */
    struct State {
        uint8_t source = kTelevisionSource;
        bool playing = false;
    };
    State state(size_t path) const;
    /** Whether a change of priority 0 would succeed. */
    bool available(size_t path, const InputSource& source) const;

    int32_t change(size_t path, const InputSource& source, uint16_t priority = 0);
    /** Ends what plays there; the source stays. */
    void stop(size_t path);

    // Multiview; only main where there is no sub video.
    int32_t setMode(uint8_t mode);
    int32_t start(size_t path, const InputSource& source);
    /** Plays the path's source. */
    int32_t resume(size_t path);
    int32_t setFocus(size_t path, bool sound);
    int32_t setFocusBySource(uint8_t source);
    size_t focus() const;
    size_t soundFocus() const;

  private:
    static State stateIn(const ChannelLists& lists, size_t path);
    static void stopIn(ChannelLists& lists, size_t path, Change& change);
    bool exists(size_t path) const;
    int32_t focusLocked(size_t path, bool sound);

    Core& mCore;
    InputSources& mInputs;
    std::array<uint16_t, kWindowCount> mPriorities = {};  // used within Core::change only
    mutable std::mutex mMutex;                            // guards all below
    uint8_t mMode;
    size_t mFocus = 0;
    size_t mSoundFocus = 0;
};

}  // namespace television
