/** Finds channels and selects them. All selections that clients make are made here. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "television/core/change.h"

namespace television {

// The functions with a `Change` are to be called within `Core::change`. They add the notifications
// to it. Window 0 is the main one, window 1 the sub one.

/** Selects a channel, which must be listed, in a window. It is notified also when it is the current
 * one already. */
void selectChannel(ChannelLists& lists, size_t window, uint32_t channelId, Change& change);

/** Stops the service that plays in a window until something is selected there. Does nothing while
 * the window shows an input source. */
void stopPlaying(ChannelLists& lists, size_t window, Change& change);

/** Shows an input source (middleware/inputsource.h) other than the television in a window, in place
 * of the service that plays there. */
void showInput(ChannelLists& lists, size_t window, uint8_t source, Change& change);

// The functions below return channel ids, 0 when there is no such channel. A channel is shown
// unless it is marked as invisible.

/** The first shown channel of a list, or with `listId` 0 of all lists. */
uint32_t firstShown(const ChannelLists& lists, uint16_t listId = 0);
/** The channel that is selected in the main window, else the one before; either must be listed. */
uint32_t currentOrPrevious(const ChannelLists& lists);
/** The channel with a number: in the list that the main window's channel is in, else in the first
 * list that has one. */
uint32_t channelByNumber(const ChannelLists& lists, uint32_t number);
/** The channel with a service id among those of one medium (BRDCST_MEDIUM_UNKNOWN: of all): the one
 * in the multiplex that plays in the main window, else the first in the order of the lists. */
uint32_t channelByProgram(const ChannelLists& lists, uint8_t medium, uint16_t programNumber);
/** The next (`up`) or previous shown channel with a number, seen from the main window's channel, in
 * its list; after the last one the first follows. The first shown channel while none is selected.
 */
uint32_t neighbour(const ChannelLists& lists, bool up);

}  // namespace television
