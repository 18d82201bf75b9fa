/** The sections of the event tables of a generated stream. */
#pragma once

#include <vector>

#include "television/generator/multiplex_plan.h"
#include "television/generator/raw_section.h"

namespace stream_generator {

/** Present, following and later events of the plan's services, and the present and following ones
 * of the other streams of its network. Throws std::invalid_argument, naming the service, when
 * something does not fit. */
std::vector<RawSection> eventSections(const MultiplexPlan& plan,
                                      const std::vector<MultiplexPlan>& network);

}  // namespace stream_generator
