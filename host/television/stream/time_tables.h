/** Reads the time and date table (TDT) and the time offset table (TOT) of a stream. */
#pragma once

#include "television/base/byte_view.h"
#include "television/stream/broadcast_time.h"

namespace television {

/** Reads a TDT into `time`. `payload` is what follows its three-byte header; sectionIsSound() must
 * have checked it. Returns false, with nothing changed, when the date or the time of day is out of
 * range. */
bool readTimeTable(ByteView payload, BroadcastTime& time);

/** The same for a TOT, whose payload is without its checksum. The offset is that of the first
 * region that it names; a TOT without a region leaves the offset as it was. */
bool readOffsetTable(ByteView payload, BroadcastTime& time);

}  // namespace television
