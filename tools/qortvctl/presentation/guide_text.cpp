#include "qortvctl/presentation/guide_text.h"

#include <fmt/format.h>

#include "qortvctl/presentation/clock_text.h"

namespace qortvctl {

using qortv::Event;
using Json = nlohmann::ordered_json;

std::string EventFormatter::timeSpan(const Event& event) {
    return timeOfDay(event.start) + "-" + timeOfDay(event.end());
}

std::string EventFormatter::date(const Event& event) {
    return dateOf(mClock.local(event.start));
}

std::string EventFormatter::timeOfDay(int64_t utc) {
    return timeOf(mClock.local(utc));
}

std::string EventFormatter::progress(const Event& event) const {
    if (mNow < event.start) return "-";
    return fmt::format("{} %", event.percentAt(mNow));
}

Json EventFormatter::toJson(const Event& event) {
    return {{"id", event.id},
            {"title", event.title},
            {"text", event.text},
            {"language", event.language},
            {"genre", qortv::genreName(event.genre)},
            {"age", event.minimumAge},
            {"start", event.start},
            {"end", event.end()},
            {"startLocal", dateAndTime(mClock.local(event.start))},
            {"endLocal", dateAndTime(mClock.local(event.end()))},
            {"percent", event.percentAt(mNow)}};
}

Json EventFormatter::toJson(const std::optional<Event>& event) {
    return event ? toJson(*event) : Json();
}

Json EventFormatter::toJson(const qortv::EventDetails& details) {
    Json json = toJson(details.event);
    json["text"] = details.text;
    json["details"] = details.longText;
    json["guidance"] = details.guidance;
    json["series"] = details.series;
    json["blocked"] = details.blocked;
    return json;
}

std::string ageText(const Event& event) {
    return event.minimumAge == 0 ? "" : fmt::format("{}+", event.minimumAge);
}

std::string factsText(const qortv::EventDetails& details) {
    std::string facts = qortv::genreName(details.event.genre);
    const auto add = [&](const std::string& fact) {
        if (!fact.empty()) facts += (facts.empty() ? "" : ", ") + fact;
    };
    add(details.guidance);
    if (details.blocked) add("blocked");
    if (details.event.scrambled) add("scrambled");
    if (!details.series.empty()) add("series " + details.series);
    return facts;
}

}  // namespace qortvctl
