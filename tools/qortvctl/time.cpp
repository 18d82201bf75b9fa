// qortvctl time.
#include <fmt/format.h>

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "output.h"
#include "qortv/clock.h"

namespace qortvctl {

namespace {

std::string text(const qortv::LocalTime& time) {
    return fmt::format("{} {}:{:02}", dateOf(time), timeOf(time), time.second);
}

/** The date and time of `utc` in UTC. */
std::string utcText(int64_t utc) {
    const std::time_t seconds = utc;
    std::tm parts = {};
    gmtime_r(&seconds, &parts);
    return text({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_wday,
                 parts.tm_hour, parts.tm_min, parts.tm_sec, false});
}

/** "+01:00" */
std::string offsetText(int32_t seconds) {
    const int minutes = std::abs(seconds) / 60;
    return fmt::format("{}{:02}:{:02}", seconds < 0 ? '-' : '+', minutes / 60, minutes % 60);
}

std::string sourceText(const qortv::ClockState& state) {
    if (state.source == state.follows) return name(state.source);
    return fmt::format("{} (until the {} tells a time)", name(state.source), name(state.follows));
}

}  // namespace

int time(const Common& common) {
    qortv::Clock clock(qortv::connect<qortv::Clock::Interface>(common.timeout));
    const qortv::ClockState state = clock.state();
    const qortv::LocalTime local = clock.local(state.utc);
    if (common.json) {
        nlohmann::ordered_json json = {{"utc", state.utc},
                                       {"utcText", utcText(state.utc)},
                                       {"local", text(local)},
                                       {"offset", state.offset},
                                       {"zone", state.zone},
                                       {"summer", local.summer},
                                       {"source", name(state.source)},
                                       {"follows", name(state.follows)},
                                       {"totReceived", state.totReceived},
                                       {"broadcastUtc", nullptr}};
        if (state.broadcastUtc) json["broadcastUtc"] = *state.broadcastUtc;
        printLine(json.dump(2));
        return kOk;
    }
    printLine("UTC        " + utcText(state.utc));
    printLine(fmt::format("local      {} ({}{})", text(local), offsetText(state.offset),
                          local.summer ? ", summer time" : ""));
    printLine("zone       " + offsetText(state.zone));
    printLine("source     " + sourceText(state));
    printLine("broadcast  " + (state.broadcastUtc ? utcText(*state.broadcastUtc) + " received"
                                                  : "no time received"));
    printLine(std::string("TOT        ") + (state.totReceived ? "received" : "not received"));
    return kOk;
}

}  // namespace qortvctl
