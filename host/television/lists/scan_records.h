/** Makes the records of the lists from what a scan of the streams found. */
#pragma once

#include <cstdint>

#include "middleware/records.h"
#include "television/stream/multiplex.h"

namespace television {

/** The network mask of a service before an application changes it. */
uint32_t networkMask(const ParsedService& service);

/** Writes what the stream says of a service into its record. The ids of the record, its list and
 * its multiplex are left to the caller, and so is the channel number. */
void describeService(const ParsedService& parsed, SVL_REC_T& record);

/** The same for a multiplex; the record id of its satellite is left to the caller too. */
void describeMultiplex(const ParsedMultiplex& parsed, TSL_REC_T& record);

/** A satellite with a universal LNB. `position`: in tenths of a degree. */
SATL_REC_T satelliteRecord(uint16_t recordId, uint16_t position, bool east);

/** The network of a multiplex. `satelliteId`: record id of its satellite, or 0. */
NWL_REC_T networkRecord(uint16_t listId, uint16_t recordId, uint16_t satelliteId,
                        const ParsedMultiplex& parsed);

}  // namespace television
