#include <hidl/HidlPassthroughSupport.h>

#include <android/hidl/base/1.0/IBase.h>
#include <hidl/HidlTransportUtils.h>
#include <hidl/Static.h>
#include <hidl/TaskRunner.h>

namespace android::hardware::details {

using ::android::hidl::base::V1_0::IBase;

sp<IBase> wrapPassthroughInternal(sp<IBase> iface) {
    if (iface == nullptr || iface->isRemote()) return iface;
    if (dynamic_cast<HidlInstrumentor*>(iface.get()) != nullptr) return iface;  // it is a wrapper
    auto construct = getBsConstructorMap().get(getDescriptor(iface.get()), nullptr);
    return construct == nullptr ? nullptr : construct(static_cast<void*>(iface.get()));
}

TaskRunner::~TaskRunner() {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mEnding = true;
    }
    mChanged.notify_one();
    if (mThread.joinable()) mThread.join();
}

void TaskRunner::start(size_t limit) {
    std::lock_guard<std::mutex> lock(mMutex);
    mLimit = limit;
}

bool TaskRunner::push(const std::function<void()>& task) {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mTasks.size() >= mLimit) return false;
        mTasks.push_back(task);
        if (!mThread.joinable()) mThread = std::thread(&TaskRunner::run, this);
    }
    mChanged.notify_one();
    return true;
}

void TaskRunner::run() {
    std::unique_lock<std::mutex> lock(mMutex);
    for (;;) {
        mChanged.wait(lock, [this] { return mEnding || !mTasks.empty(); });
        if (mTasks.empty()) return;
        std::function<void()> task = std::move(mTasks.front());
        mTasks.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }
}

}  // namespace android::hardware::details
