/** The programme of generated services: events that look like a day of television. The same service
 * has the same events on the same day, whenever the stream is made. */
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "television/generator/multiplex_plan.h"

namespace stream_generator {

/** One event. Texts are UTF-8. */
struct EventPlan {
    uint16_t eventId = 0;
    int64_t start = 0;      ///< UTC, seconds since 1970
    uint32_t duration = 0;  ///< seconds
    std::string language;   ///< three letters
    std::string title;
    std::string text;
    std::vector<std::pair<std::string, std::string>> items;  ///< name and value, of the details
    std::string details;                                     ///< text of the details
    uint8_t genre = 0;        ///< both nibbles of the content descriptor
    uint8_t age = 0;          ///< minimum age in years; 0: not rated
    std::string programmeId;  ///< content reference identifier (CRID); empty: none
    std::string seriesId;     ///< CRID of its series; empty: none
};

/** The events of a service from the one that is on at `time` until `hours` later; none for a
 * service without a guide. */
std::vector<EventPlan> eventPlans(const ServicePlan& service, int64_t time, unsigned hours);

}  // namespace stream_generator
