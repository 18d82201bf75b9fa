/** Reading the channel list in bulk, through shared memory, and choosing a channel. */
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
    /** A channel is read if its network mask (the SB_VNET_ bits), and-ed with `mask`, is `value`.
     */
    uint32_t mask = 0;
    uint32_t value = 0;
};

/**
 * The channel list of the television.
 *
 *     qortv::ChannelList list(qortv::connect<qortv::ChannelList::Interface>());
 *     for (const auto& channel : list.read()) std::cout << channel.name << '\n';
 *
 * Holds two shared regions and reuses them for every read, so
 * use one object from one thread at a time; objects are cheap, threads may have their own.
 */
class ChannelList {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;

    /** Records that a page holds unless told otherwise: about 2 MB of shared memory. */
    static constexpr uint32_t kPageRecords = 2048;

    /**
     * @param proxy the interface, from connect<ChannelList::Interface>()
     * @param pageRecords most records that one call fetches, at least 1; a longer list is read in
     *     several calls
     */
    explicit ChannelList(android::sp<Interface> proxy, uint32_t pageRecords = kPageRecords);

    /**
     * All channels that match, list by list, in the order of the lists. A list that changes while
     * it is read is read again.
     *
     * @throws Error kLost, kTransport, kRefused (also for a list that never stops changing),
     * kSystem
     */
    std::vector<Channel> read(const ChannelQuery& query = {});

    /**
     * The channel that is on, or nothing when none was ever chosen.
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
