/** The registry of the clients' callbacks: registration, death, and both during notifications. */
#include <atomic>
#include <condition_variable>
#include <thread>

#include "hhandler/hh_iom.h"
#include "support/fan_out_check.h"

namespace {

constexpr char kTag[] = "QorTvApiImpl(service)";

class ServiceRegistry : public ServiceTest {
  protected:
    ServiceRegistry() : impl(new QorTvApiImpl()) { log.take(); }

    sp<RecordingClient> add() {
        const sp<RecordingClient> client = new RecordingClient();
        impl->setCallback(client);
        return client;
    }

    static std::vector<std::string> notified(const sp<RecordingClient>& client) {
        _iom_nfy_fct(nullptr, 7, nullptr, 0);
        return client->calls();
    }

    const sp<QorTvApiImpl> impl;
};

const std::string kNotification = "notifyIom(0, 7, <>)";

using ServiceRegistryDeathTest = ServiceRegistry;

TEST_F(ServiceRegistryDeathTest, countsCookiesFromZero) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a process without registrations
    EXPECT_EXIT(
            {
                const std::vector<uint64_t> first = add()->cookies;
                const std::vector<uint64_t> second = add()->cookies;
                const bool as_expected = first == std::vector<uint64_t>{0} &&
                                         second == std::vector<uint64_t>{1} &&
                                         QorTvApiImpl::getCallbackHandlers().size() == 2;
                _exit(as_expected ? 0 : 1);
            },
            testing::ExitedWithCode(0), "");
}

TEST_F(ServiceRegistry, linksEveryClientToOneRecipientUnderItsCookie) {
    const sp<RecordingClient> first = add();
    const sp<RecordingClient> second = add();
    ASSERT_EQ(first->cookies.size(), 1u);
    ASSERT_EQ(second->cookies.size(), 1u);
    EXPECT_EQ(second->cookies[0], first->cookies[0] + 1);
    EXPECT_NE(first->recipient, nullptr);
    EXPECT_EQ(first->recipient, second->recipient);
    const auto& clients = QorTvApiImpl::getCallbackHandlers();
    EXPECT_EQ(clients.at(first->cookies[0]), first);
    EXPECT_EQ(clients.at(second->cookies[0]), second);
    EXPECT_EQ(clients.max_load_factor(), 1.0f);
}

LogLine registrationLine(const sp<IQorTvApiCallback>& client, uint64_t cookie) {
    return debugLine(kTag, "setCallback",
                     "." + pointerText(client.get()) + " " + std::to_string(cookie));
}

TEST_F(ServiceRegistry, logsTheRegistration) {
    const sp<RecordingClient> client = add();
    EXPECT_EQ(log.take(), std::vector<LogLine>{registrationLine(client, client->cookies[0])});
    mTvApiDebug = 0;
    add();
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceRegistry, isWaitedForByARegistrationThatIsLogged) {
    const uint64_t cookie = add()->cookies[0] + 1;
    log.take();
    const sp<RecordingClient> client = new RecordingClient();
    const auto& clients = QorTvApiImpl::getCallbackHandlers();
    expectToWaitForTheRegistry(
            [&] { impl->setCallback(client); },
            [&] {
                EXPECT_EQ(nextLines(log), std::vector<LogLine>{registrationLine(client, cookie)});
                EXPECT_EQ(clients.size(), 1u);
                EXPECT_TRUE(client->cookies.empty());
            });
    EXPECT_EQ(clients.at(cookie), client);
    EXPECT_EQ(client->cookies, std::vector<uint64_t>{cookie});
}

/** Calls `onLink` while it is being registered. */
class LinkingClient : public RecordingClient {
  public:
    std::function<void(uint64_t)> onLink;

    Return<bool> linkToDeath(const sp<hidl_death_recipient>& death_recipient,
                             uint64_t cookie) override {
        onLink(cookie);
        return RecordingClient::linkToDeath(death_recipient, cookie);
    }
};

TEST_F(ServiceRegistry, linksWhatIsStoredAndCountsThen) {
    const sp<LinkingClient> client = new LinkingClient();
    const sp<RecordingClient> next = new RecordingClient();
    std::thread registration;
    client->onLink = [&](uint64_t cookie) {
        const auto& clients = QorTvApiImpl::getCallbackHandlers();
        EXPECT_EQ(clients.count(cookie), 1u);
        std::thread([] {
            const bool had = QorTvApiImpl::getCallbackMutex().try_lock();
            EXPECT_FALSE(had);
            if (had) QorTvApiImpl::getCallbackMutex().unlock();
        }).join();
        // The next registration logs the next cookie, still the same one, before it waits for the
        // mutex.
        log.take();
        registration = std::thread([&] { impl->setCallback(next); });
        EXPECT_EQ(nextLines(log), std::vector<LogLine>{registrationLine(next, cookie)});
    };
    impl->setCallback(client);
    registration.join();
    EXPECT_EQ(next->cookies, std::vector<uint64_t>{client->cookies[0] + 1});
}

TEST_F(ServiceRegistry, keepsAClientThatIsRegisteredTwiceTwice) {
    const sp<RecordingClient> client = add();
    impl->setCallback(client);
    ASSERT_EQ(client->cookies.size(), 2u);
    EXPECT_EQ(notified(client), (std::vector<std::string>{kNotification, kNotification}));

    client->recipient->serviceDied(client->cookies[0], nullptr);
    const auto& clients = QorTvApiImpl::getCallbackHandlers();
    EXPECT_EQ(clients.size(), 1u);
    EXPECT_EQ(clients.count(client->cookies[1]), 1u);
}

TEST_F(ServiceRegistry, keepsAClientThatCannotBeLinked) {
    for (const bool transport_fails : {false, true}) {
        const sp<RecordingClient> client = new RecordingClient();
        client->linked = false;
        if (transport_fails) client->linkStatus = Status::fromStatusT(::android::DEAD_OBJECT);
        mTvApiDebug = 0;
        log.take();
        EXPECT_TRUE(impl->setCallback(client).isOk());
        EXPECT_EQ(log.take(),
                  (std::vector<LogLine>{debugLine(
                          kTag, "setCallback",
                          "linkToDeath failed for " + std::to_string(client->cookies[0]))}));
        EXPECT_EQ(notified(client), std::vector<std::string>{kNotification});
        const sp<RecordingClient> next = add();
        EXPECT_EQ(next->cookies[0], client->cookies[0] + 1);
    }
}

TEST_F(ServiceRegistry, refusesNoObjectAtAll) {
    const uint64_t before = add()->cookies[0];
    mTvApiDebug = 0;
    log.take();
    EXPECT_TRUE(impl->setCallback(nullptr).isOk());
    EXPECT_EQ(log.take(), (std::vector<LogLine>{debugLine(kTag, "setCallback",
                                                          "a client sent no callback object")}));
    EXPECT_EQ(QorTvApiImpl::getCallbackHandlers().size(), 1u);
    EXPECT_EQ(add()->cookies[0], before + 1);
}

TEST_F(ServiceRegistry, dropsADeadClient) {
    const sp<RecordingClient> dead = add();
    const sp<RecordingClient> alive = add();
    const sp<hidl_death_recipient> recipient = dead->recipient;
    log.take();
    recipient->serviceDied(dead->cookies[0], nullptr);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{
                      debugLine(kTag, "serviceDied",
                                "serviceDied " + std::to_string(dead->cookies[0])),
                      debugLine(kTag, "serviceDied",
                                "cblist " + std::to_string(alive->cookies[0]) + "\n")}));
    EXPECT_EQ(notified(alive), std::vector<std::string>{kNotification});
    EXPECT_TRUE(dead->calls().empty());
    EXPECT_EQ(dead->getStrongCount(), 1) << "the registry's reference is gone";
}

TEST_F(ServiceRegistry, listsEveryClientThatIsLeft) {
    for (const bool debugging : {true, false}) {
        clearRegistry();
        const sp<RecordingClient> dead = add();
        for (int i = 0; i < 3; ++i) add();
        mTvApiDebug = debugging ? 1 : 0;
        log.take();
        dead->recipient->serviceDied(dead->cookies[0], nullptr);
        std::vector<LogLine> lines = {
                debugLine(kTag, "serviceDied", "serviceDied " + std::to_string(dead->cookies[0]))};
        const auto& clients = QorTvApiImpl::getCallbackHandlers();
        EXPECT_EQ(clients.size(), 3u);
        for (const auto& entry : clients) {
            if (!debugging) break;
            lines.push_back(
                    debugLine(kTag, "serviceDied", "cblist " + std::to_string(entry.first) + "\n"));
        }
        EXPECT_EQ(log.take(), lines) << debugging;
    }
}

TEST_F(ServiceRegistry, takesADeathOfNobodyCalmly) {
    const sp<RecordingClient> client = add();
    mTvApiDebug = 0;
    log.take();
    client->recipient->serviceDied(UINT64_MAX, nullptr);
    EXPECT_EQ(log.take(), (std::vector<LogLine>{debugLine(kTag, "serviceDied",
                                                          "serviceDied 18446744073709551615")}));
    EXPECT_EQ(QorTvApiImpl::getCallbackHandlers().size(), 1u);
}

TEST_F(ServiceRegistry, aDeathWaitsForARunningNotification) {
    const sp<RecordingClient> client = add();
    std::mutex mutex;
    std::condition_variable changed;
    bool called = false;
    bool release = false;
    client->onCall = [&] {
        std::unique_lock<std::mutex> lock(mutex);
        called = true;
        changed.notify_all();
        changed.wait(lock, [&] { return release; });
    };
    std::thread middleware([&] { _iom_nfy_fct(nullptr, 7, nullptr, 0); });
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [&] { return called; });
    }
    log.take();
    std::atomic<bool> died{false};
    std::thread transport([&] {
        client->recipient->serviceDied(client->cookies[0], nullptr);
        died = true;
    });
    nextLines(log);  // serviceDied has begun
    EXPECT_FALSE(died);
    EXPECT_EQ(QorTvApiImpl::getCallbackHandlers().size(), 1u);
    {
        std::lock_guard<std::mutex> lock(mutex);
        release = true;
        changed.notify_all();
    }
    transport.join();
    middleware.join();
    EXPECT_TRUE(QorTvApiImpl::getCallbackHandlers().empty());
}

TEST_F(ServiceRegistry, standsManyThreads) {
    constexpr int kRounds = 100;
    const sp<RecordingClient> witness = add();
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const sp<RecordingClient> client = add();
                client->recipient->serviceDied(client->cookies[0], nullptr);
            }
        });
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) _iom_nfy_fct(nullptr, 7, nullptr, 0);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(QorTvApiImpl::getCallbackHandlers().size(), 1u);
    EXPECT_EQ(witness->calls().size(), 2u * kRounds);
}

}  // namespace
