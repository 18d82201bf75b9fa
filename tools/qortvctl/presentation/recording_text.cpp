#include "qortvctl/presentation/recording_text.h"

#include "qortvctl/presentation/clock_text.h"

namespace qortvctl {

using Json = nlohmann::ordered_json;

std::string stateText(const qortv::Recording& recording) {
    return recording.recording ? "recording" : name(recording.end);
}

Json toJson(const qortv::Recording& recording) {
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

Json toJsonWithoutIndex(const qortv::Recording& recording) {
    Json json = toJson(recording);
    json.erase("index");
    return json;
}

Json toJson(const qortv::Schedule& schedule, const qortv::Channel* channel,
            const qortv::LocalTime& start) {
    return {{"id", schedule.id},
            {"channelId", schedule.channelId},
            {"channelNumber", channel == nullptr ? Json() : Json(channel->number)},
            {"channel", channel == nullptr ? Json() : Json(channel->name)},
            {"start", schedule.start},
            {"date", dateOf(start)},
            {"time", timeWithSeconds(start)},
            {"seconds", schedule.duration.count()},
            {"repeat", name(schedule.repeat)},
            {"reminder", schedule.reminder},
            {"title", schedule.title},
            {"state", name(schedule.state)}};
}

}  // namespace qortvctl
