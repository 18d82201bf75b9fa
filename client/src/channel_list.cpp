#include "qortv/channel_list.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "middleware/records.h"
#include "record_image.h"
#include "result.h"
#include "stable_read.h"

namespace qortv {

namespace {

// Arguments of the bulk read that mean "no further condition".
constexpr uint32_t kNoFlags = 0;
constexpr uint32_t kNoChannel = 0;
constexpr int32_t kForward = 0;

}  // namespace

ChannelList::ChannelList(android::sp<Interface> proxy, uint32_t pageRecords)
    : mProxy(std::move(proxy)), mPageRecords(std::max(pageRecords, 1U)) {}

std::vector<Channel> ChannelList::read(const ChannelQuery& query) {
    std::vector<Channel> channels;
    for (const uint16_t list : query.lists) {
        const size_t before = channels.size();
        int attempts = 0;
        while (!readList(list, query, channels)) {
            channels.resize(before);
            if (++attempts == kReadAttempts) {
                throwKeepsChanging("channel list " + std::to_string(list));
            }
        }
    }
    return channels;
}

uint32_t ChannelList::count(uint16_t list, const ChannelQuery& query) {
    const int32_t result = valueOf(mProxy->a_hidl_a_qortvapi_channellist_get_number_by_mask(
                                           list, kNoFlags, query.mask, query.value, 0, 0),
                                   "get_number_by_mask");
    return static_cast<uint32_t>(checkResult(result, "count the channels of list ", list));
}

// Appends the channels of the list. Returns false when the list changed meanwhile. A page has room
// for one more channel than there are: if the list has grown, the page comes back full.
bool ChannelList::readList(uint16_t list, const ChannelQuery& query,
                           std::vector<Channel>& channels) {
    const uint32_t expected = count(list, query);
    if (expected == 0) return true;
    const uint32_t page = expected < mPageRecords ? expected + 1 : mPageRecords;
    mServices.reserve(page * sizeof(SVL_REC_T));
    mMultiplexes.reserve(page * sizeof(TSL_REC_T));

    std::unordered_set<uint32_t> seen;
    for (uint32_t start = 0;; start += page) {
        const int32_t result =
                valueOf(mProxy->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                                list, kNoFlags, kNoChannel, query.mask, query.value, 0, 0, kForward,
                                start, page, mServices.handle(), mMultiplexes.handle()),
                        "get_svl_tsl_recs_by_mask");
        checkResult(result, "read channel list ", list);
        const uint32_t filled = std::min(static_cast<uint32_t>(result), page);
        const auto services = mServices.records<SVL_REC_T>(filled);
        const auto multiplexes = mMultiplexes.records<TSL_REC_T>(filled);
        for (uint32_t i = 0; i < filled; ++i) {
            channels.push_back(toChannel(services[i], multiplexes[i]));
            seen.insert(channels.back().id);
        }
        if (filled < page) return seen.size() == expected && count(list, query) == expected;
    }
}

std::optional<Channel> ChannelList::current() {
    std::optional<Channel> channel;
    check(mProxy->a_hidl_a_qortvapi_channellist_get_current_channel(
                  [&](uint16_t, const auto& service, const auto& multiplex, int32_t result) {
                      if (result < 0) return;
                      channel = toChannel(recordOf<SVL_REC_T>(service),
                                          recordOf<TSL_REC_T>(multiplex));
                  }),
          "get_current_channel");
    return channel;
}

void ChannelList::select(uint32_t channelId) {
    checkResult(valueOf(mProxy->a_hidl_a_qortvapi_channellist_set_current_channel(channelId),
                        "set_current_channel"),
                "select channel id ", channelId);
}

}  // namespace qortv
