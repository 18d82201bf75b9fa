/** Parental ratings of programmes: whether the rating settings block one, and its rating as text.
 */
#pragma once

#include <string>

#include "middleware/event.h"
#include "television/core/core.h"
#include "television/lists/guide.h"
#include "television/stream/guide_event.h"

namespace television {

// The names under which the core remembers the settings, each a number.
constexpr char kRatingsOn[] = "rating.enabled";       ///< 0 or 1; 1 when nothing is remembered
constexpr char kUnratedBlocked[] = "rating.unrated";  ///< 0 or 1; 0 when nothing is remembered
constexpr char kAgeAllowed[] = "rating.dvb_age";      ///< years; 0, the default: any age

/** Returns the programme in the main window; null when the guide has none. Any thread. Not within
 * `Core::read` or `Core::change`. */
Guide::EventPointer currentProgramme(const Core& core);

/** Returns whether the settings block an event, by the rules of middleware/rating.h. Any thread.
 * Not within `Core::read` or `Core::change`. */
bool ratingBlocks(const Core& core, const GuideEvent& event);

/** Writes the country, "DVB" and "age N" of the event's highest rating. Returns TV_OK, or
 * TV_NOT_FOUND when the event is not rated. */
int32_t putRatingMap(const GuideEvent& event, RATING_MAP_T* to);

}  // namespace television
