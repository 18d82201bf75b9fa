// What a hundred thousand calls and a thousand clients leave behind in the service: nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "qortv/channel_list.h"
#include "qortv/subscription.h"
#include "support.h"

namespace integration {
namespace {

using qortv::ChannelList;

// Growth that a run may show: pages that the allocator and the threads' stacks keep. A leak of one
// small object a call or a client would be several times that.
constexpr size_t kSlackKib = 1024;

class IntegrationEndurance : public testing::Test {
  protected:
    void SetUp() override {
        mStation.keepNoFreedMemory();
        mStation.environment["QORTV_LOG"] = "info";
        mStation.makeStreams();
        mStation.startAndWait();
        mStation.enter();
    }

    Station mStation;
};

TEST_F(IntegrationEndurance, ManyCallsLeaveNothingBehind) {
    const auto proxy = qortv::connect<ChannelList::Interface>();
    ChannelList list(proxy);
    const auto channels = list.read();
    ASSERT_FALSE(channels.empty());
    const auto call = [&](int count) {
        for (int i = 0; i < count; ++i) {
            const auto& channel = channels[static_cast<size_t>(i) % channels.size()];
            if (i % 50 == 0) {
                ASSERT_EQ(list.read().size(), channels.size());
            } else if (i % 2 == 0) {
                int32_t code = -1;
                qortv::check(
                        proxy->a_hidl_a_qortvapi_channellist_get_channel_by_id(
                                channel.id, channel.list,
                                [&](const auto&, const auto&, int32_t result) { code = result; }),
                        "get_channel_by_id");
                ASSERT_EQ(code, 0);
            } else {
                ASSERT_EQ(qortv::valueOf(proxy->a_hidl_a_qortvapi_channellist_get_channel_number(
                                                 channel.id),
                                         "get_channel_number"),
                          channel.number);
            }
        }
    };
    call(10'000);
    const size_t descriptors = mStation.idleDescriptors();
    const size_t resident = mStation.residentKib();
    call(100'000);
    EXPECT_TRUE(eventually([&] { return mStation.descriptors() == descriptors; }))
            << mStation.descriptors() << " descriptors instead of " << descriptors;
    EXPECT_LE(mStation.residentKib(), resident + kSlackKib);
    RecordProperty("resident_before_kib", static_cast<int>(resident));
    RecordProperty("resident_after_kib", static_cast<int>(mStation.residentKib()));
}

TEST_F(IntegrationEndurance, ManyClientsLeaveNothingBehind) {
    const size_t idle = mStation.idleDescriptors();
    ASSERT_EQ(mStation.startClient({"lives", "100"})->wait(), 0);
    ASSERT_TRUE(eventually([&] { return mStation.descriptors() == idle; }))
            << mStation.descriptors() << " descriptors instead of " << idle;
    const size_t resident = mStation.residentKib();
    ASSERT_EQ(mStation.startClient({"lives", "1000"})->wait(), 0);
    EXPECT_TRUE(eventually([&] { return mStation.descriptors() == idle; }))
            << mStation.descriptors() << " descriptors instead of " << idle;
    EXPECT_LE(mStation.residentKib(), resident + kSlackKib);
    RecordProperty("resident_before_kib", static_cast<int>(resident));
    RecordProperty("resident_after_kib", static_cast<int>(mStation.residentKib()));
}

}  // namespace
}  // namespace integration
