// Binders: what calls are made on. BHwBinder is a local object's, proxies hold the transport's.
#pragma once

#include <cstdint>
#include <functional>

#include <utils/Errors.h>
#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

class BHwBinder;
class IInterface;
class Parcel;

class IBinder : public virtual RefBase {
  public:
    enum {
        // transact: do not wait for an answer.
        FLAG_ONEWAY = 0x00000001,
    };

    // Given the reply while what it borrows is still alive.
    using TransactCallback = std::function<void(Parcel&)>;

    // Told when the process of a remote object dies.
    class DeathRecipient : public virtual RefBase {
      public:
        // Runs on a pool thread, once for each link, with no lock of the runtime held.
        virtual void binderDied(const wp<IBinder>& who) = 0;
    };

    // Calls the object: method `code` with `data`. `reply` may be null for a oneway call. OK means
    // that the call got through, not that the implementation was content; DEAD_OBJECT that the
    // process is gone. Any thread; blocks until the answer is there.
    virtual status_t transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags = 0,
                              TransactCallback callback = nullptr) = 0;

    // Tells `recipient` when the object's process dies. DEAD_OBJECT if that happened already (it is
    // not told then), INVALID_OPERATION for a local object.
    virtual status_t linkToDeath(const sp<DeathRecipient>& recipient, void* cookie = nullptr,
                                 uint32_t flags = 0) = 0;
    // Undoes one linkToDeath; the recipient linked is stored in *outRecipient. NAME_NOT_FOUND if
    // there is none, DEAD_OBJECT if it was told already.
    virtual status_t unlinkToDeath(const wp<DeathRecipient>& recipient, void* cookie = nullptr,
                                   uint32_t flags = 0,
                                   wp<DeathRecipient>* outRecipient = nullptr) = 0;

    // This object as a local one; null for a proxy.
    virtual BHwBinder* localBinder() { return nullptr; }

  protected:
    ~IBinder() override = default;
};

// Base of all stubs.
class BHwBinder : public IBinder {
  public:
    BHwBinder();

    status_t transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags = 0,
                      TransactCallback callback = nullptr) override;
    status_t linkToDeath(const sp<DeathRecipient>& recipient, void* cookie = nullptr,
                         uint32_t flags = 0) override;
    status_t unlinkToDeath(const wp<DeathRecipient>& recipient, void* cookie = nullptr,
                           uint32_t flags = 0, wp<DeathRecipient>* outRecipient = nullptr) override;
    BHwBinder* localBinder() override { return this; }

  protected:
    ~BHwBinder() override = default;

    // Serves a call. Gives the reply to `callback`, once, as long as what the reply borrows is
    // alive; a method without results may leave that to the caller.
    virtual status_t onTransact(uint32_t code, const Parcel& data, Parcel* reply,
                                uint32_t flags = 0, TransactCallback callback = nullptr) = 0;
    void setRequestingSid(bool requesting);

    // Wished scheduling of the object's calls: kept here, not applied.
    int mSchedPolicy;
    int mSchedPriority;

  private:
    bool mRequestingSid = false;
};

}  // namespace android::hardware
