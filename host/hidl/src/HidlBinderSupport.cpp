#include <hidl/HidlBinderSupport.h>

#include <mutex>

#include <android/log.h>

#include <hidl/HidlTransportUtils.h>

namespace android::hardware {

using ::android::hidl::base::V1_0::IBase;

hidl_binder_death_recipient::hidl_binder_death_recipient(const sp<hidl_death_recipient>& recipient,
                                                         uint64_t cookie, const sp<IBase>& base)
    : mRecipient(recipient), mCookie(cookie), mBase(base) {}

void hidl_binder_death_recipient::binderDied(const wp<IBinder>&) {
    sp<hidl_death_recipient> recipient = mRecipient.promote();
    if (recipient != nullptr) recipient->serviceDied(mCookie, mBase);
}

// A Status is sent as its exception and, unless that is EX_NONE, its message.

status_t readFromParcel(Status* status, const Parcel& parcel) {
    int32_t exception;
    status_t result = parcel.readInt32(&exception);
    if (result != OK) return result;
    if (exception == Status::EX_NONE) {
        *status = Status();
        return OK;
    }
    const char* message = parcel.readCString();
    if (message == nullptr) return BAD_VALUE;
    status->setException(exception, message);
    return OK;
}

status_t writeToParcel(const Status& status, Parcel* parcel) {
    // The transport sends the code of a failed transaction.
    if (status.transactionError() != OK) return status.transactionError();
    status_t result = parcel->writeInt32(status.exceptionCode());
    if (result != OK || status.isOk()) return result;
    return parcel->writeCString(status.exceptionMessage());
}

// Embedded types.

void ReceivedTypes::point(const hidl_string& string, const void* buffer) {
    auto& received = const_cast<hidl_string&>(string);
    received.mBuffer = static_cast<const char*>(buffer);
    memset(&received.mOwnsBuffer, 0, sizeof(received.mOwnsBuffer));
}

void ReceivedTypes::point(const hidl_handle& handle, const native_handle_t* native) {
    auto& received = const_cast<hidl_handle&>(handle);
    received.mHandle = native;
    memset(&received.mOwnsHandle, 0, sizeof(received.mOwnsHandle));
}

status_t readEmbeddedFromParcel(const hidl_string& string, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset) {
    const size_t size = ReceivedTypes::bufferSize(string);
    size_t handle;
    const void* buffer;
    status_t status = parcel.readEmbeddedBuffer(
            size, &handle, parentHandle, parentOffset + hidl_string::kOffsetOfBuffer, &buffer);
    if (status != OK) return status;
    if (static_cast<const char*>(buffer)[size - 1] != '\0') {
        return parcel.setMalformed("string without end");
    }
    ReceivedTypes::point(string, buffer);
    return OK;
}

status_t writeEmbeddedToParcel(const hidl_string& string, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset) {
    size_t handle;
    return parcel->writeEmbeddedBuffer(string.c_str(), string.size() + 1, &handle, parentHandle,
                                       parentOffset + hidl_string::kOffsetOfBuffer);
}

status_t readEmbeddedFromParcel(const hidl_handle& handle, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset) {
    const native_handle_t* native;
    status_t status = parcel.readNullableEmbeddedNativeHandle(
            parentHandle, parentOffset + hidl_handle::kOffsetOfNativeHandle, &native);
    if (status == OK) ReceivedTypes::point(handle, native);
    return status;
}

status_t writeEmbeddedToParcel(const hidl_handle& handle, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset) {
    return parcel->writeEmbeddedNativeHandle(handle.getNativeHandle(), parentHandle,
                                             parentOffset + hidl_handle::kOffsetOfNativeHandle);
}

status_t readEmbeddedFromParcel(const hidl_memory& memory, const Parcel& parcel,
                                size_t parentHandle, size_t parentOffset) {
    status_t status = readEmbeddedFromParcel(ReceivedTypes::handleOf(memory), parcel, parentHandle,
                                             parentOffset + hidl_memory::kOffsetOfHandle);
    if (status != OK) return status;
    return readEmbeddedFromParcel(ReceivedTypes::nameOf(memory), parcel, parentHandle,
                                  parentOffset + hidl_memory::kOffsetOfName);
}

status_t writeEmbeddedToParcel(const hidl_memory& memory, Parcel* parcel, size_t parentHandle,
                               size_t parentOffset) {
    status_t status = writeEmbeddedToParcel(ReceivedTypes::handleOf(memory), parcel, parentHandle,
                                            parentOffset + hidl_memory::kOffsetOfHandle);
    if (status != OK) return status;
    return writeEmbeddedToParcel(ReceivedTypes::nameOf(memory), parcel, parentHandle,
                                 parentOffset + hidl_memory::kOffsetOfName);
}

// Objects and binders.

sp<IBinder> getOrCreateCachedBinder(IBase* iface) {
    if (iface == nullptr) return nullptr;
    if (iface->isRemote()) return IInterface::asBinder(dynamic_cast<IInterface*>(iface));

    // The stub is made for the object's own interface, not for the one as which it is passed.
    const std::string descriptor = details::getDescriptor(iface);
    static std::mutex& mutex = *new std::mutex;
    std::lock_guard<std::mutex> lock(mutex);
    sp<BHwBinder> stub = details::gBnMap->get(iface, nullptr).promote();
    if (stub != nullptr) return stub;
    auto construct = details::getBnConstructorMap().get(descriptor, nullptr);
    if (construct == nullptr) {
        __android_log_print(ANDROID_LOG_ERROR, "hidl", "No stub is known for interface %s",
                            descriptor.c_str());
        return nullptr;
    }
    sp<IBinder> binder = construct(static_cast<void*>(iface));
    details::gBnMap->set(iface, static_cast<BHwBinder*>(binder.get()));
    return binder;
}

}  // namespace android::hardware
