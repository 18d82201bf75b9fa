/** Sections of the time and event tables of a generated stream. */
#pragma once

#include <cstdint>
#include <vector>

#include "multiplex_plan.h"

namespace stream_generator {

/** A whole section with its checksum, and where it goes. */
struct RawSection {
    uint16_t pid;
    std::vector<uint8_t> bytes;
};

/** TDT and TOT of a moment, with the offset and the changes of central Europe. */
std::vector<RawSection> timeSections(int64_t time);

/** Present, following and later events of the plan's services, and the present and following ones
 * of the other streams of its network. Throws std::invalid_argument, naming the service, when
 * something does not fit. */
std::vector<RawSection> eventSections(const MultiplexPlan& plan,
                                      const std::vector<MultiplexPlan>& network);

}  // namespace stream_generator
