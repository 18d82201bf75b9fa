#include "guide_output.h"

#include <fmt/format.h>

namespace qortvctl {

using qortv::Event;

NowNext readNowNext(qortv::Guide& guide, uint32_t channelId) {
    return {guide.present(channelId), guide.following(channelId)};
}

std::string EventWords::span(const Event& event) {
    return time(event.start) + "-" + time(event.end());
}

std::string EventWords::date(const Event& event) {
    return dateOf(mClock.local(event.start));
}

std::string EventWords::time(int64_t utc) {
    return timeOf(mClock.local(utc));
}

std::string EventWords::progress(const Event& event) const {
    if (mNow < event.start) return "-";
    return fmt::format("{} %", event.percentAt(mNow));
}

std::string EventWords::stamp(int64_t utc) {
    const auto local = mClock.local(utc);
    return dateOf(local) + " " + timeOf(local);
}

nlohmann::ordered_json EventWords::json(const Event& event) {
    return {{"id", event.id},
            {"title", event.title},
            {"text", event.text},
            {"language", event.language},
            {"genre", qortv::genreName(event.genre)},
            {"age", event.minimumAge},
            {"start", event.start},
            {"end", event.end()},
            {"startLocal", stamp(event.start)},
            {"endLocal", stamp(event.end())},
            {"percent", event.percentAt(mNow)}};
}

nlohmann::ordered_json EventWords::json(const std::optional<Event>& event) {
    return event ? json(*event) : nlohmann::ordered_json();
}

std::string ageText(const Event& event) {
    return event.minimumAge == 0 ? "" : fmt::format("{}+", event.minimumAge);
}

std::string label(const qortv::Channel& channel) {
    return fmt::format("{} {}", channel.number, channel.name);
}

}  // namespace qortvctl
