#include "scan_merge.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <unordered_set>

#include "channel_id.h"
#include "dvb_text.h"
#include "log.h"

namespace television {
namespace {

constexpr uint8_t kTelevisionTypes[] = {0x01, 0x11, 0x16, 0x19, 0x1C, 0x1F, 0x20};
constexpr uint8_t kRadioTypes[] = {0x02, 0x07, 0x0A};

// The oscillators of a universal LNB, and the frequency at which it changes over.
constexpr uint32_t kLnbLowKhz = 9'750'000;
constexpr uint32_t kLnbHighKhz = 10'600'000;
constexpr uint32_t kLnbSwitchKhz = 11'700'000;

template <size_t N>
bool contains(const uint8_t (&types)[N], uint8_t type) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

/** One merge in the making. */
class Merge {
  public:
    Merge(const ChannelLists& before, const ScanResult& scan, Identities& identities,
          const MergeScope& scope)
        : mBefore(before), mScan(scan), mIdentities(identities), mScope(scope), mAfter(before) {}

    ChannelLists run() {
        for (ChannelList& list : mAfter.lists) {
            if (!mScope.covers(list.id)) continue;
            keepUnreadable(list);
            if (mScope.forgetEdits) forgetEdits(list);
        }
        for (const ParsedMultiplex& multiplex : mScan.multiplexes) {
            if (mScope.covers(listIdOf(multiplex.delivery.medium))) add(multiplex);
        }
        // What an unreadable file or another medium carries is not known, so nothing can be said to
        // be absent.
        const bool everything = mScan.unreadable.empty() && mScope.medium == BRDCST_MEDIUM_UNKNOWN;
        if (everything && !mScope.keepGone) mIdentities.unhideAbsent(mPresent);
        for (ChannelList& list : mAfter.lists) {
            if (!mScope.covers(list.id)) continue;
            if (mScope.keepGone) keepGone(list);
            number(list);
            list.arrange();
        }
        return std::move(mAfter);
    }

  private:
    /** Empties a list but for the multiplexes whose files could not be read this time. */
    void keepUnreadable(ChannelList& list) {
        std::unordered_set<uint16_t> kept;
        const auto gone = [&](const TSL_REC_T& record) {
            if (mScan.unreadable.count(record.s_source) == 0) return true;
            kept.insert(record.ui2_tsl_rec_id);
            mPresent.insert(identityOf(record));
            return false;
        };
        auto& multiplexes = list.multiplexes;
        multiplexes.erase(std::remove_if(multiplexes.begin(), multiplexes.end(), gone),
                          multiplexes.end());
        auto& services = list.services;
        services.erase(std::remove_if(services.begin(), services.end(),
                                      [&](const Service& service) {
                                          return kept.count(service.record.ui2_tsl_rec_id) == 0;
                                      }),
                       services.end());
        for (const Service& service : services) mPresent.insert(identityOf(service.record));
        if (kept.empty()) list.networks.clear();
    }

    /** Of a list that holds what could not be read this time and nothing else. */
    void forgetEdits(ChannelList& list) {
        mIdentities.unhideAll(list.id);
        std::unordered_set<uint32_t> kept;
        for (const Service& service : list.services) kept.insert(service.record.ui4_channel_id);
        for (std::vector<uint32_t>& favourites : list.favourites) {
            favourites.erase(
                    std::remove_if(favourites.begin(), favourites.end(),
                                   [&](uint32_t channelId) { return kept.count(channelId) == 0; }),
                    favourites.end());
        }
    }

    /** Puts the services that the streams no longer carry back into the list: without streams. */
    void keepGone(ChannelList& list) {
        const ChannelList& before = *mBefore.list(list.id);
        for (const TSL_REC_T& multiplex : before.multiplexes) {
            if (mPresent.insert(identityOf(multiplex)).second) {
                list.multiplexes.push_back(multiplex);
            }
        }
        for (const NWL_REC_T& network : before.networks) {
            const bool listed = std::any_of(
                    list.networks.begin(), list.networks.end(),
                    [&](const NWL_REC_T& n) { return n.ui2_nwl_rec_id == network.ui2_nwl_rec_id; });
            if (!listed) list.networks.push_back(network);
        }
        for (Service service : before.services) {
            if (mPresent.count(identityOf(service.record)) != 0) continue;
            service.tracks = std::make_shared<const ServiceTracks>();
            SVL_REC_T& record = service.record;
            record.ui2_pcr_pid = record.ui2_video_pid = record.ui2_audio_pid = kNoPid;
            record.ui1_audio_count = record.ui1_subtitle_count = 0;
            list.services.push_back(service);
        }
    }

    void add(const ParsedMultiplex& parsed) {
        ChannelList& list = *mAfter.list(listIdOf(parsed.delivery.medium));
        TSL_REC_T record = {};
        record.ui2_tsl_id = list.id;
        record.ui2_original_network_id = parsed.originalNetworkId;
        record.ui2_transport_stream_id = parsed.transportStreamId;
        const IdentityKey key = identityOf(record);
        const bool first = mPresent.insert(key).second;
        const bool hidden = mIdentities.hidden(key);
        record.ui2_tsl_rec_id = mIdentities.recordId(key);
        if (record.ui2_tsl_rec_id == 0) {
            LOG_TV_ERROR("no room for the multiplex of {}: its list is full", parsed.source);
            return;
        }
        if (!first) {
            LOG_TV_WARN(
                    "{} is a multiplex that another stream carries too: only its further services "
                    "are added",
                    parsed.source);
        } else if (!hidden) {
            describe(parsed, record);
            list.multiplexes.push_back(record);
            addNetwork(list, parsed, record.ui2_satl_rec_id);
        }
        for (const ParsedService& service : parsed.services) {
            addService(list, parsed, service, record.ui2_tsl_rec_id, hidden);
        }
    }

    void describe(const ParsedMultiplex& parsed, TSL_REC_T& record) {
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
        if (delivery.medium == BRDCST_MEDIUM_DIG_SATELLITE) {
            record.ui2_satl_rec_id = satellite(delivery.orbitalPosition, delivery.east);
        }
    }

    /** The record id of the satellite at a position, which is added when it is new. */
    uint16_t satellite(uint16_t position, bool east) {
        const IdentityKey key{RecordKind::kSatellite, SVL_ID_SATELLITE, position,
                              static_cast<uint16_t>(east), 0};
        const uint16_t id = mIdentities.recordId(key);
        auto& satellites = mAfter.satellites;
        const auto place = std::lower_bound(
                satellites.begin(), satellites.end(), id,
                [](const SATL_REC_T& s, uint16_t wanted) { return s.ui2_satl_rec_id < wanted; });
        if (place != satellites.end() && place->ui2_satl_rec_id == id) return id;
        SATL_REC_T record = {};
        record.ui2_satl_id = SVL_ID_SATELLITE;
        record.ui2_satl_rec_id = id;
        record.ui2_orbital_position = position;
        record.ui1_west_east = east ? 1 : 0;
        record.ui1_enabled = 1;
        record.ui4_lnb_low_khz = kLnbLowKhz;
        record.ui4_lnb_high_khz = kLnbHighKhz;
        record.ui4_lnb_switch_khz = kLnbSwitchKhz;
        record.ui1_lnb_power = 1;
        copyText(record.s_name,
                 fmt::format("{}.{}° {}", position / 10, position % 10, east ? "East" : "West"));
        satellites.insert(place, record);
        return id;
    }

    void addNetwork(ChannelList& list, const ParsedMultiplex& parsed, uint16_t satelliteId) {
        if (parsed.networkStreams == 0) return;
        const uint16_t id = mIdentities.recordId(
                {RecordKind::kNetwork, list.id, parsed.networkId, satelliteId, 0});
        for (const NWL_REC_T& network : list.networks) {
            if (network.ui2_nwl_rec_id == id) return;
        }
        NWL_REC_T record = {};
        record.ui2_nwl_id = list.id;
        record.ui2_nwl_rec_id = id;
        record.ui2_network_id = parsed.networkId;
        record.ui2_satl_rec_id = satelliteId;
        record.ui1_brdcst_medium = mediumOf(list.id);
        record.ui1_version = parsed.networkVersion;
        record.ui2_transport_stream_count = static_cast<uint16_t>(parsed.networkStreams);
        copyText(record.s_name, parsed.networkName);
        list.networks.push_back(record);
    }

    void addService(ChannelList& list, const ParsedMultiplex& multiplex,
                    const ParsedService& parsed, uint16_t multiplexId, bool multiplexHidden) {
        Service service;
        SVL_REC_T& record = service.record;
        record.ui2_svl_id = list.id;
        record.ui2_original_network_id = multiplex.originalNetworkId;
        record.ui2_transport_stream_id = multiplex.transportStreamId;
        record.ui2_service_id = parsed.serviceId;
        const IdentityKey key = identityOf(record);
        if (!mPresent.insert(key).second) return;  // carried twice
        if (multiplexHidden || mIdentities.hidden(key)) return;
        record.ui2_svl_rec_id = mIdentities.recordId(key);
        if (record.ui2_svl_rec_id == 0) {
            LOG_TV_ERROR("no room for the service {} of {}: its list is full", parsed.name,
                         multiplex.source);
            return;
        }
        record.ui4_channel_id = serviceChannelId(list.id, record.ui2_svl_rec_id);
        record.ui2_tsl_id = list.id;
        record.ui2_tsl_rec_id = multiplexId;
        record.ui4_nw_mask = networkMask(parsed);
        record.ui1_brdcst_type = BRDCST_TYPE_DVB;
        record.ui1_brdcst_medium = mediumOf(list.id);
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
        service.lcn = parsed.lcn;
        service.tracks = std::make_shared<const ServiceTracks>(parsed.tracks);
        if (!mScope.forgetEdits) {
            keepOwn(mBefore.list(list.id)->byChannel(record.ui4_channel_id), service);
        }
        list.services.push_back(service);
    }

    /** Takes over from the service as it was what the application made of it, and its number where
     * the stream's did not change. */
    static void keepOwn(const Service* before, Service& service) {
        if (before == nullptr) return;
        SVL_REC_T& record = service.record;
        service.own = before->own;
        record.ui4_option_mask = before->record.ui4_option_mask;
        if ((before->own & kOwnName) != 0) {
            copyText(record.s_service_name, before->record.s_service_name);
        }
        if ((before->own & kOwnShown) != 0) {
            record.ui4_nw_mask =
                    (record.ui4_nw_mask & ~kShownBits) | (before->record.ui4_nw_mask & kShownBits);
        }
        if ((before->own & kOwnNumber) != 0 || before->lcn == service.lcn) {
            record.ui2_channel_number = before->record.ui2_channel_number;
        }
    }

    /**
     * Gives numbers to the services that have none: first to those whose logical channel number is
     * free, then to those whose number is taken the next free one after it, then to the others the
     * lowest free.
     */
    static void number(ChannelList& list) {
        std::vector<bool> used(UINT16_MAX + 1);
        used[0] = true;
        std::vector<Service*> open;
        for (Service& service : list.services) {
            uint16_t& mine = service.record.ui2_channel_number;
            if (mine != 0 && used[mine]) mine = 0;
            if (mine == 0) open.push_back(&service);
            used[mine] = true;
        }
        for (Service* service : open) {
            if (service->lcn == 0 || used[service->lcn]) continue;
            service->record.ui2_channel_number = service->lcn;
            used[service->lcn] = true;
        }
        size_t lowest = 1;
        for (const bool withLcn : {true, false}) {
            for (Service* service : open) {
                if (service->record.ui2_channel_number != 0) continue;
                if (withLcn != (service->lcn != 0)) continue;
                size_t next = withLcn ? service->lcn : lowest;
                while (next < used.size() && used[next]) ++next;
                if (!withLcn) lowest = next;
                if (next == used.size())
                    continue;  // all above are taken: it stays without a number
                service->record.ui2_channel_number = static_cast<uint16_t>(next);
                used[next] = true;
            }
        }
    }

    const ChannelLists& mBefore;
    const ScanResult& mScan;
    Identities& mIdentities;
    const MergeScope mScope;
    ChannelLists mAfter;
    std::set<IdentityKey> mPresent;  ///< what the streams carry, hidden or not
};

}  // namespace

uint32_t networkMask(const ParsedService& service) {
    uint32_t mask = SB_VNET_ACTIVE;
    if (service.visible) mask |= SB_VNET_VISIBLE | SB_VNET_EPG;
    if (contains(kTelevisionTypes, service.type)) mask |= SB_VNET_TV_SERVICE;
    if (contains(kRadioTypes, service.type)) mask |= SB_VNET_RADIO_SERVICE;
    if (service.scrambled) mask |= SB_VNET_SCRAMBLED;
    return mask;
}

ChannelLists mergeScan(const ChannelLists& before, const ScanResult& scan, Identities& identities,
                       const MergeScope& scope) {
    if (!scan.folderRead) return before;
    return Merge(before, scan, identities, scope).run();
}

}  // namespace television
