/** The time and date table (TDT) and the time offset table (TOT) of a stream. */
#pragma once

#include "byte_view.h"
#include "guide_event.h"

namespace television {

/** Reads the content of a sound TDT: what lies behind its three-byte header. False, with nothing
 * changed, when it is no time. */
bool readTimeTable(ByteView payload, BroadcastTime& time);

/** The same for a TOT, without its checksum; the offset is that of the first region it names. */
bool readOffsetTable(ByteView payload, BroadcastTime& time);

}  // namespace television
