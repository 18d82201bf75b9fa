/** The two video paths: which source each shows, and which of them has the focus. */
#pragma once

#include <array>
#include <cstdint>
#include <mutex>

#include "television/core/core.h"
#include "television/core/playing.h"
#include "television/settings/input_sources.h"

namespace television {

/**
 * Changes sources by the rules of middleware/inputsource.h, and multiview modes and foci by those
 * of middleware/multiview.h. A path is a window: 0 main, 1 sub. Functions that return int32_t
 * return a code of middleware/result_codes.h. Any thread; its lock is taken before the core's.
 */
class VideoPaths {
  public:
    /** Both outlive this. `core` calls it after changes of what is remembered: to be made before
     * the first one. */
    VideoPaths(Core& core, InputSources& inputs);
    VideoPaths(const VideoPaths&) = delete;
    VideoPaths& operator=(const VideoPaths&) = delete;

    /** What a path shows. */
    struct State {
        uint8_t source = kTelevisionSource;  ///< id of the input source
        bool playing = false;                ///< false: stopped, or the television has no channel
    };
    State state(size_t path) const;
    /** Returns whether a change to the source with priority 0 would succeed. */
    bool available(size_t path, const InputSource& source) const;

    /** Shows a source. The higher priority wins when it conflicts with what the other path plays.
     */
    int32_t change(size_t path, const InputSource& source, uint16_t priority = 0);
    /** Stops what the path plays; it keeps its source. */
    void stop(size_t path);

    // Multiview. In the normal mode there is no sub path: TV_NOT_FOUND.

    /** `mode`: MULTIVIEW_MODE_…. */
    int32_t setMode(uint8_t mode);
    int32_t start(size_t path, const InputSource& source);
    /** Plays the source that the path has. */
    int32_t resume(size_t path);
    /** Gives a path the focus of the keys, with `sound` that of the sound too. */
    int32_t setFocus(size_t path, bool sound);
    /** Gives both foci to the path that plays the source with this id. */
    int32_t setFocusBySource(uint8_t source);
    /** The path that has the focus of the keys. */
    size_t focus() const;
    size_t soundFocus() const;

  private:
    static State stateIn(const ChannelLists& lists, size_t path);
    static void stopIn(ChannelLists& lists, size_t path, Change& change);
    bool exists(size_t path) const;
    int32_t focusLocked(size_t path, bool sound);

    Core& mCore;
    InputSources& mInputs;
    std::array<uint16_t, kWindowCount> mPriorities = {};  ///< of the changes that the paths show;
                                                          ///< used within Core::change only
    mutable std::mutex mMutex;                            // guards all below
    uint8_t mMode;                                        ///< MULTIVIEW_MODE_…
    size_t mFocus = 0;
    size_t mSoundFocus = 0;
};

}  // namespace television
