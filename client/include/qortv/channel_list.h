/** Reads the channel list in bulk, through shared memory, and selects the current channel. */
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

#include "qortv/channel.h"
#include "qortv/connect.h"
#include "qortv/shared_region.h"

namespace qortv {

/** Which channels to read. */
struct ChannelQuery {
    /** Service lists, read in this order. */
    std::vector<uint16_t> lists = {kTerrestrialList, kCableList, kSatelliteList};
    /** A channel is read if the bits `mask` of its network mask (SB_VNET_...) equal `value`. */
    uint32_t mask = 0;
    uint32_t value = 0;
};

/**
 * The channel list of the television.
 *
 *     qortv::ChannelList list(qortv::connect<qortv::ChannelList::Interface>());
 *     for (const auto& channel : list.read()) std::cout << channel.name << '\n';
 *
 * Reuses two shared regions for every read. Not thread-safe: each thread needs its own object or a
 * lock.
 */
class ChannelList {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;

    /** Default number of records of a page, which makes about 2 MB of shared memory. */
    static constexpr uint32_t kPageRecords = 2048;

    /**
     * @param proxy the interface, from connect<ChannelList::Interface>()
     * @param pageRecords maximum number of records that one call reads, at least 1; a longer list
     *     takes several calls
     */
    explicit ChannelList(android::sp<Interface> proxy, uint32_t pageRecords = kPageRecords);

    /**
     * Returns all matching channels, list by list, each in the order of its list. A list that
     * changes while it is read is read again.
     *
     * @throws Error kLost, kTransport, kRefused (also for a list that keeps changing), kSystem
     */
    std::vector<Channel> read(const ChannelQuery& query = {});

    /**
     * Returns the current channel, or nothing when none was ever selected.
     *
     * @throws Error kLost, kTransport
     */
    std::optional<Channel> current();

    /**
     * Makes a channel the current one.
     *
     * @throws Error kRefused when there is no such channel, kLost, kTransport
     */
    void select(uint32_t channelId);

  private:
    bool readList(uint16_t list, const ChannelQuery& query, std::vector<Channel>& channels);
    uint32_t count(uint16_t list, const ChannelQuery& query);

    android::sp<Interface> mProxy;
    uint32_t mPageRecords;
    SharedRegion mServices;
    SharedRegion mMultiplexes;
};

}  // namespace qortv
