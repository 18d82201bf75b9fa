/** What the rating settings make of programmes. */
#pragma once

#include <string>

#include "core.h"
#include "guide_event.h"
#include "middleware/event.h"

namespace television {

// The names under which settings are remembered, as numbers.
constexpr char kRatingsOn[] = "rating.enabled";       ///< 1 where there is none
constexpr char kUnratedBlocked[] = "rating.unrated";  ///< 0 where there is none
constexpr char kAgeAllowed[] = "rating.dvb_age";      ///< 0, also where there is none: any

/** Whether the settings block an event: middleware/rating.h. Not within `Core::read` or
 * `Core::change`. */
bool ratingBlocks(const Core& core, const GuideEvent& event);

/** Writes country, "DVB" and "age N" of the highest rating; TV_NOT_FOUND when the event is not
 * rated. */
int32_t putRatingMap(const GuideEvent& event, RATING_MAP_T* to);

}  // namespace television
