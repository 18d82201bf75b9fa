// Binders, the objects on which calls are made: BHwBinder is the base of local ones; a remote one
// belongs to the transport and stands for an object of another process.
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
        // transact: do not wait for a reply.
        FLAG_ONEWAY = 0x00000001,
    };

    // Receives the reply while the buffers that it borrows are alive.
    using TransactCallback = std::function<void(Parcel&)>;

    // Notified of the death of a remote object's process.
    class DeathRecipient : public virtual RefBase {
      public:
        // Runs on a pool thread, once for each link, with no lock of the runtime held.
        virtual void binderDied(const wp<IBinder>& who) = 0;
    };

    // Calls method `code` of the object with `data`. `reply` may be null for a oneway call. Returns
    // OK if the reply came, which may hold an exception of the implementation; DEAD_OBJECT if the
    // process is gone; another error if the call failed on its way. Any thread; blocks until the
    // reply is there.
    virtual status_t transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags = 0,
                              TransactCallback callback = nullptr) = 0;

    // Notifies `recipient` when the object's process dies. Returns OK, DEAD_OBJECT if it is dead
    // already (the recipient is not notified then), INVALID_OPERATION for a local object.
    virtual status_t linkToDeath(const sp<DeathRecipient>& recipient, void* cookie = nullptr,
                                 uint32_t flags = 0) = 0;
    // Undoes one linkToDeath; *outRecipient is the recipient that was linked. Returns OK,
    // NAME_NOT_FOUND if there is no such link, DEAD_OBJECT if the recipients were notified already.
    virtual status_t unlinkToDeath(const wp<DeathRecipient>& recipient, void* cookie = nullptr,
                                   uint32_t flags = 0,
                                   wp<DeathRecipient>* outRecipient = nullptr) = 0;

    // Returns this object if it is a local one, else null.
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

    // Serves a call. Passes the reply to `callback` once, while the buffers that it borrows are
    // alive. A method without results may leave the reply to the caller.
    virtual status_t onTransact(uint32_t code, const Parcel& data, Parcel* reply,
                                uint32_t flags = 0, TransactCallback callback = nullptr) = 0;
    void setRequestingSid(bool requesting);

    // Scheduling that the object asked for. Here it is kept, not applied.
    int mSchedPolicy;
    int mSchedPriority;

  private:
    bool mRequestingSid = false;
};

}  // namespace android::hardware
