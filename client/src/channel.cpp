#include "qortv/channel.h"

#include <cstring>

#include "middleware/records.h"

namespace qortv {

namespace {

template <size_t size>
std::string text(const char (&block)[size]) {
    return validUtf8(std::string(block, strnlen(block, size)));
}

Medium mediumOf(uint8_t medium) {
    switch (medium) {
        case BRDCST_MEDIUM_DIG_TERRESTRIAL:
            return Medium::kTerrestrial;
        case BRDCST_MEDIUM_DIG_CABLE:
            return Medium::kCable;
        case BRDCST_MEDIUM_DIG_SATELLITE:
            return Medium::kSatellite;
        default:
            return Medium::kUnknown;
    }
}

// The numbers are those of the service descriptor.
ChannelType typeOf(const SVL_REC_T& service) {
    switch (service.ui1_service_type) {
        case 0x01:
        case 0x16:
            return ChannelType::kTelevision;
        case 0x02:
        case 0x0A:
            return ChannelType::kRadio;
        case 0x11:
        case 0x19:
            return ChannelType::kHdTelevision;
        case 0x1F:
            return ChannelType::kUhdTelevision;
        default:
            if (service.ui4_nw_mask & SB_VNET_RADIO_SERVICE) return ChannelType::kRadio;
            if (service.ui4_nw_mask & SB_VNET_TV_SERVICE) return ChannelType::kTelevision;
            return ChannelType::kOther;
    }
}

/**
 * Length of the well-formed sequence at `at`, 0 when there is none: no overlong form, no surrogate,
 * nothing beyond U+10FFFF.
 */
size_t sequenceLength(const std::string& text, size_t at) {
    const auto byte = [&](size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const auto in = [&](size_t index, unsigned low, unsigned high) {
        return byte(index) >= low && byte(index) <= high;
    };
    const unsigned first = byte(at);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return in(at + 1, 0x80, 0xBF) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = first == 0xED ? 0x9F : 0xBF;
        return in(at + 1, low, high) && in(at + 2, 0x80, 0xBF) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const unsigned low = first == 0xF0 ? 0x90 : 0x80;
        const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
        return in(at + 1, low, high) && in(at + 2, 0x80, 0xBF) && in(at + 3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

}  // namespace

Channel toChannel(const SVL_REC_T& service, const TSL_REC_T& multiplex) {
    constexpr uint32_t kAnyFavourite =
            SB_VNET_FAVORITE1 | SB_VNET_FAVORITE2 | SB_VNET_FAVORITE3 | SB_VNET_FAVORITE4;
    Channel channel;
    channel.id = service.ui4_channel_id;
    channel.number = service.ui2_channel_number;
    channel.name = text(service.s_service_name);
    channel.provider = text(service.s_provider_name);
    channel.medium = mediumOf(service.ui1_brdcst_medium);
    channel.type = typeOf(service);
    channel.list = service.ui2_svl_id;
    channel.record = service.ui2_svl_rec_id;
    channel.serviceId = service.ui2_service_id;
    channel.networkId = service.ui2_original_network_id;
    channel.multiplexId = service.ui2_transport_stream_id;
    channel.multiplex = text(multiplex.s_network_name);
    if (channel.multiplex.empty()) channel.multiplex = text(multiplex.s_source);
    channel.frequencyKhz = multiplex.ui4_frequency_khz;
    channel.audioLanguage = text(service.s_audio_lang);
    channel.scrambled = service.ui1_free_ca_mode != 0;
    channel.visible = (service.ui4_nw_mask & SB_VNET_VISIBLE) != 0;
    channel.favourite = (service.ui4_nw_mask & kAnyFavourite) != 0;
    return channel;
}

const char* name(Medium medium) {
    switch (medium) {
        case Medium::kTerrestrial:
            return "terrestrial";
        case Medium::kCable:
            return "cable";
        case Medium::kSatellite:
            return "satellite";
        case Medium::kUnknown:
            break;
    }
    return "unknown";
}

const char* name(ChannelType type) {
    switch (type) {
        case ChannelType::kTelevision:
            return "tv";
        case ChannelType::kHdTelevision:
            return "hd";
        case ChannelType::kUhdTelevision:
            return "uhd";
        case ChannelType::kRadio:
            return "radio";
        case ChannelType::kOther:
            break;
    }
    return "other";
}

std::string validUtf8(const std::string& text) {
    std::string valid;
    valid.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const size_t length = sequenceLength(text, at);
        if (length == 0) {
            valid += "\xEF\xBF\xBD";
            ++at;
        } else {
            valid.append(text, at, length);
            at += length;
        }
    }
    return valid;
}

}  // namespace qortv
