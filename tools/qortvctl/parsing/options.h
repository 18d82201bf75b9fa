/** Options and arguments that several commands take, and the checks of their values. */
#pragma once

#include <CLI/CLI.hpp>
#include <chrono>
#include <optional>
#include <string>

#include "qortv/channel.h"
#include "qortv/schedules.h"

namespace qortvctl {

/** Refuses values of an option that are no whole number of at least 1. */
CLI::Validator atLeastOne();

/** Refuses values that parseTime() does not read. */
CLI::Validator timeValue();

/** Refuses values that parseDuration() does not read. */
CLI::Validator durationValue();

/** Whether a number of seconds may be 0. */
enum class Zero { kRefused, kAllowed };

/** Refuses values that are no seconds; they may have a fraction. */
CLI::Validator secondsValue(Zero zero);

/**
 * Adds an option of seconds, which may have a fraction.
 *
 * @tparam Duration milliseconds, or an optional of it
 * @param duration set when the option is given
 */
template <typename Duration>
void addSeconds(CLI::App& command, const char* name, Duration& duration, const char* description,
                Zero zero = Zero::kRefused) {
    using std::chrono::milliseconds;
    command.add_option_function<double>(
                   name,
                   [&duration](double seconds) {
                       duration = milliseconds{static_cast<milliseconds::rep>(seconds * 1000)};
                   },
                   description)
            ->check(secondsValue(zero))
            ->type_name("SECONDS");
}

// What CHANNEL may be.
constexpr char kNumberOrName[] = "Its number, name, or part of the name";
constexpr char kNumberOrNameOrCurrent[] =
        "Its number, name, or part of the name; the current one if left out";

/** Adds the argument CHANNEL, which must not be empty. */
CLI::Option* addChannel(CLI::App& command, std::string& channel, const char* description);

/** What --medium means to a command that takes the number of a channel. */
constexpr char kMediumOfNumber[] =
        "Only channels of this medium; without it, a number that several media have is the one in "
        "the medium that is on";

/** Adds the option --medium. */
void addMedium(CLI::App& command, std::optional<qortv::Medium>& medium,
               const char* description = "Only channels of this medium");

/** Adds the option --repeat of a schedule. */
void addRepeat(CLI::App& command, qortv::Schedule::Repeat& repeat);

}  // namespace qortvctl
