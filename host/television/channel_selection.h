/** Finding a channel and selecting it: all selections that clients make are made here. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "core.h"

namespace television {

/**
 * Selects a channel, which must be listed, in a window and tells of it, also where it is the
 * current one. To be called within `Core::change`.
 */
void selectChannel(ChannelLists& lists, size_t window, uint32_t channelId, Change& change);

/** Ends the service that plays in a window, until something is selected there; tells of it. To be
 * called within `Core::change`. */
void stopPlaying(ChannelLists& lists, size_t window, Change& change);

/** Shows an input source that is not the television in a window, in place of the service that plays
 * there. To be called within `Core::change`. */
void showInput(ChannelLists& lists, size_t window, uint8_t source, Change& change);

// Channel ids; 0 when there is none.

/** The first channel that is shown in a list, or with `listId` 0 in any. */
uint32_t firstShown(const ChannelLists& lists, uint16_t listId = 0);
/** What plays in the main window, else what played there before as long as it is listed. */
uint32_t currentOrPrevious(const ChannelLists& lists);
/** A channel number is looked for in the main window's list first, then in the others. */
uint32_t channelByNumber(const ChannelLists& lists, uint32_t number);
/** A service id among the channels of one medium (BRDCST_MEDIUM_UNKNOWN: of all): first in the
 * multiplex that plays in the main window, then the one of the lowest number. */
uint32_t channelByProgram(const ChannelLists& lists, uint8_t medium, uint16_t programNumber);
/** The next or last channel that is shown, in number order around the main window's list. */
uint32_t neighbour(const ChannelLists& lists, bool up);

}  // namespace television
