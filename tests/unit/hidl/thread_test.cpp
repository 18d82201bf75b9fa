// Many callers and few threads.
#include <gtest/gtest.h>

#include <thread>

#include <hidl/HidlTransportSupport.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using ThreadTest = ServiceTest;

TEST_F(ThreadTest, TwentyClientsWithEightThreads) {
    startService(8);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    const int32_t before = service->openDescriptors().withDefault(-1);
    std::vector<Child> clients;
    for (int i = 0; i < 20; ++i) clients.push_back(Child({"--callers", "8", "20"}));
    for (Child& client : clients) {
        EXPECT_EQ(client.readLine(), "160");
        EXPECT_EQ(client.wait(), 0);
    }
    EXPECT_TRUE(eventually([&] { return service->openDescriptors().withDefault(-1) == before; }));
    // The limit, and the threads that the sanitizers add to a process.
    EXPECT_LE(service->threads().withDefault(99), 8 + 2);
    EXPECT_EQ(serviceLog(), decltype(serviceLog()){});
}

// A service with four threads serves four calls at the same time.
TEST_F(ThreadTest, PoolGrowsToItsBound) {
    startService(4);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->nothing().isOk());
    std::vector<std::thread> threads;
    std::atomic<int> met{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] { met += service->meet(4).withDefault(false); });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(met, 4);
}

TEST_F(ThreadTest, OneThreadServesEverybodyInTurn) {
    startService(1);
    std::vector<Child> clients;
    for (int i = 0; i < 4; ++i) clients.push_back(Child({"--callers", "3", "50"}));
    for (Child& client : clients) EXPECT_EQ(client.readLine(), "150");
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_LE(service->threads().withDefault(99), 1 + 2);
}

// More calling threads than a session may have connections: the others wait.
TEST_F(ThreadTest, CallersBeyondTheConnectionsQueue) {
    startService(4);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int i = 0; i < 100; ++i) {
        threads.emplace_back([&, i] {
            for (int j = 0; j < 10; ++j) {
                if (service->echoI64(i * 100 + j).withDefault(-1) == i * 100 + j) ++right;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 1000);
    EXPECT_EQ(serviceLog(), decltype(serviceLog()){});
}

TEST_F(ThreadTest, SchedulingWishesAreChecked) {
    sp<IEcho> local = new EchoService;
    EXPECT_TRUE(::android::hardware::setMinSchedulerPolicy(local, SCHED_OTHER, -20));
    EXPECT_TRUE(::android::hardware::setMinSchedulerPolicy(local, SCHED_FIFO, 99));
    EXPECT_FALSE(::android::hardware::setMinSchedulerPolicy(local, SCHED_FIFO, 0));
    EXPECT_FALSE(::android::hardware::setMinSchedulerPolicy(local, 77, 1));
    EXPECT_FALSE(::android::hardware::setMinSchedulerPolicy(nullptr, SCHED_OTHER, 0));
}

// A stopped peer delays its callers. The caller's log names it once for each call that waits.
TEST_F(ThreadTest, AStoppedPeerIsNamed) {
    startService(4);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    ASSERT_EQ(service->number().withDefault(0), 42);
    LogCapture log;
    ASSERT_NO_FATAL_FAILURE(mService.stop());
    std::thread caller([&] { EXPECT_EQ(service->number().withDefault(0), 42); });
    EXPECT_TRUE(eventually([&] { return !log.lines().empty(); }));
    mService.goOn();
    caller.join();
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"Process " + std::to_string(mService.pid()) +
                                       " has not answered a call for 5 s: waiting on"});
    EXPECT_EQ(service->number().withDefault(0), 42) << "as before";
}

}  // namespace
}  // namespace qortv::test
