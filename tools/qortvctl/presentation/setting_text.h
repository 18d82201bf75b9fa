/** Settings as text for people and as JSON for scripts. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "qortv/configuration.h"

namespace qortvctl {

/** What the FLAGS column of a table says: "hidden", "disabled" or "". */
std::string flagsText(const qortv::ConfigurationItem& item);

/** Everything about a setting. */
nlohmann::ordered_json toJson(const qortv::ConfigurationItem& item);

/** Its key and its value only. */
nlohmann::ordered_json valueToJson(const qortv::ConfigurationItem& item);

}  // namespace qortvctl
