#include "television/lists/scan_merge.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "television/base/log.h"
#include "television/lists/channel_id.h"
#include "television/lists/channel_numbers.h"
#include "television/lists/scan_records.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** One merge: copies the lists as they were and changes the copy list by list. */
class Merge {
  public:
    Merge(const ChannelLists& before, const ScanResult& scan, Identities& identities,
          const MergeScope& scope)
        : mBefore(before), mScan(scan), mIdentities(identities), mScope(scope), mAfter(before) {}

    ChannelLists run() {
        for (ChannelList& list : mAfter.lists) {
            if (!mScope.covers(list.id)) continue;
            removeAllButUnreadable(list);
            if (mScope.forgetEdits) forgetEdits(list);
        }
        for (const ParsedMultiplex& multiplex : mScan.multiplexes) {
            if (mScope.covers(listIdOf(multiplex.delivery.medium))) addMultiplex(multiplex);
        }
        // What an unreadable file or another medium carries is not known: only without them is what
        // has not been found known to be absent.
        const bool everything = mScan.unreadable.empty() && mScope.medium == BRDCST_MEDIUM_UNKNOWN;
        if (everything && !mScope.keepGone) mIdentities.unhideAbsent(mPresent);
        for (ChannelList& list : mAfter.lists) {
            if (!mScope.covers(list.id)) continue;
            if (mScope.keepGone) restoreGone(list);
            assignChannelNumbers(list);
            list.arrange();
        }
        return std::move(mAfter);
    }

  private:
    /** Removes all from a list but the multiplexes whose files could not be read this time, and
     * their services. */
    void removeAllButUnreadable(ChannelList& list) {
        std::unordered_set<uint16_t> kept;
        const auto isReadable = [&](const TSL_REC_T& record) {
            if (mScan.unreadable.count(record.s_source) == 0) return true;
            kept.insert(record.ui2_tsl_rec_id);
            mPresent.insert(identityOf(record));
            return false;
        };
        auto& multiplexes = list.multiplexes;
        multiplexes.erase(std::remove_if(multiplexes.begin(), multiplexes.end(), isReadable),
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

    /** Forgets deletions and favourites, except favourites among the services that are in the list.
     * To be called while the list has no services but those of unreadable files. */
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

    /** Puts what the streams no longer carry back into the list; services without their elementary
     * streams. */
    void restoreGone(ChannelList& list) {
        const ChannelList& before = *mBefore.list(list.id);
        for (const TSL_REC_T& multiplex : before.multiplexes) {
            if (mPresent.insert(identityOf(multiplex)).second) {
                list.multiplexes.push_back(multiplex);
            }
        }
        for (const NWL_REC_T& network : before.networks) {
            if (!hasNetwork(list, network.ui2_nwl_rec_id)) list.networks.push_back(network);
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

    static bool hasNetwork(const ChannelList& list, uint16_t recordId) {
        return std::any_of(list.networks.begin(), list.networks.end(),
                           [&](const NWL_REC_T& n) { return n.ui2_nwl_rec_id == recordId; });
    }

    void addMultiplex(const ParsedMultiplex& parsed) {
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
            describeMultiplex(parsed, record);
            if (parsed.delivery.medium == BRDCST_MEDIUM_DIG_SATELLITE) {
                record.ui2_satl_rec_id =
                        satelliteAt(parsed.delivery.orbitalPosition, parsed.delivery.east);
            }
            list.multiplexes.push_back(record);
            addNetwork(list, parsed, record.ui2_satl_rec_id);
        }
        for (const ParsedService& service : parsed.services) {
            addService(list, parsed, service, record.ui2_tsl_rec_id, hidden);
        }
    }

    /** The record id of the satellite at a position; a new satellite is added. */
    uint16_t satelliteAt(uint16_t position, bool east) {
        const IdentityKey key{RecordKind::kSatellite, SVL_ID_SATELLITE, position,
                              static_cast<uint16_t>(east), 0};
        const uint16_t id = mIdentities.recordId(key);
        auto& satellites = mAfter.satellites;
        const auto place = std::lower_bound(
                satellites.begin(), satellites.end(), id,
                [](const SATL_REC_T& s, uint16_t wanted) { return s.ui2_satl_rec_id < wanted; });
        if (place == satellites.end() || place->ui2_satl_rec_id != id) {
            satellites.insert(place, satelliteRecord(id, position, east));
        }
        return id;
    }

    /** Adds the network of a multiplex, if it has one that is not in the list yet. */
    void addNetwork(ChannelList& list, const ParsedMultiplex& parsed, uint16_t satelliteId) {
        if (parsed.networkStreams == 0) return;
        const uint16_t id = mIdentities.recordId(
                {RecordKind::kNetwork, list.id, parsed.networkId, satelliteId, 0});
        if (!hasNetwork(list, id)) {
            list.networks.push_back(networkRecord(list.id, id, satelliteId, parsed));
        }
    }

    /** Adds a service, unless another stream carries it too or it is deleted. `multiplexId`: record
     * id of its multiplex; `multiplexHidden`: that is deleted. */
    void addService(ChannelList& list, const ParsedMultiplex& multiplex,
                    const ParsedService& parsed, uint16_t multiplexId, bool multiplexHidden) {
        Service service;
        SVL_REC_T& record = service.record;
        record.ui2_svl_id = list.id;
        record.ui2_original_network_id = multiplex.originalNetworkId;
        record.ui2_transport_stream_id = multiplex.transportStreamId;
        record.ui2_service_id = parsed.serviceId;
        const IdentityKey key = identityOf(record);
        if (!mPresent.insert(key).second) return;
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
        describeService(parsed, record);
        service.lcn = parsed.lcn;
        service.tracks = std::make_shared<const ServiceTracks>(parsed.tracks);
        if (!mScope.forgetEdits) {
            keepEdits(mBefore.list(list.id)->byChannel(record.ui4_channel_id), service);
        }
        list.services.push_back(service);
    }

    /** Takes over what the application changed of the service as it was before, and its number
     * where its logical channel number has not changed. `before` may be null. */
    static void keepEdits(const Service* before, Service& service) {
        if (before == nullptr) return;
        SVL_REC_T& record = service.record;
        service.edited = before->edited;
        record.ui4_option_mask = before->record.ui4_option_mask;
        if ((before->edited & kEditedName) != 0) {
            copyText(record.s_service_name, before->record.s_service_name);
        }
        if ((before->edited & kEditedShown) != 0) {
            record.ui4_nw_mask =
                    (record.ui4_nw_mask & ~kShownBits) | (before->record.ui4_nw_mask & kShownBits);
        }
        if ((before->edited & kEditedNumber) != 0 || before->lcn == service.lcn) {
            record.ui2_channel_number = before->record.ui2_channel_number;
        }
    }

    const ChannelLists& mBefore;
    const ScanResult& mScan;
    Identities& mIdentities;
    const MergeScope mScope;
    ChannelLists mAfter;
    std::set<IdentityKey> mPresent;  ///< services and multiplexes in the streams, hidden or not
};

}  // namespace

ChannelLists mergeScan(const ChannelLists& before, const ScanResult& scan, Identities& identities,
                       const MergeScope& scope) {
    if (!scan.folderRead) return before;
    return Merge(before, scan, identities, scope).run();
}

}  // namespace television
