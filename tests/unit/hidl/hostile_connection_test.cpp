// Connections that break the rules before the first message, or are too many: they are closed or
// refused with at most one log line, and other clients notice nothing.
#include <signal.h>
#include <sys/resource.h>

#include <memory>

#include <hidl/Limits.h>

#include "HostileTest.h"

namespace qortv::test {
namespace {

namespace limits = ::android::hardware::limits;

TEST_F(HostileTest, GarbageInsteadOfAGreeting) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    ASSERT_TRUE(RawClient::send(client.notices(), Bytes(64, 0xa5)));
    EXPECT_TRUE(RawClient::isClosed(client.notices()));
    client.closeAll();
    expectUnharmed(1);
}

TEST_F(HostileTest, HalfAGreeting) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    ASSERT_TRUE(RawClient::send(client.notices(), Bytes(16, 1)));
    client.closeAll();
    expectUnharmed(1);
}

TEST_F(HostileTest, NoGreetingAtAll) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    client.closeAll();
    expectUnharmed(0);
}

// Clients that connect and greet while the service is stopped are all accepted when it goes on.
TEST_F(HostileTest, ManyGreetingsAtOnce) {
    ASSERT_NO_FATAL_FAILURE(mService.stop());
    std::vector<std::unique_ptr<RawClient>> clients;
    for (size_t i = 0; i < 2 * limits::kUnknownConnections; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->connectOnly());
        ASSERT_TRUE(clients.back()->beginSession());
    }
    mService.goOn();
    for (const auto& client : clients) EXPECT_TRUE(client->isAccepted());
    clients.clear();
    expectUnharmed(0);
}

// Of too many connections without a greeting the oldest are closed.
TEST_F(HostileTest, ManyConnectionsWithoutGreeting) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (size_t i = 0; i < limits::kUnknownConnections + 20; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->connectOnly());
    }
    for (size_t i = 0; i < 20; ++i) EXPECT_TRUE(RawClient::isClosed(clients[i]->notices()));
    RawClient good(mFolder + "/run");
    EXPECT_TRUE(good.openSession());
    good.closeAll();
    clients.clear();
    expectUnharmed(0);
}

// A service without free descriptors serves its present clients, and accepts new ones when it has
// free descriptors again.
TEST_F(HostileTest, OutOfDescriptors) {
    rlimit old;
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, nullptr, &old), 0);
    const rlimit few{static_cast<rlim_t>(mDescriptors), old.rlim_max};
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &few, nullptr), 0);
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    EXPECT_TRUE(eventually([&] { return serviceLog().size() == 1; }));
    for (int i = 0; i < 100; ++i) EXPECT_EQ(mEcho->number().withDefault(0), 42);
    EXPECT_EQ(serviceLog().size(), 1u);
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &old, nullptr), 0);
    RawClient next(mFolder + "/run");
    EXPECT_TRUE(next.openSession());
    next.closeAll();
    client.closeAll();
    expectUnharmed(1);
}

// Beyond the limits of sessions, and of the connections of one, the next is refused and the others
// go on.
TEST_F(HostileTest, SessionsUpToTheLimit) {
    std::vector<std::unique_ptr<RawClient>> clients;
    // The test's own session is one of them.
    for (size_t i = 1; i < limits::kSessions; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->openSession()) << i;
    }
    RawClient next(mFolder + "/run");
    EXPECT_FALSE(next.openSession());
    expectLines(1);
    clients.pop_back();
    EXPECT_TRUE(eventually([&] { return next.openSession(); }));
    next.closeAll();
    clients.clear();
    EXPECT_EQ(mEcho->number().withDefault(0), 42);
}

TEST_F(HostileTest, ConnectionsUpToTheLimit) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.openSession());
    std::vector<int> connections;
    while (client.openCalls()) connections.push_back(client.releaseCalls());
    EXPECT_EQ(connections.size(), limits::kSessionConnections - 1);
    expectLines(1);
    for (int connection : connections) close(connection);
    client.closeAll();
    expectUnharmed(1);
}

}  // namespace
}  // namespace qortv::test
