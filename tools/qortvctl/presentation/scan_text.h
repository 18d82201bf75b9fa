/** Events of a channel scan as text for people and as JSON for scripts. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "qortv/scan.h"

namespace qortvctl {

/** One line for the event. */
std::string toLine(const qortv::ScanEvent& event);

/** What the progress bar shows behind the percentage: "  4 tv,   2 radio    482.000 MHz". The width
 * is constant, so that the bar keeps its length. */
std::string barText(const qortv::ScanProgress& progress);

nlohmann::ordered_json toJson(const qortv::ScanEvent& event);

}  // namespace qortvctl
