#include <hwbinder/IBinder.h>
#include <hwbinder/IInterface.h>
#include <hwbinder/Parcel.h>

#include <sched.h>

namespace android::hardware {

BHwBinder::BHwBinder() : mSchedPolicy(SCHED_OTHER), mSchedPriority(0) {}

status_t BHwBinder::transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags,
                             TransactCallback callback) {
    return onTransact(code, data, reply, flags, std::move(callback));
}

status_t BHwBinder::linkToDeath(const sp<DeathRecipient>&, void*, uint32_t) {
    return INVALID_OPERATION;
}

status_t BHwBinder::unlinkToDeath(const wp<DeathRecipient>&, void*, uint32_t, wp<DeathRecipient>*) {
    return INVALID_OPERATION;
}

void BHwBinder::setRequestingSid(bool requesting) {
    mRequestingSid = requesting;
}

sp<IBinder> IInterface::asBinder(const IInterface* interface) {
    return interface == nullptr ? nullptr : sp<IBinder>(interface->onAsBinder());
}

sp<IBinder> IInterface::asBinder(const sp<IInterface>& interface) {
    return asBinder(interface.get());
}

}  // namespace android::hardware
