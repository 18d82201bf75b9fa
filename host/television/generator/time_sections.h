/** The sections of the time tables of a generated stream. */
#pragma once

#include <cstdint>
#include <vector>

#include "television/generator/raw_section.h"

namespace stream_generator {

/** TDT and TOT of a time, in seconds since 1970, with the local time offset of central Europe and
 * its next change. */
std::vector<RawSection> timeSections(int64_t time);

}  // namespace stream_generator
