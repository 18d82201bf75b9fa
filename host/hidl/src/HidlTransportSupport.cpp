#include <hidl/HidlTransportSupport.h>

#include <sched.h>
#include <unistd.h>

#include <algorithm>

#include <android/log.h>

#include <hidl/Static.h>
#include <hwbinder/ProcessState.h>
#include <transport/ThreadPool.h>

namespace android::hardware {

using ::android::hidl::base::V1_0::IBase;

void configureRpcThreadpool(size_t maxThreads, bool callerWillJoin) {
    transport::ThreadPool::instance().configure(maxThreads, callerWillJoin);
}

void joinRpcThreadpool() {
    transport::ThreadPool::instance().join();
}

static bool hasStub(const sp<IBase>& service) {
    return details::gBnMap->get(service.get(), nullptr).promote() != nullptr;
}

bool setMinSchedulerPolicy(const sp<IBase>& service, int policy, int priority) {
    if (service == nullptr || service->isRemote() || hasStub(service)) return false;
    const bool valid = policy == SCHED_OTHER ? priority >= -20 && priority <= 19
                                             : (policy == SCHED_FIFO || policy == SCHED_RR) &&
                                                       priority >= 1 && priority <= 99;
    if (!valid) return false;
    details::gServicePrioMap->set(service, {policy, priority});
    return true;
}

bool setRequestingSid(const sp<IBase>& service, bool requesting) {
    if (service == nullptr || service->isRemote() || hasStub(service)) return false;
    details::gServiceSidMap->set(service, requesting);
    return true;
}

bool interfacesEqual(const sp<IBase>& left, const sp<IBase>& right) {
    if (left == nullptr || right == nullptr || !left->isRemote() || !right->isRemote()) {
        return left == right;
    }
    return getOrCreateCachedBinder(left.get()) == getOrCreateCachedBinder(right.get());
}

sp<ProcessState> ProcessState::self() {
    static const sp<ProcessState>& self = *new sp<ProcessState>(new ProcessState);
    return self;
}

void ProcessState::startThreadPool() {
    transport::ThreadPool::instance().start();
}

namespace details {

int32_t getPidIfSharable() {
    return getpid();
}

std::string getDescriptor(IBase* interface) {
    std::string descriptor;
    Return<void> status =
            interface->interfaceDescriptor([&](const hidl_string& name) { descriptor = name; });
    return status.isOk() ? descriptor : std::string();
}

std::vector<std::string> getInterfaceChain(IBase* interface) {
    std::vector<std::string> chain;
    Return<void> status = interface->interfaceChain(
            [&](const hidl_vec<hidl_string>& names) { chain.assign(names.begin(), names.end()); });
    return status.isOk() ? chain : std::vector<std::string>();
}

Return<bool> canCastInterface(IBase* interface, const char* castTo, bool emitError) {
    if (interface == nullptr) return false;
    bool found = false;
    Return<void> status = interface->interfaceChain([&](const hidl_vec<hidl_string>& names) {
        found = std::any_of(names.begin(), names.end(),
                            [&](const hidl_string& name) { return name == castTo; });
    });
    if (!status.isOk()) return StatusOf<void, bool>(status);
    if (!found && emitError) {
        __android_log_print(ANDROID_LOG_ERROR, "hidl", "An object of %s is not a %s",
                            getDescriptor(interface).c_str(), castTo);
    }
    return found;
}

}  // namespace details
}  // namespace android::hardware
