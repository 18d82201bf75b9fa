#include "qortvctl/parsing/options.h"

#include <map>

#include "qortvctl/parsing/schedule_time.h"

namespace qortvctl {

namespace {

/** A check without a description of its own in the help text. */
template <typename Check>
CLI::Validator validator(Check check) {
    return CLI::Validator(check, "");
}

/** Refuses values that `parse` does not read, as "'VALUE' is no WHAT". */
template <typename Parse>
CLI::Validator readableBy(Parse parse, const char* what) {
    return validator([what, parse](const std::string& text) {
        return parse(text) ? std::string() : "'" + text + "' is no " + what;
    });
}

}  // namespace

CLI::Validator atLeastOne() {
    return validator([](const std::string& text) -> std::string {
        const bool number = text.find_first_not_of("0123456789") == std::string::npos;
        const bool positive = text.find_first_not_of('0') != std::string::npos;
        return number && positive ? "" : "must be 1 or more";
    });
}

CLI::Validator timeValue() {
    return readableBy(parseTime, "time such as 20:15 or 2026-11-21T20:15");
}

CLI::Validator durationValue() {
    return readableBy(parseDuration, "duration such as 1h30m, 90m or 5400");
}

CLI::Validator secondsValue(Zero zero) {
    const bool zeroAllowed = zero == Zero::kAllowed;
    return validator([zeroAllowed](const std::string& text) -> std::string {
        // Less than a millisecond would be rounded down to 0. The most is about three years.
        const double least = zeroAllowed ? 0 : 0.001;
        constexpr double kMost = 1e8;
        double seconds = 0;
        const bool number = CLI::detail::lexical_cast(text, seconds);
        if (number && seconds >= least && seconds <= kMost) return {};
        return std::string("must be seconds, ") + (zeroAllowed ? "at least" : "more than") +
               " 0 and at most 100000000";
    });
}

CLI::Option* addChannel(CLI::App& command, std::string& channel, const char* description) {
    return command.add_option("CHANNEL", channel, description)
            ->check(validator([](const std::string& text) -> std::string {
                return text.empty() ? "must not be empty" : "";
            }));
}

void addMedium(CLI::App& command, std::optional<qortv::Medium>& medium, const char* description) {
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

void addRepeat(CLI::App& command, qortv::Schedule::Repeat& repeat) {
    using Repeat = qortv::Schedule::Repeat;
    static const std::map<std::string, Repeat> kRepeats = {
            {"once", Repeat::kOnce}, {"daily", Repeat::kDaily}, {"weekly", Repeat::kWeekly}};
    command.add_option_function<std::string>(
                   "--repeat", [&repeat](const std::string& name) { repeat = kRepeats.at(name); },
                   "once, daily or weekly (default once)")
            ->check(CLI::IsMember(kRepeats))
            ->type_name("HOW");
}

}  // namespace qortvctl
