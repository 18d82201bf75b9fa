/** Gives the services of a list their channel numbers. */
#pragma once

#include "television/lists/lists.h"

namespace television {

/**
 * Gives numbers to the services of `list` that have none or one that is taken: first to those whose
 * logical channel number is free, then, to those whose logical channel number is taken, the next
 * free one after it, then to the others the lowest free one. A service for which no number is left
 * has the number 0. The list is not sorted anew.
 */
void assignChannelNumbers(ChannelList& list);

}  // namespace television
