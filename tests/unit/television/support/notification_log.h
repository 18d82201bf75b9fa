/** The log of the notifications that a test's handlers received, in order, on which the test can
 * wait.
 */
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "support/eventually.h"

/** One call of a handler. */
struct SeenNotification {
    std::string handler;  ///< the name under which the handler logs
    int32_t code = 0;
    std::vector<uint64_t> values;  ///< its other arguments, as far as the handler logs them

    bool operator==(const SeenNotification& other) const {
        return handler == other.handler && code == other.code && values == other.values;
    }
};

inline void PrintTo(const SeenNotification& seen, std::ostream* out) {
    *out << seen.handler << " code " << seen.code << " (";
    for (const uint64_t value : seen.values) *out << " " << value;
    *out << " )";
}

/** There is one for the process, since handlers are plain functions. Any thread. */
class NotificationLog {
  public:
    static NotificationLog& instance() {
        static NotificationLog log;
        return log;
    }

    /** Forgets all notifications, and the hook. */
    void clear() {
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.clear();
        mHook = nullptr;
    }
    /** Sets what is called with every notification, on the notifier's thread, without locks of the
     * log; null: nothing. */
    void hook(std::function<void(const SeenNotification&)> hook) {
        std::lock_guard<std::mutex> lock(mMutex);
        mHook = std::move(hook);
    }
    /** To be called by the handlers. */
    void add(const std::string& handler, int32_t code, std::vector<uint64_t> values) {
        const SeenNotification seen{handler, code, std::move(values)};
        std::function<void(const SeenNotification&)> hook;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            hook = mHook;
        }
        if (hook) hook(seen);
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.push_back(seen);
        mChanged.notify_all();
    }

    /** Waits until `count` notifications of a handler (of all handlers when the name is empty) have
     * come. Returns all that have; fails the test after kPatience. */
    std::vector<SeenNotification> wait(const std::string& handler, size_t count) {
        std::unique_lock<std::mutex> lock(mMutex);
        const bool good =
                mChanged.wait_for(lock, kPatience, [&] { return of(handler).size() >= count; });
        EXPECT_TRUE(good) << "waited for " << count << " notifications of " << handler;
        return of(handler);
    }
    /** The notifications of a handler so far. */
    std::vector<SeenNotification> seen(const std::string& handler) {
        std::lock_guard<std::mutex> lock(mMutex);
        return of(handler);
    }

  private:
    std::vector<SeenNotification> of(const std::string& handler) const {
        std::vector<SeenNotification> result;
        std::copy_if(
                mSeen.begin(), mSeen.end(), std::back_inserter(result),
                [&](const SeenNotification& n) { return handler.empty() || n.handler == handler; });
        return result;
    }

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<SeenNotification> mSeen;
    std::function<void(const SeenNotification&)> mHook;
};
