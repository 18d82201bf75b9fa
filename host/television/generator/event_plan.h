/** The programme of generated services: events that look like a day of television, the same for the
 * same service and day. */
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "multiplex_plan.h"

namespace stream_generator {

/** One event. Texts are UTF-8. */
struct EventPlan {
    uint16_t eventId = 0;
    int64_t start = 0;      ///< seconds since 1970
    uint32_t duration = 0;  ///< seconds
    std::string language;   ///< three letters
    std::string title;
    std::string text;
    std::vector<std::pair<std::string, std::string>> items;  ///< of the details
    std::string details;
    uint8_t genre = 0;  ///< both nibbles of the content descriptor
    uint8_t age = 0;    ///< 0: not rated
    std::string item;   ///< identifiers; empty: none
    std::string series;
};

/** The events of a service from the one that is on at `time` until `hours` later; none for a
 * service without a guide. */
std::vector<EventPlan> eventPlans(const ServicePlan& service, int64_t time, unsigned hours);

}  // namespace stream_generator
