/** The television's lists in memory: records as ready-made images in list order, and look-ups into
 * them. No locks here. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "middleware/records.h"
#include "multiplex.h"

namespace television {

constexpr size_t kListCount = 3;

/** The input source (middleware/inputsource.h) that is the television itself. */
constexpr uint8_t kTelevisionSource = 0;

/** What the application changed of a service, and a new scan must not change back. */
enum OwnField : uint8_t { kOwnName = 1, kOwnNumber = 2, kOwnShown = 4 };

/** Bits of the network mask that the application may change. */
constexpr uint32_t kShownBits = SB_VNET_ACTIVE | SB_VNET_EPG | SB_VNET_VISIBLE;

/** A service: its record and what else is kept of it. */
struct Service {
    SVL_REC_T record = {};
    uint16_t lcn = 0;                             ///< as the stream tells it; 0 when it does not
    uint8_t own = 0;                              ///< OwnField bits
    std::shared_ptr<const ServiceTracks> tracks;  ///< null until the service's stream was read
};

/** Which channels a request is about. */
struct Match {
    uint32_t mask = 0;
    uint32_t value = 0;
    uint32_t attributeMask = 0;
    uint32_t attributeValue = 0;

    /** Channels of which all bits of `filter` are set. */
    static Match filter(uint32_t filter) { return {filter, filter, 0, 0}; }

    bool operator()(const SVL_REC_T& record) const {
        return (record.ui4_nw_mask & mask) == value &&
               (record.ui4_option_mask & attributeMask) == attributeValue;
    }
};

/** One service list with the multiplexes, networks and favourites beside it. */
struct ChannelList {
    uint16_t id = 0;
    uint32_t version = 1;  ///< counts changes
    uint32_t pumpVersion = 0;
    std::vector<Service> services;                                 ///< by channel number
    std::vector<TSL_REC_T> multiplexes;                            ///< by record id
    std::vector<NWL_REC_T> networks;                               ///< by record id
    std::array<std::vector<uint32_t>, FAV_LIST_COUNT> favourites;  ///< channel ids

    /**
     * Puts everything in order after a change: sorts, drops favourites whose channel is gone,
     * writes the favourites' places and bits into the records, renews the look-ups, counts the
     * version.
     */
    void arrange();

    /** Place of a channel in `services`. */
    std::optional<size_t> placeOf(uint32_t channelId) const;
    Service* byChannel(uint32_t channelId);
    const Service* byChannel(uint32_t channelId) const;
    const Service* byRecord(uint16_t recordId) const;
    const Service* byNumber(uint32_t channelNumber) const;
    /** Null when there is none. */
    TSL_REC_T* multiplex(uint16_t recordId);
    const TSL_REC_T* multiplex(uint16_t recordId) const;

  private:
    void markFavourites();

    std::unordered_map<uint32_t, size_t> mPlaces;  ///< by channel id
    std::vector<uint32_t> mServicePlaces;          ///< by record id, place + 1
    std::vector<uint32_t> mMultiplexPlaces;        ///< by record id, place + 1
};

/** All lists, and which channels are selected. */
struct ChannelLists {
    ChannelLists();

    std::array<ChannelList, kListCount> lists;
    std::vector<SATL_REC_T> satellites;  ///< by record id
    std::vector<BSL_REC_T> bissKeys;     ///< by record id
    uint32_t bissVersion = 1;
    std::array<uint32_t, 2> current = {};   ///< channel ids in the main and the sub window, 0: none
    std::array<uint32_t, 2> previous = {};  ///< what was selected there before, listed or not
    std::array<bool, 2> stopped = {};       ///< nothing plays there because a client wanted it so
    std::array<uint8_t, 2> source = {};  ///< id of the input source that is shown there; `current`
                                         ///< is 0 while it is not the television itself

    /** The list with an id; null when there is none. */
    ChannelList* list(uint32_t id);
    const ChannelList* list(uint32_t id) const;
    /** The list that has a channel; null when none has. */
    ChannelList* listOf(uint32_t channelId);
    const ChannelList* listOf(uint32_t channelId) const;
};

/** The list for a medium; terrestrial where it is unknown. */
uint16_t listIdOf(uint8_t medium);
/** The medium of a list. */
uint8_t mediumOf(uint16_t listId);

}  // namespace television
