// Conversions between types and parcels, and between objects and binders.
#pragma once

#include <cstdint>

#include <android/hidl/base/1.0/BnHwBase.h>
#include <android/hidl/base/1.0/IBase.h>
#include <hidl/HidlSupport.h>
#include <hidl/HidlTransportUtils.h>
#include <hidl/Static.h>
#include <hidl/Status.h>
#include <hwbinder/IBinder.h>
#include <hwbinder/IInterface.h>
#include <hwbinder/Parcel.h>
#include <hwbinder/ProcessState.h>

namespace android::hardware {

// Passes a death notification of a binder on to the recipient of its interface. Holds recipient and
// proxy weakly, because the proxy holds this object.
struct hidl_binder_death_recipient : IBinder::DeathRecipient {
    hidl_binder_death_recipient(const sp<hidl_death_recipient>& recipient, uint64_t cookie,
                                const sp<::android::hidl::base::V1_0::IBase>& base);
    void binderDied(const wp<IBinder>& who) override;
    wp<hidl_death_recipient> getRecipient() const { return mRecipient; }

  private:
    wp<hidl_death_recipient> mRecipient;
    uint64_t mCookie;
    wp<::android::hidl::base::V1_0::IBase> mBase;
};

status_t readFromParcel(Status* status, const Parcel& parcel);
status_t writeToParcel(const Status& status, Parcel* parcel);

// Read and write the parts of embedded objects that lie outside them. Reading checks that sizes
// agree with the buffers that arrived, and makes the objects point at these.
status_t readEmbeddedFromParcel(const hidl_string& string, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset);
status_t writeEmbeddedToParcel(const hidl_string& string, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset);
status_t readEmbeddedFromParcel(const hidl_handle& handle, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset);
status_t writeEmbeddedToParcel(const hidl_handle& handle, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset);
status_t readEmbeddedFromParcel(const hidl_memory& memory, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset);
status_t writeEmbeddedToParcel(const hidl_memory& memory, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset);

// Access to the fields of objects that arrived in a parcel. They hold what the sender put there,
// until the readers above overwrite the pointers and the ownership.
struct ReceivedTypes {
    // *size is the length in bytes that the buffer of `vec` must have. Returns false if it
    // overflows.
    template <typename T>
    static bool bufferSize(const hidl_vec<T>& vec, size_t* size) {
        return !__builtin_mul_overflow(static_cast<size_t>(vec.mSize), sizeof(T), size);
    }
    // Make the object point at what arrived, without ownership.
    template <typename T>
    static void point(const hidl_vec<T>& vec, const void* buffer) {
        auto& received = const_cast<hidl_vec<T>&>(vec);
        received.mBuffer = static_cast<T*>(const_cast<void*>(buffer));
        memset(&received.mOwnsBuffer, 0, sizeof(received.mOwnsBuffer));
    }
    // The same for a string: its bytes and the NUL. It cannot overflow.
    static size_t bufferSize(const hidl_string& string) { return size_t{string.mSize} + 1; }
    static void point(const hidl_string& string, const void* buffer);
    static void point(const hidl_handle& handle, const native_handle_t* native);
    static const hidl_handle& handleOf(const hidl_memory& memory) { return memory.mHandle; }
    static const hidl_string& nameOf(const hidl_memory& memory) { return memory.mName; }
};

template <typename T>
status_t readEmbeddedFromParcel(const hidl_vec<T>& vec, const Parcel& parcel, size_t parentHandle,
                                size_t parentOffset, size_t* handle) {
    size_t size;
    if (!ReceivedTypes::bufferSize(vec, &size)) return parcel.setMalformed("vector too long");
    const void* buffer;
    status_t status = parcel.readNullableEmbeddedBuffer(
            size, handle, parentHandle, parentOffset + hidl_vec<T>::kOffsetOfBuffer, &buffer);
    if (status == OK) ReceivedTypes::point(vec, buffer);
    return status;
}

template <typename T>
status_t writeEmbeddedToParcel(const hidl_vec<T>& vec, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset, size_t* handle) {
    return parcel->writeEmbeddedBuffer(vec.data(), sizeof(T) * vec.size(), handle, parentHandle,
                                       parentOffset + hidl_vec<T>::kOffsetOfBuffer);
}

// Returns the binder of an object: of a proxy the remote one; of a local object its stub, always
// the same as long as anybody refers to it. Null if no stub of the object's interface is known.
sp<IBinder> getOrCreateCachedBinder(::android::hidl::base::V1_0::IBase* iface);

// Returns the object of a binder: null for null, a new proxy for a remote binder, the object itself
// for a local one. Null, after a log line, if a local object is not an IType.
template <typename IType, typename ProxyType, typename StubType>
sp<IType> fromBinder(const sp<IBinder>& binder) {
    using ::android::hidl::base::V1_0::BnHwBase;
    if (binder == nullptr) return nullptr;
    if (binder->localBinder() == nullptr) return new ProxyType(binder);
    sp<::android::hidl::base::V1_0::IBase> base = static_cast<BnHwBase*>(binder.get())->getImpl();
    if (!details::canCastInterface(base.get(), IType::descriptor, true).withDefault(false)) {
        return nullptr;
    }
    return static_cast<IType*>(base.get());
}

}  // namespace android::hardware
