/** The entry of an event in the event information table (EIT) of a generated stream. */
#pragma once

#include <cstdint>

#include "television/generator/byte_writer.h"
#include "television/generator/event_plan.h"
#include "television/generator/multiplex_plan.h"

namespace stream_generator {

/** The entry with all its descriptors. `runningStatus`: as in the EIT. Throws
 * std::invalid_argument, naming the service, when something does not fit. */
Bytes eventEntry(const EventPlan& event, const ServicePlan& service, uint8_t runningStatus);

}  // namespace stream_generator
