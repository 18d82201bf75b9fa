// Death notifications of services and of clients, after a SIGKILL that leaves no time to clean up.
#include <gtest/gtest.h>

#include <algorithm>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using ::android::hardware::hidl_death_recipient;
using ::android::hidl::base::V1_0::IBase;

class Recipient : public hidl_death_recipient {
  public:
    void serviceDied(uint64_t cookie, const wp<IBase>& who) override {
        std::lock_guard<std::mutex> lock(mMutex);
        mCookies.push_back(cookie);
        mWho = who;
        if (onDeath) onDeath();
    }
    std::vector<uint64_t> cookies() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mCookies;
    }
    wp<IBase> who() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mWho;
    }
    std::function<void()> onDeath;

  private:
    std::mutex mMutex;
    std::vector<uint64_t> mCookies;
    wp<IBase> mWho;
};

using DeathNoticeTest = ServiceTest;

TEST_F(DeathNoticeTest, ClientLearnsOfTheServicesDeathOnce) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Recipient> recipient = new Recipient;
    EXPECT_TRUE(service->linkToDeath(recipient, 77).withDefault(false));
    mService.kill();
    EXPECT_TRUE(eventually([&] { return !recipient->cookies().empty(); }));
    EXPECT_TRUE(service->number().isDeadObject());
    EXPECT_EQ(recipient->cookies(), std::vector<uint64_t>{77});
    EXPECT_EQ(recipient->who().promote(), service);
}

// Each link is notified, whichever object of the process it belongs to.
TEST_F(DeathNoticeTest, EveryLinkIsTold) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<INode> node = service->makeNode(1);
    sp<Recipient> recipient = new Recipient;
    EXPECT_TRUE(service->linkToDeath(recipient, 1).withDefault(false));
    EXPECT_TRUE(service->linkToDeath(recipient, 2).withDefault(false));
    EXPECT_TRUE(node->linkToDeath(recipient, 3).withDefault(false));
    mService.kill();
    EXPECT_TRUE(eventually([&] { return recipient->cookies().size() == 3; }));
    std::vector<uint64_t> cookies = recipient->cookies();
    std::sort(cookies.begin(), cookies.end());
    EXPECT_EQ(cookies, (std::vector<uint64_t>{1, 2, 3}));
}

TEST_F(DeathNoticeTest, UnlinkedRecipientIsNotTold) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Recipient> unlinked = new Recipient;
    sp<Recipient> linked = new Recipient;
    EXPECT_TRUE(service->linkToDeath(unlinked, 1).withDefault(false));
    EXPECT_TRUE(service->linkToDeath(linked, 2).withDefault(false));
    EXPECT_TRUE(service->unlinkToDeath(unlinked).withDefault(false));
    EXPECT_FALSE(service->unlinkToDeath(unlinked).withDefault(true));
    mService.kill();
    EXPECT_TRUE(eventually([&] { return !linked->cookies().empty(); }));
    EXPECT_TRUE(unlinked->cookies().empty());
    EXPECT_FALSE(service->unlinkToDeath(linked).withDefault(true));
}

TEST_F(DeathNoticeTest, LinkToADeadObjectFails) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->nothing().isOk());
    mService.kill();
    sp<Recipient> recipient = new Recipient;
    // No call has noticed the death yet.
    EXPECT_FALSE(service->linkToDeath(recipient, 1).withDefault(true));
    EXPECT_FALSE(service->linkToDeath(recipient, 1).withDefault(true));
    EXPECT_TRUE(recipient->cookies().empty());
}

// A recipient may use the runtime: this one looks the service up again and calls it.
TEST_F(DeathNoticeTest, RecipientMayUseTheRuntime) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Recipient> recipient = new Recipient;
    std::atomic<int> answer{0};
    recipient->onDeath = [&] {
        sp<IEcho> next = IEcho::getService();  // waits for the new process
        answer = next->number().withDefault(-1);
    };
    EXPECT_TRUE(service->linkToDeath(recipient, 1).withDefault(false));
    mService.kill();
    startService();
    EXPECT_TRUE(eventually([&] { return answer == 42; }));
}

std::vector<uint64_t> deathsSeenBy(const sp<IEcho>& service) {
    std::vector<uint64_t> deaths;
    service->deaths([&](const hidl_vec<uint64_t>& cookies) { deaths = cookies; });
    return deaths;
}

TEST_F(DeathNoticeTest, ServiceLearnsOfTheClientsDeath) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    Child first({"--watched", "111"});
    Child second({"--watched", "222"});
    ASSERT_EQ(first.readLine(), "ready");
    ASSERT_EQ(second.readLine(), "ready");
    first.kill();
    EXPECT_TRUE(eventually([&] { return !deathsSeenBy(service).empty(); }));
    EXPECT_EQ(deathsSeenBy(service), std::vector<uint64_t>{111});
    // A process that ends in order notifies as well.
    second.writeLine("");
    EXPECT_EQ(second.wait(), 0);
    EXPECT_TRUE(eventually([&] { return deathsSeenBy(service).size() == 2; }));
    EXPECT_EQ(deathsSeenBy(service), (std::vector<uint64_t>{111, 222}));
}

TEST_F(DeathNoticeTest, ServiceStopsWatchingAClient) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<IListener> listener = new Listener;
    EXPECT_TRUE(service->watchDeath(listener, 5).withDefault(false));
    EXPECT_TRUE(service->unwatchDeath(listener).withDefault(false));
    EXPECT_FALSE(service->unwatchDeath(listener).withDefault(true));
}

// Of clients that are killed during calls and callbacks nothing is left in the service.
TEST_F(DeathNoticeTest, KilledClientsLeaveNothing) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    const int32_t before = service->openDescriptors().withDefault(-1);
    for (int round = 0; round < 3; ++round) {
        Child listener({"--listener", "3"});
        Child watched({"--watched", "1"});
        Child caller({"--callers", "4", "100000"});
        ASSERT_EQ(listener.readLine(), "ready");
        ASSERT_EQ(watched.readLine(), "ready");
        listener.kill();
        caller.kill();
        watched.kill();
        // The service still has the listeners of the dead clients: calls of them fail.
        EXPECT_EQ(service->notifyAll(1).withDefault(-1), 0);
    }
    EXPECT_TRUE(eventually([&] { return service->openDescriptors().withDefault(-1) == before; }));
    EXPECT_EQ(service->number().withDefault(0), 42);
}

}  // namespace
}  // namespace qortv::test
