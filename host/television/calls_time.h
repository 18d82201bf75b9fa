/** What others beside applications ask of the clock's settings. */
#pragma once

#include <cstdint>

namespace television {

class Core;

/** Makes TIME_SYNC_SOURCE_… the source of the time, as time_set_sync_source does; `note` as for
 * `Core::remember`. */
int32_t setTimeSource(Core& core, int32_t source, int32_t note);

}  // namespace television
