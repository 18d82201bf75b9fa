/** The commands of qortvctl. Each prints to standard output and returns the exit status. */
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qortv/channel.h"
#include "qortv/schedules.h"

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

struct ScanOptions {
    std::optional<qortv::Medium> medium;  ///< nothing: all of them
    bool update = false;
    bool clear = false;
};

/** Scans for channels and shows how it goes. */
int scan(const Common& common, const ScanOptions& options);

struct ZapOptions {
    std::string channel;  ///< number, name, "+" or "-"
    std::optional<qortv::Medium> medium;
};

/** Tunes to a channel, waits until it comes in, and shows the signal and what is on. */
int zap(const Common& common, const ZapOptions& options);

struct NowOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    bool all = false;
};

/** What is on now and next. */
int now(const Common& common, const NowOptions& options);

struct EpgOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    uint32_t hours = 24;              ///< from now
    std::optional<uint16_t> details;  ///< of this event instead of a schedule
};

/** What is on in the next hours, or the details of one event. */
int epg(const Common& common, const EpgOptions& options);

/** The clock of the television. */
int time(const Common& common);

struct RecordOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    std::optional<std::chrono::milliseconds> limit;
};

/** Records until the time is up or interrupted. */
int record(const Common& common, const RecordOptions& options);

struct RecordAtOptions {
    std::string channel;  ///< number or name
    std::optional<qortv::Medium> medium;
    std::string time;      ///< what parseTime() takes
    std::string duration;  ///< what parseDuration() takes
    qortv::Schedule::Repeat repeat = qortv::Schedule::Repeat::kOnce;
    std::string title;
};

/** Has the television record later. */
int recordAt(const Common& common, const RecordAtOptions& options);

/** What is to be recorded. */
int recordList(const Common& common);

/** Ends everything that is being recorded. */
int recordStop(const Common& common);

/** Removes a schedule. */
int recordCancel(const Common& common, uint32_t id);

/** The recordings on the disk. */
int recordings(const Common& common);

/** Deletes a recording, by its place in the list. */
int recordingsDelete(const Common& common, uint32_t index);

struct ConfigOptions {
    std::string key;                ///< of get and set; empty: all
    std::string value;              ///< of set
    std::vector<std::string> keys;  ///< of watch; empty: all
    WatchOptions watch;
};

/** Settings, and what they can be. */
int configGet(const Common& common, const ConfigOptions& options);

/** Changes a setting. */
int configSet(const Common& common, const ConfigOptions& options);

/** Prints changes of settings until interrupted. */
int configWatch(const Common& common, const ConfigOptions& options);

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
