#include "qortvctl/presentation/setting_text.h"

#include <variant>

namespace qortvctl {

using Json = nlohmann::ordered_json;
using qortv::ConfigurationItem;

std::string flagsText(const ConfigurationItem& item) {
    if (!item.visible) return "hidden";
    return item.enabled ? "" : "disabled";
}

Json valueToJson(const ConfigurationItem& item) {
    const Json value = std::visit([](const auto& plain) { return Json(plain); }, item.value);
    return {{"key", item.key}, {"value", value}, {"text", item.text()}};
}

Json toJson(const ConfigurationItem& item) {
    Json json = valueToJson(item);
    if (!item.isText()) {
        json["least"] = item.least;
        json["greatest"] = item.greatest;
        json["choices"] = item.choices;
    }
    json["visible"] = item.visible;
    json["enabled"] = item.enabled;
    return json;
}

}  // namespace qortvctl
