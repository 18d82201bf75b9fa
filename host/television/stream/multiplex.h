/** What the tables of a transport stream say of its multiplex, as plain data: the parser's result.
 */
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "television/stream/broadcast_time.h"
#include "television/stream/guide_event.h"

namespace television {

/** In place of a PID: there is none. It is the PID of null packets, which no other stream has. */
constexpr uint16_t kNoPid = 0x1FFF;

/** One audio stream of a service. */
struct AudioTrack {
    uint16_t pid = kNoPid;
    uint8_t streamType = 0;
    uint8_t descriptorTag = 0;  ///< of the descriptor that names the encoding, for private data
    uint8_t audioType = 0;      ///< of the language descriptor
    std::string language;       ///< ISO 639-2; empty when the stream does not say

    bool operator==(const AudioTrack& other) const {
        return pid == other.pid && streamType == other.streamType &&
               descriptorTag == other.descriptorTag && audioType == other.audioType &&
               language == other.language;
    }
};

/** One subtitle of a service: a page of a teletext or subtitling stream. */
struct SubtitleTrack {
    uint16_t pid = kNoPid;
    bool teletext = false;
    uint8_t type = 0;      ///< as in its descriptor
    uint16_t page = 0;     ///< composition page; of teletext: magazine << 8 | page
    std::string language;  ///< as of AudioTrack

    bool operator==(const SubtitleTrack& other) const {
        return pid == other.pid && teletext == other.teletext && type == other.type &&
               page == other.page && language == other.language;
    }
};

/** The first tracks of a service, as many as are kept. */
struct ServiceTracks {
    static constexpr size_t kMost = 16;  ///< of each kind

    std::vector<AudioTrack> audio;
    std::vector<SubtitleTrack> subtitles;
};

/** One service: what PAT, PMT and SDT say of it. Texts are UTF-8. */
struct ParsedService {
    uint16_t serviceId = 0;
    std::string name;
    std::string provider;
    uint8_t type = 0;  ///< service_type of the service descriptor
    bool scrambled = false;
    bool visible = true;
    uint16_t lcn = 0;  ///< logical channel number; 0 when there is none
    uint16_t pmtPid = kNoPid;
    uint16_t pcrPid = kNoPid;
    uint16_t videoPid = kNoPid;
    uint16_t audioPid = kNoPid;
    uint8_t videoStreamType = 0;
    uint8_t audioStreamType = 0;
    unsigned audioCount = 0;     ///< also of those that are not among the tracks
    unsigned subtitleCount = 0;  ///< likewise
    std::string audioLanguage;   ///< ISO 639-2, of the first audio stream
    ServiceTracks tracks;
};

/** A delivery-system descriptor, in the units and codes of the records. */
struct Delivery {
    uint8_t medium = 0;  ///< BRDCST_MEDIUM_…
    uint32_t frequencyKhz = 0;
    uint32_t symbolRate = 0;  ///< symbols a second
    uint32_t bandwidthHz = 0;
    uint8_t modulation = 0;
    uint8_t fecInner = 0;
    uint8_t polarization = 0;
    bool dvbS2 = false;
    uint16_t orbitalPosition = 0;  ///< tenths of a degree
    bool east = false;
};

/** One multiplex. */
struct ParsedMultiplex {
    std::string source;  ///< file name without folder
    uint16_t transportStreamId = 0;
    uint16_t originalNetworkId = 0;
    uint16_t networkId = 0;
    uint8_t networkVersion = 0;
    unsigned networkStreams = 0;  ///< transport streams that the NIT lists; 0 without a NIT
    std::string networkName;
    Delivery delivery;
    std::vector<ParsedService> services;
    BroadcastTime time;
    std::shared_ptr<const std::vector<ServiceEvents>> events;  ///< null when there are none
    uint32_t packets = 0;  ///< read of the stream, damaged ones among them
    uint32_t damagedPackets = 0;
    uint32_t damagedSections = 0;
};

}  // namespace television
