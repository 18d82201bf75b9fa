// Many applications at once, applications that die, and a service that dies.
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "qortv/channel_list.h"
#include "qortv/subscription.h"
#include "support.h"

namespace integration {
namespace {

using qortv::ChannelList;

class IntegrationClients : public testing::Test {
  protected:
    void SetUp() override {
        mStation.makeStreams();
        mStation.startAndWait();
        mStation.enter();
    }

    static size_t lines(Process& process) { return countOf("\n", process.out()); }

    Station mStation;
};

TEST_F(IntegrationClients, TwentyBusyClientsAllHearTheSame) {
    constexpr size_t kClients = 20;
    constexpr int kSelections = 40;
    ChannelList list(qortv::connect<ChannelList::Interface>());
    const auto channels = list.read();
    ASSERT_GE(channels.size(), 3U);
    const uint32_t last = channels[2].id;
    std::vector<std::unique_ptr<Process>> clients;
    for (size_t i = 0; i < kClients; ++i) {
        clients.push_back(mStation.startClient({"stress", "--threads", "8", "--count",
                                                "notifyBroadcast code=1 ", "--until",
                                                " arg1=" + std::to_string(last) + " "}));
    }
    for (const auto& client : clients) {
        ASSERT_TRUE(eventually([&] { return countOf("ready\n", client->out()) == 1; }))
                << client->err();
    }
    // One selection after the other is heard: the television would put together what piles up.
    struct : qortv::Listener {
        void notifyBroadcast(int32_t code, uint64_t, uint64_t, uint64_t, uint64_t,
                             uint64_t) override {
            if (code == 1) ++heard;  // the channel changed; the steps of tuning come before
        }
        std::atomic<int> heard{0};
    } pace;
    qortv::Subscription subscription(pace);
    // How long a fan-out takes is up to 160 busy threads; each client that hears it is progress.
    const auto heardByClients = [&] {
        size_t bytes = 0;
        for (const auto& client : clients) bytes += client->written();
        return bytes;
    };
    for (int i = 0; i < kSelections; ++i) {
        list.select(channels[i % 2].id);
        ASSERT_TRUE(eventuallyWhileMoving([&] { return pace.heard == i + 1; }, heardByClients))
                << "nobody hears of selection " << i;
    }
    list.select(last);
    for (const auto& client : clients) {
        EXPECT_EQ(client->wait(), 0);
        const std::string out = client->out();
        EXPECT_EQ(countOf("heard ", out), size_t{kSelections} + 1) << out;
        EXPECT_EQ(countOf("errors \n", out), 1U) << out;
        EXPECT_EQ(countOf("rounds 0\n", out), 0U) << out;
        EXPECT_EQ(client->err(), "");
    }
    for (size_t cookie = 0; cookie < kClients; ++cookie) {
        EXPECT_TRUE(mStation.waitForLog("serviceDied " + std::to_string(cookie) + "\n"));
    }
}

TEST_F(IntegrationClients, AClientKilledWhileItIsBeingCalledIsDroppedAndTheOtherHearsOn) {
    const auto other = mStation.startCtl({"watch"});
    ASSERT_TRUE(eventually([&] { return lines(*other) > 0; })) << other->err();
    const auto victim = mStation.startClient({"block"});
    ASSERT_TRUE(eventually([&] { return countOf("inside ", victim->out()) > 0; })) << victim->err();
    EXPECT_EQ(countOf("> serviceDied ", mStation.log()), 0U);

    victim->signal(SIGKILL);
    ASSERT_TRUE(mStation.waitForLog("> serviceDied "));
    const size_t heard = lines(*other);
    EXPECT_TRUE(eventually([&] { return lines(*other) > heard + 2; }));
    EXPECT_TRUE(other->running());
    EXPECT_TRUE(mStation.service().running());
    EXPECT_EQ(countOf("> serviceDied ", mStation.log()), 1U);
}

TEST_F(IntegrationClients, EachClientIsDroppedUnderItsOwnCookie) {
    std::vector<std::unique_ptr<Process>> clients;
    for (int i = 0; i < 3; ++i) {
        clients.push_back(mStation.startCtl({"watch"}));
        ASSERT_TRUE(eventually([&] { return lines(*clients.back()) > 0; }));
    }
    // Cookies count from 0 in the order of registration.
    for (const int i : {1, 0, 2}) {
        clients[i]->signal(SIGKILL);
        EXPECT_TRUE(mStation.waitForLog("serviceDied " + std::to_string(i) + "\n")) << i;
    }
    EXPECT_EQ(countOf("> serviceDied ", mStation.log()), 3U);
}

TEST_F(IntegrationClients, AListenerComesBackAfterTheServicesDeath) {
    struct : qortv::Listener {
        void onNotification(const qortv::Notification&) override { ++heard; }
        void onDisconnected() override { ++lost; }
        void onConnected() override { ++back; }
        std::atomic<int> heard{0};
        std::atomic<int> lost{0};
        std::atomic<int> back{0};
    } listener;
    qortv::Subscription subscription(listener);
    ASSERT_TRUE(eventually([&] { return listener.heard > 0; }));
    EXPECT_TRUE(subscription.connected());
    for (int death = 1; death <= 2; ++death) {
        mStation.service().signal(SIGKILL);
        ASSERT_TRUE(eventually([&] { return listener.lost == death; }));
        EXPECT_FALSE(subscription.connected());
        const int heard = listener.heard;
        mStation.startAndWait();
        ASSERT_TRUE(eventually([&] { return listener.back == death; }));
        EXPECT_TRUE(subscription.connected());
        EXPECT_TRUE(eventually([&] { return listener.heard > heard + 1; }));
    }
    EXPECT_EQ(listener.lost, 2);
    EXPECT_EQ(listener.back, 2);
}

TEST_F(IntegrationClients, ACallToADeadServiceFailsAndANewConnectionWorks) {
    const auto proxy = qortv::connect<ChannelList::Interface>();
    ChannelList list(proxy);
    const size_t channels = list.read().size();
    ASSERT_GT(channels, 0U);
    mStation.service().signal(SIGKILL);
    mStation.service().wait();
    try {
        list.read();
        FAIL() << "a dead service answered";
    } catch (const qortv::Error& error) {
        EXPECT_EQ(error.kind(), qortv::Error::Kind::kLost) << error.what();
    }
    mStation.startAndWait();
    EXPECT_EQ(ChannelList(qortv::connect<ChannelList::Interface>()).read().size(), channels);
}

TEST_F(IntegrationClients, ConnectWaitsForAServiceThatIsLate) {
    mStation.service().signal(SIGKILL);
    mStation.service().wait();
    EXPECT_THROW(qortv::connect<ChannelList::Interface>(std::chrono::milliseconds{20}),
                 qortv::Error);
    mStation.start();
    EXPECT_NE(qortv::connect<ChannelList::Interface>(kPatience), nullptr);
}

TEST_F(IntegrationClients, WatchSurvivesARestartAndSaysSo) {
    const auto watch = mStation.startCtl({"watch"});
    ASSERT_TRUE(eventually([&] { return lines(*watch) > 0; })) << watch->err();
    mStation.service().signal(SIGKILL);
    ASSERT_TRUE(eventually([&] { return countOf("the service is gone", watch->err()) == 1; }));
    const size_t heard = lines(*watch);
    mStation.startAndWait();
    ASSERT_TRUE(eventually([&] { return countOf("the service is back", watch->err()) == 1; }));
    EXPECT_TRUE(eventually([&] { return lines(*watch) > heard; }));
    watch->signal(SIGTERM);
    EXPECT_EQ(watch->wait(), 0);
    EXPECT_EQ(watch->err(),
              "qortvctl: listening\n"
              "qortvctl: the service is gone, waiting for it to come back\n"
              "qortvctl: the service is back, listening again\n");
}

TEST_F(IntegrationClients, ASubscriptionThatEndedIsSilent) {
    struct : qortv::Listener {
        void onNotification(const qortv::Notification&) override { ++heard; }
        std::atomic<int> heard{0};
    } gone, kept;
    qortv::Subscription keeping(kept);
    {
        qortv::Subscription ending(gone);
        ASSERT_TRUE(eventually([&] { return gone.heard > 0; }));
    }
    const int heard = gone.heard;
    const int others = kept.heard;
    ASSERT_TRUE(eventually([&] { return kept.heard > others + 2; }));
    EXPECT_EQ(gone.heard, heard);
}

}  // namespace
}  // namespace integration
