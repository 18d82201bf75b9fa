#include "television/lists/scan_records.h"

#include <algorithm>

#include <fmt/format.h>

#include "television/base/contains.h"
#include "television/lists/lists.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

constexpr uint8_t kTelevisionTypes[] = {0x01, 0x11, 0x16, 0x19, 0x1C, 0x1F, 0x20};
constexpr uint8_t kRadioTypes[] = {0x02, 0x07, 0x0A};

// The oscillators of a universal LNB, and the frequency above which the high one is used.
constexpr uint32_t kLnbLowKhz = 9'750'000;
constexpr uint32_t kLnbHighKhz = 10'600'000;
constexpr uint32_t kLnbSwitchKhz = 11'700'000;

}  // namespace

uint32_t networkMask(const ParsedService& service) {
    uint32_t mask = SB_VNET_ACTIVE;
    if (service.visible) mask |= SB_VNET_VISIBLE | SB_VNET_EPG;
    if (contains(kTelevisionTypes, service.type)) mask |= SB_VNET_TV_SERVICE;
    if (contains(kRadioTypes, service.type)) mask |= SB_VNET_RADIO_SERVICE;
    if (service.scrambled) mask |= SB_VNET_SCRAMBLED;
    return mask;
}

void describeService(const ParsedService& parsed, SVL_REC_T& record) {
    record.ui4_nw_mask = networkMask(parsed);
    record.ui1_brdcst_type = BRDCST_TYPE_DVB;
    record.ui1_brdcst_medium = mediumOf(record.ui2_svl_id);
    record.ui1_service_type = parsed.type;
    record.ui1_free_ca_mode = parsed.scrambled ? 1 : 0;
    record.ui2_pmt_pid = parsed.pmtPid;
    record.ui2_pcr_pid = parsed.pcrPid;
    record.ui2_video_pid = parsed.videoPid;
    record.ui2_audio_pid = parsed.audioPid;
    record.ui1_video_stream_type = parsed.videoStreamType;
    record.ui1_audio_stream_type = parsed.audioStreamType;
    record.ui1_audio_count = static_cast<uint8_t>(std::min(parsed.audioCount, 255u));
    record.ui1_subtitle_count = static_cast<uint8_t>(std::min(parsed.subtitleCount, 255u));
    copyText(record.s_audio_lang, parsed.audioLanguage);
    copyText(record.s_service_name, parsed.name);
    copyText(record.s_provider_name, parsed.provider);
}

void describeMultiplex(const ParsedMultiplex& parsed, TSL_REC_T& record) {
    const Delivery& delivery = parsed.delivery;
    record.ui2_network_id = parsed.networkId;
    record.ui4_frequency_khz = delivery.frequencyKhz;
    record.ui4_symbol_rate = delivery.symbolRate;
    record.ui4_bandwidth_hz = delivery.bandwidthHz;
    record.ui1_brdcst_type = BRDCST_TYPE_DVB;
    record.ui1_brdcst_medium = mediumOf(record.ui2_tsl_id);
    record.ui1_modulation = delivery.modulation;
    record.ui1_fec_inner = delivery.fecInner;
    record.ui1_polarization = delivery.polarization;
    record.ui1_dvb_s2 = delivery.dvbS2 ? 1 : 0;
    record.ui2_orbital_position = delivery.orbitalPosition;
    record.ui1_west_east = delivery.east ? 1 : 0;
    record.ui4_packets = parsed.packets;
    record.ui4_damaged_packets = parsed.damagedPackets;
    record.ui4_damaged_sections = parsed.damagedSections;
    copyText(record.s_network_name, parsed.networkName);
    copyText(record.s_source, parsed.source);
}

SATL_REC_T satelliteRecord(uint16_t recordId, uint16_t position, bool east) {
    SATL_REC_T record = {};
    record.ui2_satl_id = SVL_ID_SATELLITE;
    record.ui2_satl_rec_id = recordId;
    record.ui2_orbital_position = position;
    record.ui1_west_east = east ? 1 : 0;
    record.ui1_enabled = 1;
    record.ui4_lnb_low_khz = kLnbLowKhz;
    record.ui4_lnb_high_khz = kLnbHighKhz;
    record.ui4_lnb_switch_khz = kLnbSwitchKhz;
    record.ui1_lnb_power = 1;
    copyText(record.s_name,
             fmt::format("{}.{}° {}", position / 10, position % 10, east ? "East" : "West"));
    return record;
}

NWL_REC_T networkRecord(uint16_t listId, uint16_t recordId, uint16_t satelliteId,
                        const ParsedMultiplex& parsed) {
    NWL_REC_T record = {};
    record.ui2_nwl_id = listId;
    record.ui2_nwl_rec_id = recordId;
    record.ui2_network_id = parsed.networkId;
    record.ui2_satl_rec_id = satelliteId;
    record.ui1_brdcst_medium = mediumOf(listId);
    record.ui1_version = parsed.networkVersion;
    record.ui2_transport_stream_count = static_cast<uint16_t>(parsed.networkStreams);
    copyText(record.s_name, parsed.networkName);
    return record;
}

}  // namespace television
