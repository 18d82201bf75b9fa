/** The commands of qortvctl. Each prints to standard output and returns the exit status. */
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "qortv/channel.h"

namespace qortvctl {

/** Exit statuses, as the help text explains them. */
enum ExitStatus {
    kOk = 0,
    kFailure = 1,
    kUsage = 2,
    kNoService = 3,
    kPinWrong = 4,
    kPinLocked = 5
};

/** Options of every command. */
struct Common {
    std::chrono::milliseconds timeout{5000};  ///< how long to wait for the service
    bool json = false;
};

/** Registered interfaces and the processes behind them. */
int list(const Common& common);

struct ChannelsOptions {
    std::optional<qortv::Medium> medium;  ///< only channels of this medium
    std::string filter;                   ///< only channels whose name contains this; empty: all
};

/** The channel list. */
int channels(const Common& common, const ChannelsOptions& options);

struct SelectOptions {
    std::string channel;  ///< number or name
    std::optional<qortv::Medium> medium;
};

/** Makes a channel the current one. */
int select(const Common& common, const SelectOptions& options);

struct WatchOptions {
    uint64_t count = 0;                              ///< end after so many; 0: never
    std::optional<std::chrono::milliseconds> limit;  ///< end after this time
};

/** Prints notifications until interrupted. */
int watch(const Common& common, const WatchOptions& options);

/** What the CAM is. */
int camStatus(const Common& common);

/** Walks the CAM's menus: answers from standard input, until one side ends the dialogue. */
int camMenu(const Common& common);

/** Gives the CAM the PIN that is on standard input. */
int camPin(const Common& common);

/** Puts the software television's CAM into the slot. */
int camInsert(const Common& common);

/** Takes it out. */
int camRemove(const Common& common);

/** Says that the slot is empty; the exit status of that. */
int noCam();

}  // namespace qortvctl
