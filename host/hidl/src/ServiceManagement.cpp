#include <hidl/ServiceManagement.h>

#include <unistd.h>

#include <algorithm>
#include <set>

#include <hidl/Services.h>
#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/Registry.h>
#include <transport/Socket.h>
#include <transport/ThreadPool.h>

namespace android::hardware {

using ::android::hidl::base::V1_0::IBase;
using ::android::hidl::manager::V1_0::IServiceManager;
using ::android::hidl::manager::V1_0::IServiceNotification;
using transport::Process;
using transport::Registry;
using transport::RegistryWatch;
using transport::ThreadPool;

namespace details {

// Time after which a wait for a service is told, once; and time between two looks without a change
// in the folder, for a service that refused for want of room.
constexpr int kImpatientMilliseconds = 1000;
constexpr int kPatientMilliseconds = 5000;

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

// The service's binder if it can be had at once. A name whose process is gone is told, unless it
// was told before (*stale is that process).
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
    bool told = false;
    for (;;) {
        // The name may have come between the last look and the watch.
        binder = findService(registry, name, &stale);
        if (binder != nullptr) return binder;
        if (!watch.wait(told ? kPatientMilliseconds : kImpatientMilliseconds) && !told) {
            HIDL_LOGI("Waiting for %s", name.c_str());
            told = true;
        }
    }
}

}  // namespace details

namespace {

// Tells those who asked of new registrations. Looks whenever the folder changes.
class Notifications : public transport::Pollable {
  public:
    Notifications() : mWatch(mRegistry.path()) {}

    bool start() { return mWatch.fd() >= 0 && ThreadPool::instance().add(this); }

    void ask(const std::string& interface, const std::string& instance,
             const sp<IServiceNotification>& callback) {
        auto request = std::make_shared<Request>();
        request->interface = interface;
        request->instance = instance;
        request->callback = callback;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mRequests.push_back(request);
        }
        ThreadPool::instance().post([this, request] { look(*request, true); });
    }

    void onReady() override {
        mWatch.clear();
        std::vector<std::shared_ptr<Request>> requests;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            requests = mRequests;
        }
        ThreadPool::instance().arm(this);
        for (const auto& request : requests) look(*request, false);
    }
    int fd() const override { return mWatch.fd(); }

  private:
    struct Request {
        std::string interface;
        std::string instance;  // empty: any
        sp<IServiceNotification> callback;
        std::mutex mutex;  // one look at a time, so that nothing is told twice
        bool looked = false;
        std::set<std::pair<std::string, uint64_t>> told;  // instance and process
    };

    void look(Request& request, bool first) {
        std::vector<std::string> news;
        bool preexisting;
        {
            std::lock_guard<std::mutex> lock(request.mutex);
            // What is there at the first look was there before, whoever comes to look first.
            preexisting = !request.looked;
            if (first && request.looked) return;
            request.looked = true;
            for (const Registry::Entry& entry : mRegistry.list()) {
                const size_t slash = entry.name.find('/');
                if (slash == std::string::npos) continue;
                if (entry.name.compare(0, slash, request.interface) != 0) continue;
                const std::string instance = entry.name.substr(slash + 1);
                if (!request.instance.empty() && instance != request.instance) continue;
                if (!Registry::isAlive(entry)) continue;
                if (request.told.insert({instance, entry.process}).second) news.push_back(instance);
            }
        }
        for (const std::string& instance : news) {
            Return<void> result =
                    request.callback->onRegistration(request.interface, instance, preexisting);
            if (!result.isOk()) {
                HIDL_LOGW("Notification of %s failed: %s", instance.c_str(),
                          result.description().c_str());
            }
        }
    }

    const Registry mRegistry;
    RegistryWatch mWatch;
    std::mutex mMutex;
    std::vector<std::shared_ptr<Request>> mRequests;
};

class FolderServiceManager : public IServiceManager {
  public:
    Return<void> list(list_cb _hidl_cb) override {
        std::vector<hidl_string> names;
        for (const Registry::Entry& entry : Registry().list()) {
            if (Registry::isAlive(entry)) names.emplace_back(entry.name);
        }
        _hidl_cb(names);
        return Void();
    }

    Return<bool> registerForNotifications(const hidl_string& fqName, const hidl_string& name,
                                          const sp<IServiceNotification>& callback) override {
        if (callback == nullptr || fqName.empty() || !Registry().prepare()) return false;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            if (mNotifications == nullptr) {
                sp<Notifications> notifications = new Notifications;
                if (!notifications->start()) return false;
                mNotifications = notifications;
            }
        }
        ThreadPool::instance().start();
        mNotifications->ask(fqName, name, callback);
        return true;
    }

  private:
    std::mutex mMutex;
    sp<Notifications> mNotifications;
};

}  // namespace

sp<IServiceManager> defaultServiceManager() {
    static const sp<IServiceManager>& manager = *new sp<IServiceManager>(new FolderServiceManager);
    return manager;
}

std::vector<ServiceInfo> listServices() {
    std::vector<ServiceInfo> services;
    std::map<uint64_t, ServiceInfo> asked;
    for (const Registry::Entry& entry : Registry().list()) {
        auto known = asked.find(entry.process);
        if (known == asked.end()) {
            ServiceInfo info;
            transport::Peer peer;
            transport::wire::HelloReply reply;
            int socket = Process::greet(entry.socket, transport::wire::Purpose::kInquiry, 0,
                                        limits::kInquiryMilliseconds, &peer, &reply);
            const bool answered = socket >= 0;
            // Of a process that ends just now a connection may still come about, and break off.
            if (socket == -ECONNRESET) {
                socket = transport::connectTo(entry.socket, limits::kInquiryMilliseconds);
            }
            info.alive = socket != -ECONNREFUSED && socket != -ENOENT;
            if (socket >= 0) close(socket);
            if (answered) {
                info.threads = static_cast<int>(reply.threads);
                // The thread that answers is not idle, but does nothing else.
                info.busyThreads = std::max(0, static_cast<int>(reply.threads) -
                                                       static_cast<int>(reply.idleThreads) - 1);
                info.maxThreads = static_cast<int>(reply.maxThreads);
                info.clients = static_cast<int>(reply.sessions);
            }
            known = asked.insert({entry.process, info}).first;
        }
        ServiceInfo info = known->second;
        const size_t slash = entry.name.find('/');
        info.interface = entry.name.substr(0, slash);
        info.instance = slash == std::string::npos ? "" : entry.name.substr(slash + 1);
        info.pid = entry.pid;
        services.push_back(std::move(info));
    }
    return services;
}

}  // namespace android::hardware
