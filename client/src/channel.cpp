#include "qortv/channel.h"

#include "medium.h"
#include "middleware/records.h"
#include "record_image.h"

namespace qortv {

namespace {

// The cases are values of service_type in the service descriptor of the broadcast.
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

}  // namespace

Channel toChannel(const SVL_REC_T& service, const TSL_REC_T& multiplex) {
    constexpr uint32_t kAnyFavourite =
            SB_VNET_FAVORITE1 | SB_VNET_FAVORITE2 | SB_VNET_FAVORITE3 | SB_VNET_FAVORITE4;
    Channel channel;
    channel.id = service.ui4_channel_id;
    channel.number = service.ui2_channel_number;
    channel.name = textIn(service.s_service_name);
    channel.provider = textIn(service.s_provider_name);
    channel.medium = toMedium(service.ui1_brdcst_medium);
    channel.type = typeOf(service);
    channel.list = service.ui2_svl_id;
    channel.record = service.ui2_svl_rec_id;
    channel.serviceId = service.ui2_service_id;
    channel.networkId = service.ui2_original_network_id;
    channel.multiplexId = service.ui2_transport_stream_id;
    channel.multiplex = textIn(multiplex.s_network_name);
    if (channel.multiplex.empty()) channel.multiplex = textIn(multiplex.s_source);
    channel.frequencyKhz = multiplex.ui4_frequency_khz;
    channel.audioLanguage = textIn(service.s_audio_lang);
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

}  // namespace qortv
