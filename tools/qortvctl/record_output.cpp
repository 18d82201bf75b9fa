#include "record_output.h"

#include <fmt/format.h>

namespace qortvctl {

std::string durationText(std::chrono::seconds duration) {
    const auto seconds = duration.count();
    if (seconds < 3600) return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string sizeText(uint64_t bytes) {
    if (bytes < 1000) return fmt::format("{} B", bytes);
    // The unit is the one in which the rounded number is below 1000.
    const auto number = static_cast<double>(bytes);
    if (number < 999.5e3) return fmt::format("{:.0f} kB", number / 1e3);
    if (number < 999.95e6) return fmt::format("{:.1f} MB", number / 1e6);
    return fmt::format("{:.1f} GB", number / 1e9);
}

std::string stateText(const qortv::Recording& recording) {
    return recording.recording ? "recording" : name(recording.end);
}

nlohmann::ordered_json toJson(const qortv::Recording& recording) {
    return {{"index", recording.index},
            {"path", recording.path},
            {"start", recording.start},
            {"date", recording.date},
            {"time", recording.time},
            {"channelId", recording.channelId},
            {"channelNumber", recording.channelNumber},
            {"channel", recording.channel},
            {"program", recording.program},
            {"seconds", recording.duration.count()},
            {"bytes", recording.bytes},
            {"minimumAge", recording.minimumAge},
            {"retentionDays", recording.retentionDays},
            {"state", stateText(recording)}};
}

nlohmann::ordered_json toJson(const qortv::Schedule& schedule, const qortv::Channel* channel,
                              const qortv::LocalTime& start) {
    using Json = nlohmann::ordered_json;
    return {{"id", schedule.id},
            {"channelId", schedule.channelId},
            {"channelNumber", channel == nullptr ? Json() : Json(channel->number)},
            {"channel", channel == nullptr ? Json() : Json(channel->name)},
            {"start", schedule.start},
            {"date", dateOf(start)},
            {"time", fmt::format("{}:{:02}", timeOf(start), start.second)},
            {"seconds", schedule.duration.count()},
            {"repeat", name(schedule.repeat)},
            {"reminder", schedule.reminder},
            {"title", schedule.title},
            {"state", name(schedule.state)}};
}

}  // namespace qortvctl
