/** What handlers were called with, in order, for a test that waits for it. */
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

struct SeenEvent {
    std::string handler;
    int32_t code = 0;
    std::vector<uint64_t> values;

    bool operator==(const SeenEvent& other) const {
        return handler == other.handler && code == other.code && values == other.values;
    }
};

inline void PrintTo(const SeenEvent& event, std::ostream* out) {
    *out << event.handler << " code " << event.code << " (";
    for (const uint64_t value : event.values) *out << " " << value;
    *out << " )";
}

/** One for the process, since handlers are plain functions. */
class EventLog {
  public:
    static EventLog& instance() {
        static EventLog log;
        return log;
    }

    void clear() {
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.clear();
        mHook = nullptr;
    }
    /** Called for every event, on the television's thread, without locks of the log. */
    void hook(std::function<void(const SeenEvent&)> hook) {
        std::lock_guard<std::mutex> lock(mMutex);
        mHook = std::move(hook);
    }
    void add(const std::string& handler, int32_t code, std::vector<uint64_t> values) {
        const SeenEvent event{handler, code, std::move(values)};
        std::function<void(const SeenEvent&)> hook;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            hook = mHook;
        }
        if (hook) hook(event);
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.push_back(event);
        mChanged.notify_all();
    }

    /** Waits until `count` events of a handler (all when empty) have come; answers them. */
    std::vector<SeenEvent> wait(const std::string& handler, size_t count) {
        std::unique_lock<std::mutex> lock(mMutex);
        const bool good = mChanged.wait_for(lock, std::chrono::seconds(30),
                                            [&] { return of(handler).size() >= count; });
        EXPECT_TRUE(good) << "waited for " << count << " events of " << handler;
        return of(handler);
    }
    std::vector<SeenEvent> seen(const std::string& handler) {
        std::lock_guard<std::mutex> lock(mMutex);
        return of(handler);
    }

  private:
    std::vector<SeenEvent> of(const std::string& handler) const {
        std::vector<SeenEvent> result;
        std::copy_if(mSeen.begin(), mSeen.end(), std::back_inserter(result),
                     [&](const SeenEvent& e) { return handler.empty() || e.handler == handler; });
        return result;
    }

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<SeenEvent> mSeen;
    std::function<void(const SeenEvent&)> mHook;
};
