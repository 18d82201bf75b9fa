/** The channel banner of the main window: whether it is on the screen. */
#pragma once

#include <cstdint>
#include <mutex>
#include <set>

#include "television/core/core.h"

namespace television {

/**
 * The banner appears when a channel is selected and stays until it is hidden. While the user
 * interface of an application covers the picture, selections do not show it. Any thread; one lock,
 * under which no other lock is taken but the notifier's.
 */
class ChannelBanner {
  public:
    /** Applications' user interfaces that can cover the picture at a time. */
    static constexpr size_t kMostCovers = 32;

    /** `core` outlives this. */
    explicit ChannelBanner(Core& core) : mCore(core) {}

    /** Shows or hides the banner; with `notify`, handlers are notified when that changes it. */
    void show(bool visible, bool notify = true);
    /** Shows the banner because a channel was selected, unless an application covers the picture.
     */
    void showSelection(bool notify);
    /** The user interface `id` of an application covers the picture, or no longer does. Returns
     * TV_OK, or TV_FULL when `kMostCovers` do already. */
    int32_t cover(uint32_t id, bool covered);

  private:
    void showLocked(bool visible, bool notify);

    Core& mCore;
    std::mutex mMutex;  // guards all below
    bool mVisible = false;
    std::set<uint32_t> mCovers;  ///< ids of the user interfaces that cover the picture
};

}  // namespace television
