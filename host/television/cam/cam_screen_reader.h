/** The screens in the JSON description of a Common Interface module: menus, lists, enquiries, and
 * what they lead to. */
#pragma once

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "television/cam/cam_card.h"

namespace television {

/** Reads a screen and all that can be reached from it. `place` is the JSON pointer of `value`;
 * `pin`: the module's, empty when it has none. Throws CamFault. */
std::shared_ptr<const CamScreen> readCamScreen(const nlohmann::json& value,
                                               const std::string& place, const std::string& pin);

}  // namespace television
