/** The network information table (NIT) of a generated stream. */
#pragma once

#include <vector>

#include "television/generator/multiplex_plan.h"
#include "television/generator/psi_table.h"

namespace stream_generator {

/** The NIT that the stream of `plan` carries: of those in `network` it lists the streams that have
 * the same network id. */
Table nitTable(dvbpsi_t* handle, const MultiplexPlan& plan,
               const std::vector<MultiplexPlan>& network);

}  // namespace stream_generator
