/** Waiting for what other threads and processes do. */
#pragma once

#include <chrono>
#include <functional>
#include <thread>

/**
 * After this time without what it waits for a test takes the television for hung. Far beyond what
 * anything here takes, also with sanitizers on a slow and busy machine: it finds hangs and measures
 * nothing.
 */
constexpr std::chrono::seconds kPatience{120};

/** Whether `holds` came true within kPatience; asks every millisecond. */
inline bool eventually(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}
