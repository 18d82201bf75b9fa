#include "television/lists/lists.h"

#include <algorithm>

namespace television {
namespace {

/** Makes a table that has the index + 1 of a record at the record's id, and 0 elsewhere. */
template <typename Records, typename Id>
std::vector<uint32_t> placesById(const Records& records, Id id) {
    std::vector<uint32_t> places;
    for (size_t i = 0; i < records.size(); ++i) {
        const size_t recordId = id(records[i]);
        if (places.size() <= recordId) places.resize(recordId + 1);
        places[recordId] = static_cast<uint32_t>(i + 1);
    }
    return places;
}

constexpr uint32_t favouriteBit(size_t favouriteList) {
    return static_cast<uint32_t>(SB_VNET_FAVORITE1) << favouriteList;
}

}  // namespace

void ChannelList::markFavourites() {
    for (Service& service : services) {
        for (size_t i = 0; i < favourites.size(); ++i) {
            service.record.ui4_nw_mask &= ~favouriteBit(i);
            service.record.aui2_fav_index[i] = 0;
        }
    }
    for (size_t i = 0; i < favourites.size(); ++i) {
        std::vector<uint32_t>& list = favourites[i];
        list.erase(
                std::remove_if(list.begin(), list.end(),
                               [this](uint32_t channel) { return byChannel(channel) == nullptr; }),
                list.end());
        uint16_t place = 0;
        for (const uint32_t channelId : list) {
            SVL_REC_T& record = byChannel(channelId)->record;
            record.ui4_nw_mask |= favouriteBit(i);
            record.aui2_fav_index[i] = ++place;
        }
    }
}

void ChannelList::arrange() {
    const auto byNumberThenRecord = [](const Service& a, const Service& b) {
        return a.record.ui2_channel_number != b.record.ui2_channel_number
                       ? a.record.ui2_channel_number < b.record.ui2_channel_number
                       : a.record.ui2_svl_rec_id < b.record.ui2_svl_rec_id;
    };
    if (!std::is_sorted(services.begin(), services.end(), byNumberThenRecord)) {
        std::sort(services.begin(), services.end(), byNumberThenRecord);
    }
    std::sort(multiplexes.begin(), multiplexes.end(), [](const TSL_REC_T& a, const TSL_REC_T& b) {
        return a.ui2_tsl_rec_id < b.ui2_tsl_rec_id;
    });
    std::sort(networks.begin(), networks.end(), [](const NWL_REC_T& a, const NWL_REC_T& b) {
        return a.ui2_nwl_rec_id < b.ui2_nwl_rec_id;
    });
    mPlaces.clear();
    mPlaces.reserve(services.size());
    for (size_t i = 0; i < services.size(); ++i) {
        mPlaces.emplace(services[i].record.ui4_channel_id, i);
    }
    mServicePlaces = placesById(services, [](const Service& s) { return s.record.ui2_svl_rec_id; });
    mMultiplexPlaces = placesById(multiplexes, [](const TSL_REC_T& t) { return t.ui2_tsl_rec_id; });
    std::vector<uint16_t> counts(mMultiplexPlaces.size());
    for (const Service& service : services) {
        if (service.record.ui2_tsl_rec_id < counts.size()) ++counts[service.record.ui2_tsl_rec_id];
    }
    for (TSL_REC_T& multiplex : multiplexes) {
        multiplex.ui2_service_count = counts[multiplex.ui2_tsl_rec_id];
    }
    markFavourites();
    ++version;
}

std::optional<size_t> ChannelList::placeOf(uint32_t channelId) const {
    const auto found = mPlaces.find(channelId);
    if (found == mPlaces.end()) return std::nullopt;
    return found->second;
}

const Service* ChannelList::byChannel(uint32_t channelId) const {
    const auto place = placeOf(channelId);
    return place ? &services[*place] : nullptr;
}

Service* ChannelList::byChannel(uint32_t channelId) {
    const auto place = placeOf(channelId);
    return place ? &services[*place] : nullptr;
}

const Service* ChannelList::byRecord(uint16_t recordId) const {
    if (recordId >= mServicePlaces.size() || mServicePlaces[recordId] == 0) return nullptr;
    return &services[mServicePlaces[recordId] - 1];
}

const Service* ChannelList::byNumber(uint32_t channelNumber) const {
    const auto found = std::lower_bound(services.begin(), services.end(), channelNumber,
                                        [](const Service& service, uint32_t number) {
                                            return service.record.ui2_channel_number < number;
                                        });
    return found != services.end() && found->record.ui2_channel_number == channelNumber ? &*found
                                                                                        : nullptr;
}

const TSL_REC_T* ChannelList::multiplex(uint16_t recordId) const {
    if (recordId >= mMultiplexPlaces.size() || mMultiplexPlaces[recordId] == 0) return nullptr;
    return &multiplexes[mMultiplexPlaces[recordId] - 1];
}

TSL_REC_T* ChannelList::multiplex(uint16_t recordId) {
    return const_cast<TSL_REC_T*>(static_cast<const ChannelList*>(this)->multiplex(recordId));
}

ChannelLists::ChannelLists() {
    for (size_t i = 0; i < lists.size(); ++i) lists[i].id = static_cast<uint16_t>(i + 1);
}

const ChannelList* ChannelLists::list(uint32_t id) const {
    return id >= 1 && id <= lists.size() ? &lists[id - 1] : nullptr;
}

ChannelList* ChannelLists::list(uint32_t id) {
    return const_cast<ChannelList*>(static_cast<const ChannelLists*>(this)->list(id));
}

const ChannelList* ChannelLists::listOf(uint32_t channelId) const {
    for (const ChannelList& list : lists) {
        if (list.placeOf(channelId)) return &list;
    }
    return nullptr;
}

ChannelList* ChannelLists::listOf(uint32_t channelId) {
    return const_cast<ChannelList*>(static_cast<const ChannelLists*>(this)->listOf(channelId));
}

uint16_t listIdOf(uint8_t medium) {
    if (medium == BRDCST_MEDIUM_DIG_CABLE) return SVL_ID_CABLE;
    if (medium == BRDCST_MEDIUM_DIG_SATELLITE) return SVL_ID_SATELLITE;
    return SVL_ID_TERRESTRIAL;
}

uint8_t mediumOf(uint16_t listId) {
    if (listId == SVL_ID_CABLE) return BRDCST_MEDIUM_DIG_CABLE;
    if (listId == SVL_ID_SATELLITE) return BRDCST_MEDIUM_DIG_SATELLITE;
    return BRDCST_MEDIUM_DIG_TERRESTRIAL;
}

}  // namespace television
