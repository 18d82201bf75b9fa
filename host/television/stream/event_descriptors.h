/** Reads the descriptors that say what an event of an event information table (EIT) is. */
#pragma once

#include <cstddef>

#include "television/base/byte_view.h"
#include "television/stream/guide_event.h"

namespace television {

/** Ratings, genres, audio streams and identifiers that are kept of one event, of each kind. */
constexpr size_t kMostEventDetails = 16;

/** Reads the descriptors in `loop` into `event`: texts, genres, ratings, audio streams and
 * identifiers. The other fields of `event` stay as they are. */
void readEventDescriptors(ByteView loop, GuideEvent& event);

}  // namespace television
