// Broadcast channels: what is received, and what could be.
#include <algorithm>
#include <array>
#include <cstdlib>

#include "calls.h"
#include "cam_slot.h"
#include "channel_keys.h"
#include "channel_selection.h"
#include "client_text.h"
#include "dvb_text.h"
#include "middleware/broadcast.h"
#include "playing.h"

namespace television {
namespace {

constexpr uint32_t kMostChannelNumber = UINT16_MAX;

std::optional<Playing> playingOf(const Core& core, size_t window) {
    return core.read([&](const ChannelLists& lists) { return playingIn(lists, window); });
}

/** A digital tuner is named by the medium that it receives. */
bool isTuner(uint16_t type) {
    return type >= BRDCST_MEDIUM_DIG_TERRESTRIAL && type <= BRDCST_MEDIUM_DIG_SATELLITE;
}

/** Plugs a limit of channel numbers. */
template <auto Function>
void plugLimit(switchboard::Switchboard& board, uint32_t limit) {
    board.on<Function>([limit](uint16_t tunerType, uint32_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        if (!isTuner(tunerType)) return TV_NOT_SUPPORTED;
        *to = limit;
        return TV_OK;
    });
}

/** Plugs a question that is answered with yes or no. */
template <auto Function, typename Ask>
void plugQuestion(switchboard::Switchboard& board, Ask ask) {
    board.on<Function>([ask](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = ask() ? 1 : 0;
        return TV_OK;
    });
}

/** Whether `number` is one that can come out when digits are typed behind `typed`. */
bool continues(uint32_t number, uint32_t typed) {
    if (typed == 0) return number != 0;
    while (number > typed) number /= 10;
    return number == typed;
}

bool isNumberValid(const Core& core, uint32_t major, uint32_t minor, bool exact) {
    if (minor != 0) return false;
    return core.read([&](const ChannelLists& lists) {
        if (exact) return channelByNumber(lists, major) != 0;
        return std::any_of(lists.lists.begin(), lists.lists.end(), [&](const ChannelList& list) {
            return std::any_of(list.services.begin(), list.services.end(),
                               [&](const Service& service) {
                                   const uint32_t number = service.record.ui2_channel_number;
                                   return number != 0 && continues(number, major);
                               });
        });
    });
}

/** Where broadcasts can be meant for. Codes are unique over all levels. */
struct Region {
    uint16_t level;
    uint16_t parent;  ///< code; 0 at the first level
    uint16_t code;
    const char* name;
};
constexpr Region kRegions[] = {
        {1, 0, 1, "North"},           {1, 0, 2, "South"},        {2, 1, 11, "North Coast"},
        {2, 1, 12, "Northern Lakes"}, {2, 2, 21, "South Coast"}, {2, 2, 22, "Southern Hills"},
        {3, 11, 111, "Harbour"},      {3, 11, 112, "Islands"},   {3, 12, 121, "Lake Town"},
        {3, 21, 211, "Bay"},          {3, 22, 221, "High Hill"}, {3, 22, 222, "Low Hill"},
};

const Region* regionOf(uint16_t code) {
    const auto* found = std::find_if(std::begin(kRegions), std::end(kRegions),
                                     [&](const Region& region) { return region.code == code; });
    return found == std::end(kRegions) ? nullptr : found;
}

bool isRegionLevel(uint16_t level) {
    return level >= BROADCAST_REGION_PRIMARY && level <= BROADCAST_REGION_TERTIARY;
}

int32_t readRegion(uint16_t level, uint16_t parent, uint16_t index, QORTVAPI_SB_DVB_REGION_T* to) {
    if (!writable(to) || !isRegionLevel(level)) return TV_INVALID_ARGUMENT;
    for (const Region& region : kRegions) {
        if (region.level != level || region.parent != parent || index-- != 0) continue;
        *to = {};
        to->ui1_depth = static_cast<uint8_t>(level);
        uint16_t* const codes[] = {&to->ui2_primary, &to->ui2_secondary, &to->ui2_tertiary};
        for (const Region* at = &region; at != nullptr; at = regionOf(at->parent)) {
            *codes[at->level - 1] = at->code;
        }
        copyText(to->s_name, region.name);
        return TV_OK;
    }
    return TV_NOT_FOUND;
}

/** The channel to play of the multiplex that is nearest to a frequency; 0 when there is none. */
uint32_t channelAt(const ChannelLists& lists, const QORTVAPI_FREQ_INFO_T& wanted) {
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
    if (nearest == nullptr) return 0;
    uint32_t hidden = 0;
    for (const Service& service : lists.list(nearest->ui2_tsl_id)->services) {
        const SVL_REC_T& record = service.record;
        if (record.ui2_tsl_rec_id != nearest->ui2_tsl_rec_id) continue;
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
        const uint32_t channelId = channelAt(lists, wanted);
        if (channelId == 0) return TV_NOT_FOUND;
        selectChannel(lists, *window, channelId, change);
        return TV_OK;
    });
}

int32_t connectionAttribute(const Core& core, const char* context, int32_t attribute, int32_t* to) {
    const std::optional<size_t> window = windowNamed(context);
    if (!window) return TV_NOT_FOUND;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    const std::optional<Playing> playing = playingOf(core, *window);
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
    const std::optional<Playing> playing = playingOf(core, *window);
    if (!playing || !hasStream(*playing, type)) return TV_NOT_FOUND;
    *scrambled = (playing->service.ui4_nw_mask & SB_VNET_SCRAMBLED) != 0 ? 1 : 0;
    return TV_OK;
}

/** A module's text, whose surrogates come in pairs, as UTF-8. */
std::string utf8(const CamText& text) {
    std::string out;
    for (size_t at = 0; at < text.size() && text[at] != 0; ++at) {
        uint32_t code = text[at];
        if (code >= 0xD800 && code < 0xDC00 && at + 1 < text.size()) {
            code = 0x10000 + ((code & 0x3FFu) << 10) + (text[++at] & 0x3FFu);
        }
        const unsigned more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        constexpr uint8_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
        out += static_cast<char>(kLead[more] | code >> (6 * more));
        for (unsigned i = more; i-- > 0;) {
            out += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
        }
    }
    return out;
}

void plugSignal(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_broadcast_get_tuning_status>([&core](uint32_t* status) -> int32_t {
        if (!writable(status)) return TV_INVALID_ARGUMENT;
        *status = core.reception.tuning(playingOf(core, 0)).status;
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_get_tuning_error>([&core](int32_t* error) -> int32_t {
        if (!writable(error)) return TV_INVALID_ARGUMENT;
        *error = static_cast<int32_t>(core.reception.tuning(playingOf(core, 0)).error);
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_is_signal_loss>([&core] {
        const auto playing = playingOf(core, 0);
        return int32_t{playing && core.reception.hasSignal(playing->multiplex) ? 0 : 1};
    });
    board.on<&a_qortvapi_broadcast_get_signal_level>([&core] {
        const auto playing = playingOf(core, 0);
        return playing ? core.reception.level(playing->multiplex) : int32_t{TV_NOT_FOUND};
    });
    board.on<&a_qortvapi_broadcast_get_signal_quality>([&core] {
        const auto playing = playingOf(core, 0);
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

void plugNumbers(switchboard::Switchboard& board, Core& core) {
    plugLimit<&a_qortvapi_broadcast_get_max_possible_major_chan_no>(board, kMostChannelNumber);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_minor_chan_no>(board, 0);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_major_digits>(board, kMostChannelDigits);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_minor_digits>(board, 0);
    plugQuestion<&a_qortvapi_broadcast_is_support_4_digits_chan_no>(board, [] { return true; });
    board.on<&a_qortvapi_broadcast_is_channel_number_valid>(
            [&core](uint32_t major, uint32_t minor, bool exact, uint8_t* valid) -> int32_t {
                if (!writable(valid)) return TV_INVALID_ARGUMENT;
                *valid = isNumberValid(core, major, minor, exact) ? 1 : 0;
                return TV_OK;
            });
}

void plugRegions(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_broadcast_get_target_region_num>(
            [](uint16_t level, uint16_t* count) -> int32_t {
                if (!writable(count) || !isRegionLevel(level)) return TV_INVALID_ARGUMENT;
                *count = static_cast<uint16_t>(
                        std::count_if(std::begin(kRegions), std::end(kRegions),
                                      [&](const Region& region) { return region.level == level; }));
                return TV_OK;
            });
    board.on<&a_qortvapi_broadcast_get_target_regions>(readRegion);
}

}  // namespace

void plugTuner(switchboard::Switchboard& board, Core& core, const CamSlot& cam) {
    plugSignal(board, core);
    plugContexts(board, core);
    plugNumbers(board, core);
    plugRegions(board);
    plugQuestion<&a_qortvapi_broadcast_is_cam_installed>(
            board, [&cam] { return cam.status().card != nullptr; });
    board.on<&a_qortvapi_broadcast_get_cam_operator_name>(
            [&cam](uint32_t length, char* name) -> int32_t {
                const std::shared_ptr<const CamCard> card = cam.status().card;
                const uint32_t size = length == UINT32_MAX ? length : length + 1;
                return putText(name, size, card == nullptr ? "" : utf8(card->name));
            });
    plugQuestion<&a_qortvapi_broadcast_is_additional_service_available>(board, [&core] {
        const auto playing = playingOf(core, 0);
        return playing && (playing->tracks.audio.size() > 1 || !playing->tracks.subtitles.empty());
    });
    // No MHEG application runs that could ask for keys.
    board.on<&a_qortvapi_broadcast_get_mheg_input_event_mask>([](uint8_t, uint8_t* set) -> int32_t {
        if (!writable(set)) return TV_INVALID_ARGUMENT;
        *set = 0;
        return TV_OK;
    });
}

}  // namespace television
