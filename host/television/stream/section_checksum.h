/** The checksum at the end of every section with a long header: the CRC-32 of ISO/IEC 13818-1. */
#pragma once

#include <cstdint>

#include "television/base/byte_view.h"

namespace television {

/** Returns the checksum of `bytes`. That of a whole section, whose last four bytes are the right
 * checksum, is 0. */
uint32_t sectionChecksum(ByteView bytes);

}  // namespace television
