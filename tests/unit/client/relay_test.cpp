// Calls of the service reach the listener one at a time, its answers go back, and no call follows
// after close().
#include "relay.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include "qortv/listener.h"

namespace qortv {
namespace {

using android::sp;

class CallCounter : public Listener {
  public:
    void onNotification(const Notification&) override { ++mCount; }
    int count() const { return mCount; }

  private:
    int mCount = 0;
};

TEST(ClientRelay, AnswersWhatTheListenerAnswers) {
    struct : Listener {
        AndroidAnswer queryAndroid(uint32_t code, uint64_t, uint32_t attribute) override {
            return {static_cast<int32_t>(code + attribute), {7, 8}};
        }
        MimeTypeAnswer isMheg5MimeTypeSupported(const hidl_string& mimeType, uint64_t,
                                                int32_t) override {
            return {mimeType == "image/png", 0};
        }
    } listener;
    const sp<Relay> relay = new Relay(listener);
    int answers = 0;
    relay->queryAndroid(1, 2, 3, [&](int32_t attribute, const auto& data) {
        ++answers;
        EXPECT_EQ(attribute, 4);
        EXPECT_EQ(std::vector<uint8_t>(data), (std::vector<uint8_t>{7, 8}));
    });
    relay->isMheg5MimeTypeSupported("image/png", 2, 3, [&](bool supported, int32_t result) {
        ++answers;
        EXPECT_TRUE(supported);
        EXPECT_EQ(result, 0);
    });
    EXPECT_EQ(answers, 2);
}

TEST(ClientRelay, AnOverriddenMethodHearsItsOwnNotificationAndNothingElse) {
    struct : Listener {
        void notifyDateTime(int32_t code, uint64_t, uint64_t) override { heard.push_back(code); }
        std::vector<int32_t> heard;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    relay->notifyDateTime(5, 0, 0);
    relay->notifySleepTimer(6, 0, 0);
    EXPECT_EQ(listener.heard, (std::vector<int32_t>{5}));
}

TEST(ClientRelay, IsSilentOnceClosed) {
    CallCounter listener;
    const sp<Relay> relay = new Relay(listener);
    relay->notifyEws(1, 2);
    EXPECT_EQ(listener.count(), 1);
    relay->close();
    relay->notifyEws(1, 2);
    int answers = 0;
    relay->queryAndroid(1, 2, 3, [&](int32_t attribute, const auto&) {
        ++answers;
        EXPECT_EQ(attribute, -1);
    });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(listener.count(), 1);
}

TEST(ClientRelay, CloseWaitsForTheCallThatIsRunning) {
    struct : Listener {
        void onNotification(const Notification&) override {
            entered.set_value();
            leave.get_future().wait();
        }
        std::promise<void> entered;
        std::promise<void> leave;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    std::thread caller([&] { relay->notifyEws(1, 2); });
    listener.entered.get_future().wait();
    std::promise<void> closed;
    std::future<void> isClosed = closed.get_future();
    std::thread closer([&] {
        relay->close();
        closed.set_value();
    });
    // Long enough for a close() that does not wait.
    EXPECT_EQ(isClosed.wait_for(std::chrono::milliseconds{50}), std::future_status::timeout);
    listener.leave.set_value();
    closer.join();
    caller.join();
    EXPECT_EQ(isClosed.wait_for(std::chrono::milliseconds{0}), std::future_status::ready);
}

TEST(ClientRelay, CallsTheListenerOnceAtATime) {
    struct : Listener {
        void onNotification(const Notification&) override {
            if (inside.exchange(true)) overlapped = true;
            std::this_thread::yield();
            inside = false;
            ++count;
        }
        std::atomic<bool> inside{false};
        std::atomic<bool> overlapped{false};
        int count = 0;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i) {
        callers.emplace_back([&] {
            for (int j = 0; j < 500; ++j) relay->notifyEws(j, 0);
        });
    }
    for (auto& caller : callers) caller.join();
    EXPECT_FALSE(listener.overlapped);
    EXPECT_EQ(listener.count, 2000);
}

TEST(ClientRelay, StaysUsableAfterAListenerThatThrew) {
    struct : Listener {
        void onNotification(const Notification&) override {
            if (++count == 1) throw std::runtime_error("no");
        }
        int count = 0;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    EXPECT_THROW(relay->notifyEws(1, 2), std::runtime_error);
    relay->notifyEws(1, 2);
    EXPECT_EQ(listener.count, 2);
}

}  // namespace
}  // namespace qortv
