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

/** Whether an option may be no time at all. */
enum class Zero { kRefused, kAllowed };

/** Adds an option of seconds, which may have a fraction. */
template <typename Duration>
void addSeconds(CLI::App& app, const char* name, Duration& duration, const char* description,
                Zero zero = Zero::kRefused) {
    using std::chrono::milliseconds;
    const bool zeroToo = zero == Zero::kAllowed;
    const auto check = [zeroToo](const std::string& text) -> std::string {
        // Shorter than a millisecond is nothing. As much as a person can mean: about three years.
        const double least = zeroToo ? 0 : 0.001;
        double seconds = 0;
        const bool number = CLI::detail::lexical_cast(text, seconds);
        if (number && seconds >= least && seconds <= 1e8) return {};
        return std::string("must be seconds, ") + (zeroToo ? "at least" : "more than") +
               " 0 and at most 100000000";
    };
    app.add_option_function<double>(
               name,
               [&duration](double seconds) {
                   duration = milliseconds{static_cast<milliseconds::rep>(seconds * 1000)};
               },
               description)
            ->check(CLI::Validator(check, ""))
            ->type_name("SECONDS");
}

/** Of an option that counts. */
inline CLI::Validator atLeastOne() {
    return CLI::Validator(
            [](const std::string& text) -> std::string {
                const bool number = text.find_first_not_of("0123456789") == std::string::npos;
                const bool some = text.find_first_not_of('0') != std::string::npos;
                return number && some ? "" : "must be 1 or more";
            },
            "");
}

inline CLI::Option* addChannel(CLI::App& command, std::string& channel, const char* description) {
    return command.add_option("CHANNEL", channel, description)
            ->check(CLI::Validator(
                    [](const std::string& text) -> std::string {
                        return text.empty() ? "must not be empty" : "";
                    },
                    ""));
}

/** Where the medium tells channels with the same number apart. */
constexpr char kMediumOfNumber[] =
        "Only channels of this medium; without it, a number that several media have is the one in "
        "the medium that is on";

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
