/** What the command line says, and what its commands have in common. */
#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "commands.h"

namespace qortvctl {

/** What the command line says. */
struct Wanted {
    Common common;
    ChannelsOptions channels;
    SelectOptions select;
    WatchOptions watch;
    ScanOptions scan;
    ZapOptions zap;
    NowOptions now;
    EpgOptions epg;
    RecordOptions record;
    RecordAtOptions recordAt;
    uint32_t schedule = 0;   ///< id, of record cancel
    uint32_t recording = 0;  ///< index, of recordings delete
    ConfigOptions config;
    std::function<int()> command;
};

/** Adds an option of seconds, which may have a fraction. */
template <typename Duration>
void addSeconds(CLI::App& app, const char* name, Duration& duration, const char* description) {
    // As much as a person can mean: up to about three years.
    static const CLI::Validator kSeconds = CLI::Range(0.0, 1e8).description("");
    using std::chrono::milliseconds;
    app.add_option_function<double>(
               name,
               [&duration](double seconds) {
                   duration = milliseconds{static_cast<milliseconds::rep>(seconds * 1000)};
               },
               description)
            ->check(kSeconds)
            ->type_name("SECONDS");
}

inline void addMedium(CLI::App& command, std::optional<qortv::Medium>& medium,
                      const char* description = "Only channels of this medium") {
    static const std::map<std::string, qortv::Medium> kMedia = {
            {"terrestrial", qortv::Medium::kTerrestrial},
            {"cable", qortv::Medium::kCable},
            {"satellite", qortv::Medium::kSatellite}};
    command.add_option_function<std::string>(
                   "--medium", [&medium](const std::string& name) { medium = kMedia.at(name); },
                   description)
            ->check(CLI::IsMember(kMedia))
            ->type_name("MEDIUM");
}

/** Adds the commands of watching television: scan, zap, now, epg and time. */
void addViewing(CLI::App& app, Wanted& wanted);

/** Adds record and recordings. */
void addRecording(CLI::App& app, Wanted& wanted);

/** Adds config. */
void addSettings(CLI::App& app, Wanted& wanted);

}  // namespace qortvctl
