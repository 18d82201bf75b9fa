// Objects that two processes hold of each other: identity, callbacks, nested calls, references.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include <hidl/HidlTransportSupport.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using ::android::hardware::configureRpcThreadpool;
using ::android::hardware::getOrCreateCachedBinder;
using ::android::hardware::interfacesEqual;

using ObjectTest = ServiceTest;

TEST_F(ObjectTest, OwnObjectComesBackAsItself) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<IListener> listener = new Listener;
    for (int i = 0; i < 200; ++i) {
        sp<IListener> back = service->echoListener(listener);
        ASSERT_EQ(back, listener) << i;
    }
    sp<IListener> none = service->echoListener(nullptr);
    EXPECT_EQ(none, nullptr);
}

TEST_F(ObjectTest, RemoteObjectKeepsItsIdentity) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<INode> node = service->makeNode(5);
    ASSERT_NE(node, nullptr);
    EXPECT_TRUE(node->isRemote());
    EXPECT_EQ(node->getId().withDefault(0), 5);
    sp<INode> again = service->echoNode(node);
    EXPECT_TRUE(interfacesEqual(node, again));
    EXPECT_EQ(getOrCreateCachedBinder(node.get()), getOrCreateCachedBinder(again.get()));
    EXPECT_TRUE(service->sameNode(node, again).withDefault(false));
    sp<INode> other = service->makeNode(5);
    EXPECT_FALSE(interfacesEqual(node, other));
    EXPECT_FALSE(service->sameNode(node, other).withDefault(true));
}

TEST_F(ObjectTest, SeveralObjectsInOneAnswer) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    int32_t first = 0;
    int32_t second = 0;
    service->two(8, [&](const sp<INode>& a, const sp<INode>& b) {
        first = a->getId().withDefault(0);
        second = b->getId().withDefault(0);
    });
    EXPECT_EQ(first, 8);
    EXPECT_EQ(second, 9);
}

TEST_F(ObjectTest, CastsFollowTheInterfaceChain) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<INode> node = service->makeNode(3);
    sp<ILoud> loud = ILoud::castFrom(node);
    ASSERT_NE(loud, nullptr);
    EXPECT_EQ(loud->getVolume().withDefault(0), 30);
    sp<IListener> wrong = IListener::castFrom(sp<::android::hidl::base::V1_0::IBase>(node));
    EXPECT_EQ(wrong, nullptr);
    sp<INode> local = new Node(4);
    sp<ILoud> localLoud = ILoud::castFrom(local);
    EXPECT_EQ(localLoud, local);
}

// The service drops an object when its client drops the last reference.
TEST_F(ObjectTest, ReleasedObjectsEnd) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::vector<sp<INode>> nodes;
    for (int32_t i = 0; i < 100; ++i) nodes.push_back(service->makeNode(i));
    EXPECT_EQ(service->liveNodes().withDefault(-1), 100);
    nodes.resize(10);
    EXPECT_TRUE(eventually([&] { return service->liveNodes().withDefault(-1) == 10; }));
    nodes.clear();
    EXPECT_TRUE(eventually([&] { return service->liveNodes().withDefault(-1) == 0; }));
}

// The client drops a callback object when the service drops the last reference.
TEST_F(ObjectTest, ReleasedCallbackEnds) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<IListener> listener = new Listener;
    wp<IListener> watched = listener;
    EXPECT_TRUE(service->addListener(listener).isOk());
    EXPECT_TRUE(service->removeListener(listener).withDefault(false));
    listener = nullptr;
    EXPECT_TRUE(eventually([&] { return watched.promote() == nullptr; }));
}

// Many threads send and release the same objects at the same time.
TEST_F(ObjectTest, ReleaseInFlightWhileSentAgain) {
    startService(8);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<IListener> shared = new Listener;
    sp<INode> node = service->makeNode(1);
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 300; ++i) {
                sp<IListener> back = service->echoListener(shared);
                sp<INode> echoed = service->echoNode(node);
                if (back == shared && interfacesEqual(echoed, node)) ++right;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 1200);
    EXPECT_EQ(node->getId().withDefault(0), 1);
    EXPECT_TRUE(serviceLog().empty());
}

TEST_F(ObjectTest, CallbackWhileTheCallIsServed) {
    startService(1);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> listener = new Listener;
    EXPECT_EQ(service->callBack(listener, 10).withDefault(0), 11);
    EXPECT_EQ(listener->events(), std::vector<int32_t>{10});
}

// A call, a callback, a call from the callback, and so on, with one thread at each end.
TEST_F(ObjectTest, CallsNestDeeply) {
    startService(1);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> listener = new Listener;
    listener->onNotify = [&](int32_t depth) {
        return depth == 0 ? 100 : service->callBack(listener, depth - 1).withDefault(-1) + 1;
    };
    EXPECT_EQ(service->callBack(listener, 30).withDefault(0), 130);
    EXPECT_EQ(service->number().withDefault(0), 42);
}

// A method that has replied may still call its caller, which does not wait any more.
TEST_F(ObjectTest, CallbackAfterTheAnswer) {
    startService(2);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> listener = new Listener;
    for (int32_t i = 0; i < 20; ++i) {
        std::string text;
        EXPECT_TRUE(service->answerThenCall(listener, i, [&](const hidl_string& t) { text = t; })
                            .isOk());
        EXPECT_EQ(text, "answered");
    }
    EXPECT_TRUE(eventually([&] { return listener->events().size() == 20; }));
}

TEST_F(ObjectTest, KeptListenersAreCalledLater) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> a = new Listener;
    sp<Listener> b = new Listener;
    EXPECT_TRUE(service->addListener(a).isOk());
    EXPECT_TRUE(service->addListener(b).isOk());
    EXPECT_EQ(service->notifyAll(1).withDefault(0), 2);
    // From threads that serve no call: the client's pool serves these, with its one thread.
    EXPECT_EQ(service->notifyTogether(2).withDefault(0), 2);
    EXPECT_EQ(a->events(), (std::vector<int32_t>{1, 2}));
    EXPECT_EQ(b->events(), (std::vector<int32_t>{1, 2}));
    EXPECT_TRUE(service->removeListener(a).withDefault(false));
    EXPECT_FALSE(service->removeListener(a).withDefault(true));
    EXPECT_EQ(service->notifyAll(3).withDefault(0), 1);
}

// More callbacks at once than the client has threads: they wait, and none fails.
TEST_F(ObjectTest, CallbacksQueueForTheClientsThread) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::vector<sp<Listener>> listeners;
    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    for (int i = 0; i < 12; ++i) {
        listeners.push_back(new Listener);
        listeners.back()->onNotify = [&](int32_t) {
            most = std::max<int>(most, ++inside);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            --inside;
            return 0;
        };
        EXPECT_TRUE(service->addListener(listeners.back()).isOk());
    }
    EXPECT_EQ(service->notifyTogether(1).withDefault(0), 12);
    EXPECT_EQ(most, 1);
}

TEST_F(ObjectTest, CallbacksRunSideBySideOnMoreThreads) {
    startService();
    configureRpcThreadpool(4, false);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::mutex mutex;
    std::condition_variable changed;
    int inside = 0;
    std::vector<sp<Listener>> listeners;
    for (int i = 0; i < 4; ++i) {
        listeners.push_back(new Listener);
        listeners.back()->onNotify = [&](int32_t) {
            std::unique_lock<std::mutex> lock(mutex);
            ++inside;
            changed.notify_all();
            return changed.wait_for(lock, kPatience, [&] { return inside == 4; });
        };
        EXPECT_TRUE(service->addListener(listeners.back()).isOk());
    }
    EXPECT_EQ(service->notifyTogether(1).withDefault(0), 4);
    EXPECT_EQ(inside, 4);
}

TEST_F(ObjectTest, OnewayCallbacksKeepTheirOrder) {
    startService();
    configureRpcThreadpool(4, false);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> listener = new Listener;
    EXPECT_TRUE(service->addListener(listener).isOk());
    std::vector<int32_t> sent;
    for (int32_t i = 0; i < 200; ++i) {
        EXPECT_TRUE(service->postAll(i).isOk());
        sent.push_back(i);
    }
    EXPECT_TRUE(eventually([&] { return listener->events().size() >= sent.size(); }));
    EXPECT_EQ(listener->events(), sent);
}

TEST_F(ObjectTest, TextsBothWaysInACallback) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<IListener> listener = new Listener;
    sp<IListener> back = service->echoListener(listener);
    std::string text;
    back->tell("well", [&](const hidl_string& t) { text = t; });
    EXPECT_EQ(text, "well?");
}

// An exception in a callback fails the service's call, and the client goes on.
TEST_F(ObjectTest, CallbackThatThrows) {
    LogCapture log;
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    sp<Listener> listener = new Listener;
    listener->onNotify = [](int32_t) -> int32_t { throw std::runtime_error("not today"); };
    EXPECT_EQ(service->callBack(listener, 1).withDefault(0), -1);
    EXPECT_EQ(service->number().withDefault(0), 42);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_NE(log.lines()[0].find("not today"), std::string::npos);
}

}  // namespace
}  // namespace qortv::test
