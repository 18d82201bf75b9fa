/** The channel banner of the main window: whether it is on the screen. */
#pragma once

#include <cstdint>
#include <mutex>
#include <set>

#include "core.h"

namespace television {

/**
 * The banner appears with a selection and stays until it is hidden. While an application covers the
 * picture, selections leave it hidden. Any thread; one lock, held for no call of the core but
 * posts.
 */
class ChannelBanner {
  public:
    static constexpr size_t kMostCovers = 32;

    /** `core` outlives this. */
    explicit ChannelBanner(Core& core) : mCore(core) {}

    /** Shows or hides it, and with `tell` tells handlers where that changes something. */
    void show(bool visible, bool tell = true);
    /** Shows it because of a selection. */
    void showSelection(bool tell);
    /** An application's picture is there or not. Answers TV_OK, or TV_FULL where too many are. */
    int32_t cover(uint32_t id, bool covered);

  private:
    void showLocked(bool visible, bool tell);

    Core& mCore;
    std::mutex mMutex;  // guards all below
    bool mVisible = false;
    std::set<uint32_t> mCovers;
};

}  // namespace television
