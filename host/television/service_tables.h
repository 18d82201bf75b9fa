/** The tables that describe one service in a recording of it: SDT, and the EIT of what is on. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "guide_event.h"
#include "service_filter.h"

namespace television {

/** The service that is described. Texts are UTF-8. */
struct DescribedService {
    ServiceKey key;
    uint8_t type = 0;  ///< service_type of the service descriptor
    std::string name;
    std::string provider;
};

/** The SDT with the service alone. */
ServiceFilter::Table describingTable(const DescribedService& service);

/** The EIT of present and following event, either of which may be null; `version` counts changes.
 */
ServiceFilter::Table eventTable(const DescribedService& service, const GuideEvent* present,
                                const GuideEvent* following, uint8_t version);

}  // namespace television
