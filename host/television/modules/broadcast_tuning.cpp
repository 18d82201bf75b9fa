// Reception: signal, frequency and scrambling of what plays, and the CAM in the set.
#include <algorithm>
#include <array>
#include <cstdlib>

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "television/base/utf16.h"
#include "television/cam/cam_slot.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"
#include "television/modules/yes_no.h"

namespace television {
namespace {

/** Returns the multiplex that is nearest to a frequency, within 500 kHz; null when there is none.
 */
const TSL_REC_T* multiplexAt(const ChannelLists& lists, const QORTVAPI_FREQ_INFO_T& wanted) {
    constexpr int64_t kToleranceKhz = 500;
    const TSL_REC_T* nearest = nullptr;
    int64_t least = kToleranceKhz + 1;
    for (const ChannelList& list : lists.lists) {
        const uint8_t medium = wanted.ui1_brdcst_medium;
        if (medium != BRDCST_MEDIUM_UNKNOWN && mediumOf(list.id) != medium) continue;
        for (const TSL_REC_T& multiplex : list.multiplexes) {
            if (mediumOf(list.id) == BRDCST_MEDIUM_DIG_SATELLITE &&
                multiplex.ui1_polarization != wanted.ui1_polarization) {
                continue;
            }
            const int64_t distance = std::llabs(int64_t{multiplex.ui4_frequency_khz} -
                                                int64_t{wanted.ui4_frequency_khz});
            if (distance >= least) continue;
            least = distance;
            nearest = &multiplex;
        }
    }
    return nearest;
}

/** Returns the id of the first channel of a multiplex that is shown, else of its first one; 0 when
 * it has none. */
uint32_t firstChannelOf(const ChannelLists& lists, const TSL_REC_T& multiplex) {
    uint32_t hidden = 0;
    for (const Service& service : lists.list(multiplex.ui2_tsl_id)->services) {
        const SVL_REC_T& record = service.record;
        if (record.ui2_tsl_rec_id != multiplex.ui2_tsl_rec_id) continue;
        if ((record.ui4_nw_mask & SB_VNET_VISIBLE) != 0) return record.ui4_channel_id;
        if (hidden == 0) hidden = record.ui4_channel_id;
    }
    return hidden;
}

int32_t changeFrequency(Core& core, const char* context, const QORTVAPI_FREQ_INFO_T* frequency) {
    const std::optional<size_t> window = windowNamed(context);
    if (!window) return TV_NOT_FOUND;
    if (!writable(frequency)) return TV_INVALID_ARGUMENT;
    const QORTVAPI_FREQ_INFO_T wanted = *frequency;
    const bool good = wanted.ui4_frequency_khz != 0 &&
                      wanted.ui1_brdcst_medium <= BRDCST_MEDIUM_DIG_SATELLITE;
    if (!good) return TV_INVALID_ARGUMENT;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const TSL_REC_T* const multiplex = multiplexAt(lists, wanted);
        const uint32_t channelId = multiplex == nullptr ? 0 : firstChannelOf(lists, *multiplex);
        if (channelId == 0) return TV_NOT_FOUND;
        selectChannel(lists, *window, channelId, change);
        return TV_OK;
    });
}

int32_t connectionAttribute(const Core& core, const char* context, int32_t attribute, int32_t* to) {
    const std::optional<size_t> window = windowNamed(context);
    if (!window) return TV_NOT_FOUND;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = core.playing(*window);
    if (!playing) return TV_NOT_FOUND;
    const TSL_REC_T& multiplex = playing->multiplex;
    switch (attribute) {
        case BROADCAST_CONN_ATTR_FREQUENCY_KHZ:
            *to = static_cast<int32_t>(multiplex.ui4_frequency_khz);
            return TV_OK;
        case BROADCAST_CONN_ATTR_SYMBOL_RATE:
            *to = static_cast<int32_t>(multiplex.ui4_symbol_rate);
            return TV_OK;
        case BROADCAST_CONN_ATTR_MODULATION:
            *to = multiplex.ui1_modulation;
            return TV_OK;
        case BROADCAST_CONN_ATTR_BANDWIDTH_HZ:
            *to = static_cast<int32_t>(multiplex.ui4_bandwidth_hz);
            return TV_OK;
        case BROADCAST_CONN_ATTR_MEDIUM:
            *to = playing->service.ui1_brdcst_medium;
            return TV_OK;
        default:
            return TV_NOT_SUPPORTED;
    }
}

/** `type`: BROADCAST_STREAM_TYPE_…. */
bool hasStream(const Playing& playing, uint32_t type) {
    const auto& subtitles = playing.tracks.subtitles;
    const auto has = [&](bool teletext) {
        return std::any_of(subtitles.begin(), subtitles.end(),
                           [&](const SubtitleTrack& track) { return track.teletext == teletext; });
    };
    switch (type) {
        case BROADCAST_STREAM_TYPE_AUDIO:
            return playing.hasAudio();
        case BROADCAST_STREAM_TYPE_VIDEO:
            return playing.hasVideo();
        default:
            return has(type == BROADCAST_STREAM_TYPE_TELETEXT);
    }
}

int32_t isScrambled(const Core& core, const char* context, uint32_t type, uint8_t* scrambled) {
    const std::optional<size_t> window = windowNamed(context);
    if (!window) return TV_NOT_FOUND;
    if (!writable(scrambled) || type > BROADCAST_STREAM_TYPE_TELETEXT) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = core.playing(*window);
    if (!playing || !hasStream(*playing, type)) return TV_NOT_FOUND;
    *scrambled = (playing->service.ui4_nw_mask & SB_VNET_SCRAMBLED) != 0 ? 1 : 0;
    return TV_OK;
}

void plugSignal(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_broadcast_get_tuning_status>([&core](uint32_t* status) -> int32_t {
        if (!writable(status)) return TV_INVALID_ARGUMENT;
        *status = core.reception.tuning(core.playing(0)).status;
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_get_tuning_error>([&core](int32_t* error) -> int32_t {
        if (!writable(error)) return TV_INVALID_ARGUMENT;
        *error = static_cast<int32_t>(core.reception.tuning(core.playing(0)).error);
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_is_signal_loss>([&core] {
        const auto playing = core.playing(0);
        return int32_t{playing && core.reception.hasSignal(playing->multiplex) ? 0 : 1};
    });
    board.on<&a_qortvapi_broadcast_get_signal_level>([&core] {
        const auto playing = core.playing(0);
        return playing ? core.reception.level(playing->multiplex) : int32_t{TV_NOT_FOUND};
    });
    board.on<&a_qortvapi_broadcast_get_signal_quality>([&core] {
        const auto playing = core.playing(0);
        return playing ? core.reception.quality(playing->multiplex) : int32_t{TV_NOT_FOUND};
    });
}

void plugContexts(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_broadcast_sync_stop>([&core](const char* context, bool) -> int32_t {
        const std::optional<size_t> window = windowNamed(context);
        if (!window) return TV_NOT_FOUND;
        return core.change([&](ChannelLists& lists, Identities&, Change& change) {
            stopPlaying(lists, *window, change);
            return int32_t{TV_OK};
        });
    });
    board.on<&a_qortvapi_broadcast_strm_is_orig_scramble>(
            [&core](const char* context, uint32_t type, uint8_t* scrambled) {
                return isScrambled(core, context, type, scrambled);
            });
    board.on<&a_qortvapi_broadcast_change_freq>(
            [&core](const char* context, const QORTVAPI_FREQ_INFO_T* frequency) {
                return changeFrequency(core, context, frequency);
            });
    board.on<&a_qortvapi_broadcast_ana_channel_fine_tune>([](const char* context, int32_t, bool) {
        return int32_t{windowNamed(context) ? TV_NOT_SUPPORTED : TV_NOT_FOUND};
    });
    board.on<&a_qortvapi_broadcast_get_connect_attr>(
            [&core](const char* context, int32_t attribute, int32_t* value) {
                return connectionAttribute(core, context, attribute, value);
            });
}

}  // namespace

void plugBroadcastTuning(switchboard::Switchboard& board, Core& core, const CamSlot& cam) {
    plugSignal(board, core);
    plugContexts(board, core);
    plugYesNo<&a_qortvapi_broadcast_is_cam_installed>(
            board, [&cam] { return cam.status().card != nullptr; });
    board.on<&a_qortvapi_broadcast_get_cam_operator_name>(
            [&cam](uint32_t length, char* name) -> int32_t {
                const std::shared_ptr<const CamCard> card = cam.status().card;
                const uint32_t size = length == UINT32_MAX ? length : length + 1;
                return putText(name, size, card == nullptr ? "" : utf8FromUtf16(card->name));
            });
    plugYesNo<&a_qortvapi_broadcast_is_additional_service_available>(board, [&core] {
        const auto playing = core.playing(0);
        return playing && (playing->tracks.audio.size() > 1 || !playing->tracks.subtitles.empty());
    });
    // The mask is empty: no MHEG application runs that could want keys.
    board.on<&a_qortvapi_broadcast_get_mheg_input_event_mask>([](uint8_t, uint8_t* set) -> int32_t {
        if (!writable(set)) return TV_INVALID_ARGUMENT;
        *set = 0;
        return TV_OK;
    });
}

}  // namespace television
