/** Durations, sizes, frequencies and percentages as text. */
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace qortvctl {

/** "0:42", "12:05", "1:30:00". */
std::string durationText(std::chrono::seconds duration);

/** "870 kB", "3.4 MB", "1.2 GB": a kilobyte is 1000 bytes. */
std::string sizeText(uint64_t bytes);

/** "482.000 MHz", or "-" for 0. */
std::string frequencyText(uint32_t khz);

/** "75 %", or "unknown" without a value. */
std::string percentText(std::optional<int> percent);

}  // namespace qortvctl
