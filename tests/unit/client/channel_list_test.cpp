// Reading channel lists in bulk: the service's own implementation in this process, and a middleware
// whose lists grow, shrink and change while they are read.
#include "qortv/channel_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "QorTvApiChannelListImpl.h"
#include "middleware/channellist.h"
#include "television/switchboard/switchboard.h"

namespace qortv {
namespace {

using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiChannelListImpl;

class ClientChannelList : public testing::Test {
  protected:
    ClientChannelList() {
        mTv.on<&a_qortvapi_channellist_get_number_by_mask>(
                [this](uint32_t list, uint32_t, uint32_t mask, uint32_t value, uint32_t, uint32_t) {
                    return static_cast<int32_t>(matching(list, mask, value).size());
                });
        mTv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_mask>(
                [this](uint32_t list, uint32_t, uint32_t, uint32_t mask, uint32_t value, uint32_t,
                       uint32_t, int32_t, uint32_t start, uint32_t count, SVL_REC_T* services,
                       TSL_REC_T* multiplexes) {
                    mPages.push_back(count);
                    int32_t filled = 0;
                    const auto records = matching(list, mask, value);
                    for (uint32_t i = start; i < records.size() && i - start < count; ++i) {
                        services[i - start] = records[i];
                        multiplexes[i - start] = {};
                        multiplexes[i - start].ui4_frequency_khz = records[i].ui4_channel_id * 10;
                        ++filled;
                    }
                    if (mAfterRead) mAfterRead();
                    return filled;
                });
    }

    std::vector<SVL_REC_T> matching(uint32_t list, uint32_t mask, uint32_t value) {
        std::vector<SVL_REC_T> found;
        for (const auto& record : mLists[list]) {
            if ((record.ui4_nw_mask & mask) == value) found.push_back(record);
        }
        return found;
    }

    void add(uint16_t list, uint32_t id, uint32_t mask = SB_VNET_VISIBLE) {
        SVL_REC_T record = {};
        record.ui2_svl_id = list;
        record.ui4_channel_id = id;
        record.ui4_nw_mask = mask;
        std::snprintf(record.s_service_name, sizeof record.s_service_name, "channel %u", id);
        mLists[list].push_back(record);
    }

    static std::vector<uint32_t> ids(const std::vector<Channel>& channels) {
        std::vector<uint32_t> found;
        for (const auto& channel : channels) found.push_back(channel.id);
        return found;
    }

    android::sp<ChannelList::Interface> service() { return new QorTvApiChannelListImpl; }

    std::map<uint32_t, std::vector<SVL_REC_T>> mLists;
    std::vector<uint32_t> mPages;      // slots asked for, one entry for each bulk read
    std::function<void()> mAfterRead;  // what the middleware does once a page is filled
    switchboard::Switchboard mTv;
};

TEST_F(ClientChannelList, ReadsAllListsInOrder) {
    add(kSatelliteList, 30);
    add(kTerrestrialList, 11);
    add(kTerrestrialList, 10);
    add(kCableList, 20);
    const auto channels = ChannelList(service()).read();
    EXPECT_EQ(ids(channels), (std::vector<uint32_t>{11, 10, 20, 30}));
    EXPECT_EQ(channels[0].name, "channel 11");
    EXPECT_EQ(channels[0].frequencyKhz, 110U);
    EXPECT_EQ(channels[3].list, kSatelliteList);
}

TEST_F(ClientChannelList, ReadsOnlyWhatTheQueryNames) {
    add(kTerrestrialList, 1, SB_VNET_VISIBLE | SB_VNET_RADIO_SERVICE);
    add(kTerrestrialList, 2, SB_VNET_VISIBLE | SB_VNET_TV_SERVICE);
    add(kCableList, 3, SB_VNET_VISIBLE | SB_VNET_RADIO_SERVICE);
    ChannelList list(service());
    EXPECT_EQ(ids(list.read({{kTerrestrialList}, SB_VNET_RADIO_SERVICE, SB_VNET_RADIO_SERVICE})),
              (std::vector<uint32_t>{1}));
    EXPECT_EQ(ids(list.read({{kTerrestrialList}, SB_VNET_RADIO_SERVICE, 0})),
              (std::vector<uint32_t>{2}));
    EXPECT_EQ(ids(list.read({{kCableList}, 0, 0})), (std::vector<uint32_t>{3}));
}

TEST_F(ClientChannelList, NoChannelsTakeNoBulkRead) {
    EXPECT_TRUE(ChannelList(service()).read().empty());
    EXPECT_TRUE(mPages.empty());
}

TEST_F(ClientChannelList, AListThatFitsTakesOneCall) {
    for (uint32_t id = 1; id <= 500; ++id) add(kCableList, id);
    EXPECT_EQ(ChannelList(service()).read().size(), 500U);
    EXPECT_EQ(mPages, (std::vector<uint32_t>{501}));
}

TEST_F(ClientChannelList, ALongListIsReadInPages) {
    for (uint32_t id = 1; id <= 25; ++id) add(kCableList, id);
    const auto channels = ChannelList(service(), 10).read();
    ASSERT_EQ(channels.size(), 25U);
    EXPECT_TRUE(std::is_sorted(channels.begin(), channels.end(),
                               [](const auto& a, const auto& b) { return a.id < b.id; }));
    EXPECT_EQ(mPages, (std::vector<uint32_t>{10, 10, 10}));
}

TEST_F(ClientChannelList, AListThatEndsWithItsPageIsReadWhole) {
    for (uint32_t id = 1; id <= 20; ++id) add(kCableList, id);
    EXPECT_EQ(ChannelList(service(), 10).read().size(), 20U);
}

TEST_F(ClientChannelList, APageOfOneRecordStillReadsTheWholeList) {
    for (uint32_t id = 1; id <= 3; ++id) add(kCableList, id);
    EXPECT_EQ(ids(ChannelList(service(), 1).read()), (std::vector<uint32_t>{1, 2, 3}));
    EXPECT_EQ(ids(ChannelList(service(), 0).read()), (std::vector<uint32_t>{1, 2, 3}));
}

TEST_F(ClientChannelList, AListThatGrewIsReadAgainIntoALargerRegion) {
    for (uint32_t id = 1; id <= 3; ++id) add(kCableList, id);
    mAfterRead = [this] {
        mAfterRead = nullptr;
        for (uint32_t id = 4; id <= 9; ++id) add(kCableList, id);
    };
    EXPECT_EQ(ChannelList(service()).read().size(), 9U);
    EXPECT_EQ(mPages, (std::vector<uint32_t>{4, 10}));
}

TEST_F(ClientChannelList, AListThatShrankIsReadAgain) {
    for (uint32_t id = 1; id <= 25; ++id) add(kCableList, id);
    mAfterRead = [this] {
        mAfterRead = nullptr;
        mLists[kCableList].erase(mLists[kCableList].begin());
    };
    const auto channels = ChannelList(service(), 10).read();
    ASSERT_EQ(channels.size(), 24U);
    EXPECT_EQ(channels.front().id, 2U);
}

TEST_F(ClientChannelList, AChannelThatMovedBetweenPagesIsNotReadTwice) {
    for (uint32_t id = 1; id <= 25; ++id) add(kCableList, id);
    mAfterRead = [this] {
        mAfterRead = nullptr;
        std::rotate(mLists[kCableList].begin(), mLists[kCableList].begin() + 1,
                    mLists[kCableList].begin() + 15);  // the first one goes to the second page
    };
    auto found = ids(ChannelList(service(), 10).read());
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found.size(), 25U);
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
}

TEST_F(ClientChannelList, AListThatNeverHoldsStillIsAnError) {
    add(kCableList, 1);
    uint32_t next = 2;
    mAfterRead = [&] { add(kCableList, next++); };
    try {
        ChannelList(service()).read();
        FAIL() << "a list that changes for ever was read";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kRefused);
        EXPECT_STREQ(error.what(), "channel list 2 changed during each of 20 reads");
    }
}

TEST_F(ClientChannelList, ARefusedReadNamesTheListAndTheCode) {
    add(kSatelliteList, 1);
    mTv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_mask>([](auto...) { return -7; });
    try {
        ChannelList(service()).read();
        FAIL() << "a refused read went well";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kRefused);
        EXPECT_STREQ(error.what(), "the television refused to read channel list 3 (code -7)");
    }
    mTv.on<&a_qortvapi_channellist_get_number_by_mask>([](auto...) { return -3; });
    EXPECT_THROW(ChannelList(service()).read(), Error);
}

TEST_F(ClientChannelList, TellsTheCurrentChannel) {
    mTv.on<&a_qortvapi_channellist_get_current_channel>(
            [](uint16_t* list, SVL_REC_T* record, TSL_REC_T* multiplex) {
                *list = kCableList;
                record->ui4_channel_id = 42;
                multiplex->ui4_frequency_khz = 500000;
                return 0;
            });
    const auto channel = ChannelList(service()).current();
    ASSERT_TRUE(channel.has_value());
    EXPECT_EQ(channel->id, 42U);
    EXPECT_EQ(channel->frequencyKhz, 500000U);
    mTv.on<&a_qortvapi_channellist_get_current_channel>([](auto...) { return -1; });
    EXPECT_FALSE(ChannelList(service()).current().has_value());
}

TEST_F(ClientChannelList, SelectsByChannelId) {
    uint32_t selected = 0;
    mTv.on<&a_qortvapi_channellist_set_current_channel>([&](uint32_t id) {
        selected = id;
        return id == 99 ? -5 : 0;
    });
    ChannelList list(service());
    list.select(7);
    EXPECT_EQ(selected, 7U);
    try {
        list.select(99);
        FAIL() << "a channel that does not exist was selected";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kRefused);
        EXPECT_STREQ(error.what(),
                     "the television refused to select channel id 99: busy (code -5)");
    }
}

}  // namespace
}  // namespace qortv
