// A thread that runs tasks in order, for the oneway methods of a passthrough wrapper.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace android::hardware::details {

// Any thread may push. The thread is started with the first task. The destructor waits until the
// queued tasks have run, and must not be called on that thread.
class TaskRunner {
  public:
    TaskRunner() = default;
    ~TaskRunner();
    TaskRunner(const TaskRunner&) = delete;
    TaskRunner& operator=(const TaskRunner&) = delete;

    // Allows `limit` tasks to wait in the queue. Before this call no task is accepted.
    void start(size_t limit);
    // Queues a task. Returns false if `limit` tasks are waiting already.
    bool push(const std::function<void()>& task);

  private:
    void run();

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<std::function<void()>> mTasks;
    size_t mLimit = 0;
    bool mEnding = false;
    std::thread mThread;
};

}  // namespace android::hardware::details
