#include "television/core/playing.h"

#include <cstring>

#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/broadcast.h"
#include "middleware/scc.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/svctx.h"
#include "middleware/videoinfo.h"
#include "television/base/contains.h"
#include "television/core/service_context.h"
#include "television/stream/descriptors.h"

namespace television {
namespace {

constexpr uint8_t kHighDefinitionTypes[] = {0x11, 0x19, 0x1A, 0x1B, 0x1C, 0x1D, 0x1E};
constexpr uint8_t kUltraHighDefinitionTypes[] = {0x1F, 0x20};

}  // namespace

std::optional<Playing> playingIn(const ChannelLists& lists, size_t window) {
    const ChannelList* list = lists.listOf(lists.current[window]);
    if (list == nullptr) return std::nullopt;
    const Service& service = *list->byChannel(lists.current[window]);
    Playing playing = {service.record, {}, {}};
    if (const TSL_REC_T* multiplex = list->multiplex(service.record.ui2_tsl_rec_id)) {
        playing.multiplex = *multiplex;
    }
    if (service.tracks != nullptr) {
        playing.tracks = *service.tracks;
    } else if (playing.hasAudio()) {
        const char* language = service.record.s_audio_lang;
        playing.tracks.audio.push_back({service.record.ui2_audio_pid,
                                        service.record.ui1_audio_stream_type, 0, 0,
                                        std::string(language, strnlen(language, 3))});
    }
    return playing;
}

VideoFormat videoFormatOf(const Playing& playing) {
    if (!playing.hasVideo()) return {};
    if (contains(kUltraHighDefinitionTypes, playing.service.ui1_service_type)) {
        return {3840, 2160, 50000, true};
    }
    if (contains(kHighDefinitionTypes, playing.service.ui1_service_type)) {
        return {1920, 1080, 25000, false};
    }
    return {720, 576, 25000, false};
}

VideoFormat videoFormatOf(const std::optional<Playing>& playing) {
    return playing ? videoFormatOf(*playing) : VideoFormat();
}

uint32_t audioEncodingOf(const AudioTrack& track) {
    switch (track.streamType) {
        case 0x03:
            return AUDIO_ENCODING_MPEG1;
        case 0x04:
            return AUDIO_ENCODING_MPEG2;
        case 0x0F:
            return AUDIO_ENCODING_AAC;
        case 0x11:
            return AUDIO_ENCODING_HE_AAC;
        case 0x81:
            return AUDIO_ENCODING_AC3;
        case 0x87:
            return AUDIO_ENCODING_EAC3;
        default:
            break;
    }
    switch (track.descriptorTag) {
        case kDescriptorAc3:
            return AUDIO_ENCODING_AC3;
        case kDescriptorEnhancedAc3:
            return AUDIO_ENCODING_EAC3;
        case kDescriptorDts:
            return AUDIO_ENCODING_DTS;
        case kDescriptorAac:
            return AUDIO_ENCODING_AAC;
        default:
            return AUDIO_ENCODING_UNKNOWN;
    }
}

int32_t screenSaverMessage(const std::optional<Playing>& playing) {
    if (!playing) return SCREENSAVER_MSG_NO_SIGNAL;
    const bool radio = (playing->service.ui4_nw_mask & SB_VNET_RADIO_SERVICE) != 0;
    return radio ? SCREENSAVER_MSG_RADIO : SCREENSAVER_MSG_NONE;
}

bool looksTheSame(const std::optional<Playing>& a, const std::optional<Playing>& b) {
    if (!a || !b) return !a && !b;
    // Records have no padding, so comparing bytes is enough.
    return std::memcmp(&a->service, &b->service, sizeof(a->service)) == 0 &&
           std::strcmp(a->multiplex.s_network_name, b->multiplex.s_network_name) == 0 &&
           a->tracks.audio == b->tracks.audio && a->tracks.subtitles == b->tracks.subtitles;
}

void addMainWindowNotifications(std::vector<Notification>& notifications,
                                const std::optional<Playing>& playing) {
    const uint32_t channelId = playing ? playing->service.ui4_channel_id : 0;
    const auto audioCount = static_cast<uint32_t>(playing ? playing->tracks.audio.size() : 0);
    const auto subtitleCount =
            static_cast<uint32_t>(playing ? playing->tracks.subtitles.size() : 0);
    const VideoFormat format = videoFormatOf(playing);
    notifications.push_back({registration<&a_qortvapi_banner_register_callback>(),
                             BANNER_NFY_CHANGED,
                             {channelId, 0, 0, 0}});
    notifications.push_back({registration<&a_qortvapi_audio_info_register_callback>(),
                             AUDIO_INFO_NFY_TRACKS_CHANGED,
                             {channelId, 0, audioCount, 0}});
    notifications.push_back({registration<&a_qortvapi_subtitle_reg_callback>(),
                             SUBTITLE_NFY_TRACKS_CHANGED,
                             {channelId, 0, subtitleCount, 0}});
    notifications.push_back({registration<&a_qortvapi_videoinfo_reg_common_nfy>(),
                             VIDEOINFO_NFY_FORMAT_CHANGED,
                             {channelId, format.width, format.height,
                              (format.progressive ? uint32_t{1} << 31 : 0) | format.frameRate}});
    notifications.push_back({registration<&a_qortvapi_screensaver_register_msg_callback>(),
                             screenSaverMessage(playing),
                             {}});
}

void addSelectionNotifications(std::vector<Notification>& notifications, const ChannelLists& lists,
                               size_t window, const Tuning& tuning) {
    const std::optional<Playing> playing = playingIn(lists, window);
    const auto windowNumber = static_cast<uint32_t>(window);
    const RegistrationKey context =
            registration<&c_svctx_set_listener>(window == 0 ? kMainContext : kSubContext);
    const auto addStep = [&](int32_t condition, uint32_t stream) {
        notifications.push_back({context, condition, {SVCTX_CODE_SERVICE_SELECTED, stream, 0, 0}});
    };
    if (!playing) {
        addStep(SVCTX_COND_NO_SERVICE, SVCTX_STREAM_ALL);
    } else {
        addStep(SVCTX_COND_SERVICE_CHANGED, SVCTX_STREAM_ALL);
    }
    if (tuning.error != BROADCAST_TUNING_ERROR_NO_SIGNAL && playing) {
        addStep(SVCTX_COND_SIGNAL_LOCKED, SVCTX_STREAM_ALL);
        if (playing->hasVideo()) addStep(SVCTX_COND_STREAM_STARTED, SVCTX_STREAM_VIDEO);
        if (playing->hasAudio()) addStep(SVCTX_COND_STREAM_STARTED, SVCTX_STREAM_AUDIO);
        addStep(SVCTX_COND_SERVICE_READY, SVCTX_STREAM_ALL);
    }
    const RegistrationKey broadcast = registration<&a_qortvapi_broadcast_register_callback>();
    const auto addTuning = [&](uint32_t status, uint32_t error) {
        notifications.push_back({broadcast,
                                 BROADCAST_NFY_TUNING,
                                 {status, error, lists.current[window], windowNumber}});
    };
    if (playing) addTuning(BROADCAST_TUNING_SEARCHING, BROADCAST_TUNING_ERROR_NONE);
    addTuning(tuning.status, tuning.error);
    notifications.push_back({broadcast,
                             BROADCAST_NFY_CHANNEL_CHANGED,
                             {lists.current[window], windowNumber,
                              playing ? uint32_t{playing->service.ui2_svl_id} : 0, 0}});
    notifications.push_back(detectionNotification(videoFormatOf(playing), window));
    if (window == 0) addMainWindowNotifications(notifications, playing);
}

Notification detectionNotification(const VideoFormat& picture, size_t window) {
    return {registration<&c_scc_vid_set_src_detect_nfy>(componentHandle(SCC_COMP_VIDEO, window)),
            picture.width != 0 ? SCC_DETECT_SIGNAL : SCC_DETECT_NO_SIGNAL,
            {picture.width, picture.height, 0, 0}};
}

}  // namespace television
