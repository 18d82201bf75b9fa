#include "qortvctl/presentation/clock_text.h"

#include <fmt/format.h>

#include <cstdlib>
#include <ctime>

namespace qortvctl {

namespace {

using qortv::ClockState;
using qortv::LocalTime;

/** "2026-11-21 20:15:30" */
std::string dateAndFullTime(const LocalTime& time) {
    return dateOf(time) + " " + timeWithSeconds(time);
}

/** "2026-11-21 19:15:30": the date and time in UTC at `utc`, seconds since 1970-01-01 00:00 UTC. */
std::string utcText(int64_t utc) {
    const std::time_t seconds = utc;
    std::tm parts = {};
    gmtime_r(&seconds, &parts);
    return dateAndFullTime({parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_wday,
                            parts.tm_hour, parts.tm_min, parts.tm_sec, false});
}

/** "+01:00", of seconds east of Greenwich. */
std::string offsetText(int32_t seconds) {
    const int minutes = std::abs(seconds) / 60;
    return fmt::format("{}{:02}:{:02}", seconds < 0 ? '-' : '+', minutes / 60, minutes % 60);
}

std::string sourceText(const ClockState& state) {
    if (state.source == state.follows) return name(state.source);
    return fmt::format("{} (until the {} tells a time)", name(state.source), name(state.follows));
}

}  // namespace

std::string dateAndTime(const LocalTime& time) {
    return dateOf(time) + " " + timeOf(time);
}

std::string timeWithSeconds(const LocalTime& time) {
    return fmt::format("{}:{:02}", timeOf(time), time.second);
}

std::vector<std::string> toLines(const ClockState& state, const LocalTime& local) {
    return {"UTC        " + utcText(state.utc),
            fmt::format("local      {} ({}{})", dateAndFullTime(local), offsetText(state.offset),
                        local.summer ? ", summer time" : ""),
            "zone       " + offsetText(state.zone),
            "source     " + sourceText(state),
            "broadcast  " + (state.broadcastUtc ? utcText(*state.broadcastUtc) + " received"
                                                : "no time received"),
            std::string("TOT        ") + (state.totReceived ? "received" : "not received")};
}

nlohmann::ordered_json toJson(const ClockState& state, const LocalTime& local) {
    nlohmann::ordered_json json = {{"utc", state.utc},
                                   {"utcText", utcText(state.utc)},
                                   {"local", dateAndFullTime(local)},
                                   {"offset", state.offset},
                                   {"zone", state.zone},
                                   {"summer", local.summer},
                                   {"source", name(state.source)},
                                   {"follows", name(state.follows)},
                                   {"totReceived", state.totReceived},
                                   {"broadcastUtc", nullptr}};
    if (state.broadcastUtc) json["broadcastUtc"] = *state.broadcastUtc;
    return json;
}

}  // namespace qortvctl
