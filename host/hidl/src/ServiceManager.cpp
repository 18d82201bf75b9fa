// The registry of services as generated code sees it, and its notifications.
#include <hidl/ServiceManagement.h>

#include <memory>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include <transport/Log.h>
#include <transport/Registry.h>
#include <transport/ThreadPool.h>

namespace android::hardware {

using ::android::hidl::manager::V1_0::IServiceManager;
using ::android::hidl::manager::V1_0::IServiceNotification;
using transport::Registry;
using transport::RegistryWatch;
using transport::ThreadPool;

namespace {

// Notifies callbacks of registrations. Reads the folder whenever it changes. Any thread.
class Notifications : public transport::Pollable {
  public:
    Notifications() : mWatch(mRegistry.path()) {}

    // Returns false if the folder cannot be watched.
    bool start() { return mWatch.fd() >= 0 && ThreadPool::instance().add(this); }

    // Notifies `callback` of present services and of each new one, on pool threads.
    void add(const std::string& interface, const std::string& instance,
             const sp<IServiceNotification>& callback) {
        auto request = std::make_shared<Request>();
        request->interface = interface;
        request->instance = instance;
        request->callback = callback;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mRequests.push_back(request);
        }
        ThreadPool::instance().post([this, request] { notify(*request, true); });
    }

    void onReady() override {
        mWatch.clear();
        std::vector<std::shared_ptr<Request>> requests;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            requests = mRequests;
        }
        ThreadPool::instance().arm(this);
        for (const auto& request : requests) notify(*request, false);
    }
    int fd() const override { return mWatch.fd(); }

  private:
    struct Request {
        std::string interface;
        std::string instance;  // empty: any
        sp<IServiceNotification> callback;

        std::mutex mutex;      // guards what follows, and is held while the folder is read
        bool started = false;  // the folder has been read for this request
        std::set<std::pair<std::string, uint64_t>> notified;  // instance and token of its process
    };

    // Notifies the callback of registrations that it has not been notified of. onlyFirst: unless
    // the folder has been read for this request already.
    void notify(Request& request, bool onlyFirst) {
        std::vector<std::string> instances;
        bool preexisting;
        {
            std::lock_guard<std::mutex> lock(request.mutex);
            if (onlyFirst && request.started) return;
            // What the first reading finds was there before, whichever thread reads first.
            preexisting = !request.started;
            request.started = true;
            instances = newInstances(&request);
        }
        for (const std::string& instance : instances) {
            Return<void> result =
                    request.callback->onRegistration(request.interface, instance, preexisting);
            if (!result.isOk()) {
                HIDL_LOGW("Notification of %s failed: %s", instance.c_str(),
                          result.description().c_str());
            }
        }
    }

    // Returns the instances that are registered and not in request->notified, and puts them there.
    std::vector<std::string> newInstances(Request* request) const {
        std::vector<std::string> instances;
        for (const Registry::Entry& entry : mRegistry.list()) {
            const size_t slash = entry.name.find('/');
            if (slash == std::string::npos) continue;
            if (entry.name.compare(0, slash, request->interface) != 0) continue;
            const std::string instance = entry.name.substr(slash + 1);
            if (!request->instance.empty() && instance != request->instance) continue;
            if (!Registry::isAlive(entry)) continue;
            const bool isNew = request->notified.insert({instance, entry.process}).second;
            if (isNew) instances.push_back(instance);
        }
        return instances;
    }

    const Registry mRegistry;
    RegistryWatch mWatch;
    std::mutex mMutex;  // guards mRequests
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
        mNotifications->add(fqName, name, callback);
        return true;
    }

  private:
    std::mutex mMutex;  // held while mNotifications is made
    sp<Notifications> mNotifications;
};

}  // namespace

sp<IServiceManager> defaultServiceManager() {
    static const sp<IServiceManager>& manager = *new sp<IServiceManager>(new FolderServiceManager);
    return manager;
}

}  // namespace android::hardware
