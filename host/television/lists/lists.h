/** The television's lists in memory: the records as clients receive them, in list order, and
 * look-ups by id. No locks here: Core guards them. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "middleware/records.h"
#include "television/stream/multiplex.h"

namespace television {

/** Terrestrial, cable and satellite. */
constexpr size_t kListCount = 3;

/** The input source (middleware/inputsource.h) that is the television itself. */
constexpr uint8_t kTelevisionSource = 0;

/** Bits for the fields of a service that the application changed and a new scan must not change
 * back. `kEditedShown` stands for kShownBits. */
enum EditedField : uint8_t { kEditedName = 1, kEditedNumber = 2, kEditedShown = 4 };

/** Bits of the network mask that the application may change. */
constexpr uint32_t kShownBits = SB_VNET_ACTIVE | SB_VNET_EPG | SB_VNET_VISIBLE;

/** A service: its record, and what is kept of it besides. */
struct Service {
    SVL_REC_T record = {};
    uint16_t lcn = 0;                             ///< logical channel number in the stream; 0: none
    uint8_t edited = 0;                           ///< EditedField bits
    std::shared_ptr<const ServiceTracks> tracks;  ///< null until the service's stream was read
};

/** A condition by which requests select channels: some bits of the network mask and of the option
 * mask must have given values. */
struct Match {
    uint32_t mask = 0;
    uint32_t value = 0;
    uint32_t attributeMask = 0;
    uint32_t attributeValue = 0;

    /** Matches channels that have all bits of `filter` in their network mask. */
    static Match filter(uint32_t filter) { return {filter, filter, 0, 0}; }

    bool operator()(const SVL_REC_T& record) const {
        return (record.ui4_nw_mask & mask) == value &&
               (record.ui4_option_mask & attributeMask) == attributeValue;
    }
};

/** One service list with the multiplexes, networks and favourites beside it. */
struct ChannelList {
    uint16_t id = 0;
    uint32_t version = 1;                ///< counts changes
    uint32_t pumpVersion = 0;            ///< a number that the application keeps with the list
    std::vector<Service> services;       ///< by channel number, then record id
    std::vector<TSL_REC_T> multiplexes;  ///< by record id
    std::vector<NWL_REC_T> networks;     ///< by record id
    std::array<std::vector<uint32_t>, FAV_LIST_COUNT> favourites;  ///< channel ids, in order

    /**
     * Restores the order after a change of the vectors above: sorts them, renews the look-ups and
     * the multiplexes' service counts, drops favourites whose channel is gone, writes the places
     * and bits of the favourites into the records, counts the version up.
     */
    void arrange();

    // The look-ups below know the state of the last arrange(); they return null, or empty, when
    // there is no such record.

    /** The index of a channel in `services`. */
    std::optional<size_t> placeOf(uint32_t channelId) const;
    Service* byChannel(uint32_t channelId);
    const Service* byChannel(uint32_t channelId) const;
    const Service* byRecord(uint16_t recordId) const;
    const Service* byNumber(uint32_t channelNumber) const;
    TSL_REC_T* multiplex(uint16_t recordId);
    const TSL_REC_T* multiplex(uint16_t recordId) const;

  private:
    void markFavourites();

    // Indices in the vectors above; 0 in the vectors below means that there is no such record.
    std::unordered_map<uint32_t, size_t> mPlaces;  ///< by channel id
    std::vector<uint32_t> mServicePlaces;          ///< by record id, index + 1
    std::vector<uint32_t> mMultiplexPlaces;        ///< by record id, index + 1
};

/** All lists, and what the main (0) and the sub window (1) show. */
struct ChannelLists {
    ChannelLists();

    std::array<ChannelList, kListCount> lists;
    std::vector<SATL_REC_T> satellites;  ///< by record id
    std::vector<BSL_REC_T> bissKeys;     ///< by record id
    uint32_t bissVersion = 1;
    std::array<uint32_t, 2> current = {};   ///< id of the selected channel by window, 0: none
    std::array<uint32_t, 2> previous = {};  ///< of the one before, which may be listed no more
    std::array<bool, 2> stopped = {};       ///< whether a client stopped what played there
    std::array<uint8_t, 2> source = {};     ///< id of the input source that is shown there; while
                                            ///< it is not the television, `current` is 0

    /** The list with an id; null when there is none. */
    ChannelList* list(uint32_t id);
    const ChannelList* list(uint32_t id) const;
    /** The list that has a channel; null when none has. */
    ChannelList* listOf(uint32_t channelId);
    const ChannelList* listOf(uint32_t channelId) const;
};

/** The id of the list of a medium; the terrestrial one for an unknown medium. */
uint16_t listIdOf(uint8_t medium);
/** The medium of the list with an id. */
uint8_t mediumOf(uint16_t listId);

}  // namespace television
