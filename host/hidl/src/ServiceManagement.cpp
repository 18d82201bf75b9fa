// Registers services in the runtime folder and finds them there.
#include <hidl/ServiceManagement.h>

#include <cerrno>

#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/Registry.h>
#include <transport/ThreadPool.h>

namespace android::hardware::details {

using ::android::hidl::base::V1_0::IBase;
using transport::Process;
using transport::Registry;
using transport::RegistryWatch;
using transport::ThreadPool;

// Milliseconds after which a wait for a service is logged, once.
static constexpr int kLogWaitMilliseconds = 1000;
// Milliseconds after which it asks again although the folder has not changed: the service may have
// refused a further session before.
static constexpr int kRetryMilliseconds = 5000;

status_t registerAsServiceInternal(const sp<IBase>& service, const std::string& name) {
    if (service == nullptr || service->isRemote()) {
        HIDL_LOGE("Only a local object can be registered as %s", name.c_str());
        return BAD_VALUE;
    }
    if (name.empty() || name.find('/') != std::string::npos ||
        name.find('\0') != std::string::npos) {
        HIDL_LOGE("'%s' cannot be the name of a service", name.c_str());
        return BAD_VALUE;
    }
    sp<IBinder> binder = getOrCreateCachedBinder(service.get());
    if (binder == nullptr) return UNKNOWN_ERROR;
    for (const std::string& interface : getInterfaceChain(service.get())) {
        if (interface == IBase::descriptor) continue;
        status_t status = Process::instance().publish(interface + "/" + name, binder);
        if (status != OK) return status;
    }
    ThreadPool::instance().start();
    return OK;
}

// Returns the service's binder; null if it cannot be had now. Logs a registered name whose process
// does not reply, unless *stale is that process; then *stale becomes it.
static sp<IBinder> findService(const Registry& registry, const std::string& name, uint64_t* stale) {
    Registry::Entry entry;
    if (!registry.find(name, &entry)) return nullptr;
    Process& process = Process::instance();
    if (entry.process == process.token()) return process.published(name);

    int error = 0;
    sp<IBinder> binder;
    sp<transport::Session> session = process.sessionWith(entry, &error);
    if (session != nullptr && session->lookUp(name, &binder) == OK) return binder;
    if (*stale != entry.process && error != -EACCES) {
        *stale = entry.process;
        HIDL_LOGW("%s is registered by process %d, which %s", name.c_str(), entry.pid,
                  error == -EAGAIN || error == -EPROTO ? "refuses" : "is gone");
    }
    return nullptr;
}

sp<IBinder> getServiceBinder(const char* descriptor, const std::string& instance, bool retry) {
    const std::string name = std::string(descriptor) + "/" + instance;
    Registry registry;
    uint64_t stale = 0;
    sp<IBinder> binder = findService(registry, name, &stale);
    if (binder != nullptr || !retry) return binder;

    if (!registry.prepare()) return nullptr;
    RegistryWatch watch(registry.path());
    bool logged = false;
    for (;;) {
        // The name may have been registered between the last search and the watch.
        binder = findService(registry, name, &stale);
        if (binder != nullptr) return binder;
        if (!watch.wait(logged ? kRetryMilliseconds : kLogWaitMilliseconds) && !logged) {
            HIDL_LOGI("Waiting for %s", name.c_str());
            logged = true;
        }
    }
}

}  // namespace android::hardware::details
