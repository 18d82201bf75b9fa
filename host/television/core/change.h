/** Keeps account of what one change of the lists entails. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "television/core/notification.h"
#include "television/core/reception.h"
#include "television/lists/dirty_parts.h"
#include "television/lists/lists.h"

namespace television {

/**
 * Keeps account of a change of the lists that `Core::change` runs: which parts are to be saved and
 * which notifications are to be posted. The member functions do not change the lists; whoever
 * changes them calls the function for what changed. One thread at a time.
 */
class Change {
  public:
    /** `reception` must outlive this. */
    explicit Change(const Reception& reception) : mReception(reception) {}

    DirtyParts dirty;                         ///< to be saved
    std::vector<Notification> notifications;  ///< to be posted, in order

    /** A whole list changed. The handlers of channel lists are notified with `code`
     * (CHANNEL_LIST_NFY_…). `channelId`: the channel that it is about, 0: none. */
    void listChanged(const ChannelList& list, int32_t code, uint32_t channelId = 0);
    /** One service changed; notified like a list. */
    void serviceChanged(const ChannelList& list, uint32_t channelId, int32_t code);
    /** Favourites of a list changed; notified like a list. */
    void favouritesChanged(const ChannelList& list);
    // `recordId`: the record that changed, 0: several.
    void satellitesChanged(const ChannelLists& lists, uint16_t recordId);
    void bissKeysChanged(const ChannelLists& lists, uint16_t recordId);
    void networksChanged(const ChannelList& list, uint16_t recordId);
    /** Another channel, or none, is selected in a window. */
    void selectionChanged(const ChannelLists& lists, size_t window);

  private:
    const Reception& mReception;
};

}  // namespace television
