#include <transport/ThreadPool.h>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <deque>
#include <thread>

#include <pthread.h>

#include <hidl/HidlInternal.h>
#include <hidl/Limits.h>
#include <transport/Process.h>

namespace android::hardware::transport {

// Tasks for pool threads. The descriptor in the epoll set is an eventfd that counts them.
class ThreadPool::TaskQueue : public Pollable {
  public:
    TaskQueue() : mEvent(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)) {
        if (mEvent < 0) details::logAlwaysFatal("No descriptor for the thread pool's tasks.");
    }
    ~TaskQueue() override { close(mEvent); }

    void push(std::function<void()> task) {
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mQueue.push_back(std::move(task));
        }
        eventfd_write(mEvent, 1);
    }

    void onReady() override {
        std::function<void()> task;
        eventfd_t count;
        if (eventfd_read(mEvent, &count) == 0) {
            std::lock_guard<std::mutex> lock(mMutex);
            task = std::move(mQueue.front());
            mQueue.pop_front();
        }
        // Armed before the task runs, so that another thread can run the next one meanwhile.
        ThreadPool::instance().arm(this);
        if (task != nullptr) task();
    }
    int fd() const override { return mEvent; }

  private:
    const int mEvent;
    std::mutex mMutex;
    std::deque<std::function<void()>> mQueue;
};

ThreadPool& ThreadPool::instance() {
    static ThreadPool& pool = *new ThreadPool;
    return pool;
}

ThreadPool::ThreadPool() : mEpoll(epoll_create1(EPOLL_CLOEXEC)), mTasks(new TaskQueue) {
    if (mEpoll < 0 || !add(mTasks)) details::logAlwaysFatal("No epoll set for the thread pool.");
}

void ThreadPool::configure(size_t maxThreads, bool callerWillJoin) {
    mMaxThreads = std::clamp(maxThreads, size_t{1}, limits::kPoolThreads);
    mJoinExpected = callerWillJoin;
}

void ThreadPool::start() {
    mStarted.store(true, std::memory_order_release);
    if (mThreads.load(std::memory_order_relaxed) == 0) spawn();
}

void ThreadPool::join() {
    {
        std::lock_guard<std::mutex> lock(mSpawnMutex);
        mJoinExpected = false;
        ++mThreads;
    }
    mStarted.store(true, std::memory_order_release);
    run();
}

void ThreadPool::spawn() {
    std::lock_guard<std::mutex> lock(mSpawnMutex);
    if (mThreads + (mJoinExpected ? 1 : 0) >= mMaxThreads) return;
    ++mThreads;
    try {
        std::thread([this] {
            pthread_setname_np(pthread_self(), "hidl-pool");
            run();
        }).detach();
    } catch (const std::system_error&) {
        --mThreads;  // the system has no more threads: the present ones go on
    }
}

void ThreadPool::post(std::function<void()> task) {
    mTasks->push(std::move(task));
}

static epoll_event eventFor(Pollable* pollable) {
    epoll_event event{};
    event.events = EPOLLIN | EPOLLRDHUP | EPOLLONESHOT;
    event.data.ptr = pollable;
    return event;
}

bool ThreadPool::add(const sp<Pollable>& pollable) {
    Process::requireOwn();
    {
        std::lock_guard<std::mutex> lock(mPollablesMutex);
        mPollables[pollable.get()] = pollable;
    }
    epoll_event event = eventFor(pollable.get());
    pollable->handOver();
    if (epoll_ctl(mEpoll, EPOLL_CTL_ADD, pollable->fd(), &event) == 0) return true;
    std::lock_guard<std::mutex> lock(mPollablesMutex);
    mPollables.erase(pollable.get());
    return false;
}

void ThreadPool::arm(Pollable* pollable) {
    epoll_event event = eventFor(pollable);
    pollable->handOver();
    epoll_ctl(mEpoll, EPOLL_CTL_MOD, pollable->fd(), &event);
}

void ThreadPool::remove(Pollable* pollable) {
    epoll_ctl(mEpoll, EPOLL_CTL_DEL, pollable->fd(), nullptr);
    sp<Pollable> dropped;  // goes after the lock
    std::lock_guard<std::mutex> lock(mPollablesMutex);
    auto known = mPollables.find(pollable);
    dropped = std::move(known->second);
    mPollables.erase(known);
}

void ThreadPool::run() {
    for (;;) {
        epoll_event event;
        mIdle.fetch_add(1, std::memory_order_relaxed);
        const int count = epoll_wait(mEpoll, &event, 1, -1);
        const size_t othersIdle = mIdle.fetch_sub(1, std::memory_order_relaxed) - 1;
        if (count != 1) continue;  // a signal
        // This thread may be busy for long: another one has to wait for the next event.
        if (othersIdle == 0) spawn();
        auto* pollable = static_cast<Pollable*>(event.data.ptr);
        pollable->takeOver();
        pollable->onReady();
    }
}

}  // namespace android::hardware::transport
