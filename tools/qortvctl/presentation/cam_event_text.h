/** Events of the CAM as text for people and as JSON for scripts. */
#pragma once

#include <string>
#include <vector>

#include "qortv/cam.h"

namespace qortvctl {

/** The event as lines for a terminal, control characters replaced. */
std::vector<std::string> toLines(const qortv::CamEvent& event);

/** The event as one line of JSON: `{"event": "menu", "id": 1, …}`; a missing text is null. */
std::string toJsonLine(const qortv::CamEvent& event);

}  // namespace qortvctl
