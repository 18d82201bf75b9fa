// The threads that serve calls, and the one epoll set in which idle connections wait for them.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <unordered_map>

#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

// A descriptor that waits in the epoll set. Armed for one event at a time: onReady() has the
// descriptor to itself until it arms it again or removes it.
class Pollable : public virtual RefBase {
  public:
    // Runs on a pool thread. After ThreadPool::arm() or remove() another thread may have the
    // object, or it may be gone.
    virtual void onReady() = 0;
    virtual int fd() const = 0;

  private:
    friend class ThreadPool;
    // What the last thread did with the object is seen by the next one. The kernel orders the two
    // already, but the language knows nothing of epoll.
    void handOver() { mHandedOver.store(true, std::memory_order_release); }
    void takeOver() { mHandedOver.load(std::memory_order_acquire); }

    std::atomic<bool> mHandedOver{false};
};

// One for the process, never destroyed: its threads live as long as the process.
class ThreadPool {
  public:
    static ThreadPool& instance();

    // See configureRpcThreadpool().
    void configure(size_t maxThreads, bool callerWillJoin);
    // Starts to serve: makes sure that there is a thread, unless the only one is going to join.
    void start();
    // Makes the caller one of the threads.
    [[noreturn]] void join();

    // Runs `task` on a pool thread. It waits for one to be started if there is none.
    void post(std::function<void()> task);

    // Adds a descriptor, armed; the set refers to the object until remove(). False if the kernel
    // refuses.
    bool add(const sp<Pollable>& pollable);
    void arm(Pollable* pollable);
    void remove(Pollable* pollable);

    // Whether start() or join() was called.
    bool started() const { return mStarted.load(std::memory_order_acquire); }
    // Whether a thread is waiting for events at the moment.
    bool othersFree() const { return mIdle.load(std::memory_order_relaxed) > 0; }

    size_t threads() const { return mThreads.load(std::memory_order_relaxed); }
    size_t idle() const { return mIdle.load(std::memory_order_relaxed); }
    size_t maxThreads() const { return mMaxThreads.load(std::memory_order_relaxed); }

  private:
    class TaskQueue;

    ThreadPool();
    // Starts a thread if there is room for one besides the one that is going to join.
    void spawn();
    [[noreturn]] void run();

    const int mEpoll;
    sp<TaskQueue> mTasks;
    std::atomic<bool> mStarted{false};
    std::atomic<size_t> mThreads{0};
    std::atomic<size_t> mIdle{0};
    std::atomic<size_t> mMaxThreads{1};
    std::atomic<bool> mJoinExpected{false};
    std::mutex mSpawnMutex;
    std::mutex mPollablesMutex;
    std::unordered_map<Pollable*, sp<Pollable>> mPollables;  // what is in the epoll set
};

}  // namespace android::hardware::transport
