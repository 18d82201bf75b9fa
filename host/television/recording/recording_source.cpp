#include "television/recording/recording_source.h"

#include <cstring>
#include <utility>
#include <vector>

#include "television/recording/service_tables.h"

namespace television {
namespace {

/** The text in a field of a record, which may lack its NUL. */
template <size_t N>
std::string textOf(const char (&text)[N]) {
    return std::string(text, strnlen(text, N));
}

}  // namespace

std::string RecordingSource::streamFile() const {
    return textOf(multiplex.s_source);
}

int32_t findRecordingSource(const Core& core, uint32_t channelId, size_t window,
                            RecordingSource& source) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const uint32_t wanted = channelId != 0 ? channelId : lists.current[window];
        const ChannelList* list = lists.listOf(wanted);
        if (list == nullptr) return RECORD_ERROR_NO_SIGNAL;
        source.service = list->byChannel(wanted)->record;
        const TSL_REC_T* multiplex = list->multiplex(source.service.ui2_tsl_rec_id);
        if (multiplex == nullptr) return RECORD_ERROR_NO_SIGNAL;
        source.multiplex = *multiplex;
        const bool scrambled = source.service.ui1_free_ca_mode != 0 ||
                               (source.service.ui4_nw_mask & SB_VNET_SCRAMBLED) != 0;
        return scrambled ? RECORD_ERROR_SCRAMBLED : RECORD_ERROR_NONE;
    });
}

RecordingInfo newRecordingInfo(const Core& core, const RecordingSource& source,
                               const std::string& title) {
    RecordingInfo info;
    info.startTime = core.clock.utcSeconds();
    info.localOffset = core.clock.offsetAt(info.startTime).seconds;
    info.channelId = source.service.ui4_channel_id;
    info.channelNumber = source.service.ui2_channel_number;
    info.channelName = textOf(source.service.s_service_name);
    info.programName = title;
    if (const auto event = core.guide.presentEvent(info.channelId, info.startTime)) {
        if (info.programName.empty()) info.programName = event->title;
        info.rating = event->minimumAge();
    }
    return info;
}

ServiceFilter::Describe describerOf(const Core& core, const RecordingSource& source) {
    DescribedService service;
    service.key = {source.service.ui2_original_network_id, source.service.ui2_transport_stream_id,
                   source.service.ui2_service_id};
    service.type = source.service.ui1_service_type;
    service.name = textOf(source.service.s_service_name);
    service.provider = textOf(source.service.s_provider_name);
    const uint32_t channelId = source.service.ui4_channel_id;
    return [&core, channelId, service, version = uint8_t{0},
            described = std::pair<int, int>(-1, -1)]() mutable {
        const int64_t now = core.clock.utcSeconds();
        const Guide::EventPointer present = core.guide.presentEvent(channelId, now);
        const Guide::EventPointer following = core.guide.followingEvent(channelId, now);
        const std::pair<int, int> ids(present == nullptr ? -1 : present->eventId,
                                      following == nullptr ? -1 : following->eventId);
        if (ids != described) ++version;
        described = ids;
        return std::vector<ServiceFilter::Table>{
                serviceTable(service),
                eventTable(service, present.get(), following.get(), version)};
    };
}

}  // namespace television
