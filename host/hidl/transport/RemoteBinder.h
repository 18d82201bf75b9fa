// An object of another process.
#pragma once

#include <cstdint>
#include <mutex>
#include <vector>

#include <hwbinder/IBinder.h>
#include <transport/Session.h>

namespace android::hardware::transport {

// There is one for each remote object as long as this process refers to it. Its destructor tells
// the object's process that the last reference is gone. Any thread.
class RemoteBinder : public IBinder {
  public:
    RemoteBinder(const sp<Session>& session, uint64_t id);

    status_t transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags = 0,
                      TransactCallback callback = nullptr) override;
    status_t linkToDeath(const sp<DeathRecipient>& recipient, void* cookie = nullptr,
                         uint32_t flags = 0) override;
    status_t unlinkToDeath(const wp<DeathRecipient>& recipient, void* cookie = nullptr,
                           uint32_t flags = 0, wp<DeathRecipient>* outRecipient = nullptr) override;

    const sp<Session>& session() const { return mSession; }
    uint64_t id() const { return mId; }

    // Whether a death recipient is linked.
    bool isWatched();
    // Notifies the linked death recipients, once. Runs on a pool thread after the session ended.
    void notifyDeath();

  protected:
    ~RemoteBinder() override;

  private:
    struct Link {
        sp<DeathRecipient> recipient;
        void* cookie;
    };

    const sp<Session> mSession;
    const uint64_t mId;
    std::mutex mMutex;  // guards what follows
    std::vector<Link> mLinks;
    bool mDeathNotified = false;
};

}  // namespace android::hardware::transport
