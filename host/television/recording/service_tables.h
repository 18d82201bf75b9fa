/** The tables that describe a service in a recording of it: SDT, and EIT of the present and the
 * following event. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "television/recording/service_filter.h"
#include "television/stream/guide_event.h"

namespace television {

/** A service to describe. Texts are UTF-8. */
struct DescribedService {
    ServiceKey key;
    uint8_t type = 0;  ///< service_type of the service descriptor
    std::string name;
    std::string provider;
};

/** The SDT, with this service alone. */
ServiceFilter::Table serviceTable(const DescribedService& service);

/** The EIT with the present and the following event, either of which may be null. `version` is to
 * be increased when an event changes. */
ServiceFilter::Table eventTable(const DescribedService& service, const GuideEvent* present,
                                const GuideEvent* following, uint8_t version);

}  // namespace television
