// The threads that serve calls, and the epoll set in which idle connections wait for them.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <unordered_map>

#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

// A descriptor in the epoll set. It is armed for one event at a time, so one thread runs onReady()
// until that arms the descriptor again or removes it.
class Pollable : public virtual RefBase {
  public:
    // Handles an event, on a pool thread. After ThreadPool::arm() another thread may use the object
    // already; after remove() it may be gone.
    virtual void onReady() = 0;
    virtual int fd() const = 0;

  private:
    friend class ThreadPool;
    // Make the next thread see what the last one wrote to the object. epoll orders the two already,
    // but the memory model of C++ does not know that.
    void handOver() { mHandedOver.store(true, std::memory_order_release); }
    void takeOver() { mHandedOver.load(std::memory_order_acquire); }

    std::atomic<bool> mHandedOver{false};
};

// There is one object, which is never destroyed: its threads live as long as the process. Any
// thread.
class ThreadPool {
  public:
    static ThreadPool& instance();

    // See configureRpcThreadpool().
    void configure(size_t maxThreads, bool callerWillJoin);
    // Makes sure that the pool has a thread, unless the only one it may have is going to join.
    void start();
    // Makes the calling thread one of the pool's.
    [[noreturn]] void join();

    // Runs `task` on a pool thread, as soon as there is one.
    void post(std::function<void()> task);

    // Adds a descriptor to the epoll set, armed. The pool holds a reference to the object until
    // remove(). Returns false if the kernel refuses the descriptor.
    bool add(const sp<Pollable>& pollable);
    // Lets the descriptor's next event run onReady().
    void arm(Pollable* pollable);
    void remove(Pollable* pollable);

    // Whether start() or join() was called.
    bool started() const { return mStarted.load(std::memory_order_acquire); }
    // Whether a thread is waiting for events at the moment; asked by a thread that is not.
    bool othersFree() const { return mIdle.load(std::memory_order_relaxed) > 0; }

    size_t threads() const { return mThreads.load(std::memory_order_relaxed); }
    size_t idle() const { return mIdle.load(std::memory_order_relaxed); }
    size_t maxThreads() const { return mMaxThreads.load(std::memory_order_relaxed); }

  private:
    class TaskQueue;

    ThreadPool();
    // Starts a thread, unless the pool has all that it may have (one that is going to join counts).
    void spawn();
    [[noreturn]] void run();

    const int mEpoll;
    sp<TaskQueue> mTasks;
    std::atomic<bool> mStarted{false};
    std::atomic<size_t> mThreads{0};
    std::atomic<size_t> mIdle{0};
    std::atomic<size_t> mMaxThreads{1};
    std::atomic<bool> mJoinExpected{false};
    std::mutex mSpawnMutex;  // held while the number of threads is changed
    std::mutex mPollablesMutex;
    std::unordered_map<Pollable*, sp<Pollable>> mPollables;  // in the epoll set
};

}  // namespace android::hardware::transport
