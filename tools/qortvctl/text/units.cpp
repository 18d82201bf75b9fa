#include "qortvctl/text/units.h"

#include <fmt/format.h>

namespace qortvctl {

std::string durationText(std::chrono::seconds duration) {
    const auto seconds = duration.count();
    if (seconds < 3600) return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string sizeText(uint64_t bytes) {
    if (bytes < 1000) return fmt::format("{} B", bytes);
    // The unit is the one in which the rounded number is below 1000.
    const auto number = static_cast<double>(bytes);
    if (number < 999.5e3) return fmt::format("{:.0f} kB", number / 1e3);
    if (number < 999.95e6) return fmt::format("{:.1f} MB", number / 1e6);
    return fmt::format("{:.1f} GB", number / 1e9);
}

std::string frequencyText(uint32_t khz) {
    return khz == 0 ? "-" : fmt::format("{:.3f} MHz", khz / 1000.0);
}

std::string percentText(std::optional<int> percent) {
    return percent ? fmt::format("{} %", *percent) : "unknown";
}

}  // namespace qortvctl
