// The arguments or results of one call, in the binder's own shape: flat data, a table of the
// objects in it (buffers, binders, arrays of descriptors), and the buffers themselves, borrowed
// while writing and gathered by the transport. Which transport carries a parcel is none of its
// business.
//
// A parcel is written or read by one thread. What a writer is given by pointer (buffers, handles)
// must live until the parcel was sent. What a reader gets by pointer lies in the received message
// and lives as long as the parcel.
#pragma once

#include <cstddef>
#include <cstdint>

#include <cutils/native_handle.h>
#include <hwbinder/IBinder.h>
#include <utils/Errors.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

struct ParcelContents;

class Parcel {
  public:
    Parcel() = default;
    ~Parcel();
    Parcel(const Parcel&) = delete;
    Parcel& operator=(const Parcel&) = delete;

    // Writers. They return OK, or NO_MEMORY where the parcel grows beyond what a call may carry.
    status_t writeInterfaceToken(const char* interface);
    status_t writeBool(bool value);
    status_t writeInt8(int8_t value);
    status_t writeUint8(uint8_t value);
    status_t writeInt16(int16_t value);
    status_t writeUint16(uint16_t value);
    status_t writeInt32(int32_t value);
    status_t writeUint32(uint32_t value);
    status_t writeInt64(int64_t value);
    status_t writeUint64(uint64_t value);
    status_t writeFloat(float value);
    status_t writeDouble(double value);
    // A text with its NUL, copied.
    status_t writeCString(const char* text);
    // A buffer of `length` bytes; *handle names it to the embedded buffers inside it.
    status_t writeBuffer(const void* buffer, size_t length, size_t* handle);
    // A buffer that the pointer at `parentOffset` of buffer `parentHandle` points to.
    status_t writeEmbeddedBuffer(const void* buffer, size_t length, size_t* handle,
                                 size_t parentHandle, size_t parentOffset);
    status_t writeStrongBinder(const sp<IBinder>& binder);
    // The descriptors stay the caller's; the receiver gets duplicates.
    status_t writeNativeHandleNoDup(const native_handle_t* handle);
    status_t writeEmbeddedNativeHandle(const native_handle_t* handle, size_t parentHandle,
                                       size_t parentOffset);

    // Readers. They return OK, NOT_ENOUGH_DATA beyond the end, or BAD_VALUE where the parcel holds
    // something else. After either, malformed() is true.
    bool enforceInterface(const char* interface) const;
    status_t readBool(bool* value) const;
    status_t readInt8(int8_t* value) const;
    status_t readUint8(uint8_t* value) const;
    status_t readInt16(int16_t* value) const;
    status_t readUint16(uint16_t* value) const;
    status_t readInt32(int32_t* value) const;
    status_t readUint32(uint32_t* value) const;
    status_t readInt64(int64_t* value) const;
    status_t readUint64(uint64_t* value) const;
    status_t readFloat(float* value) const;
    status_t readDouble(double* value) const;
    // The text, inside the parcel; null and malformed where there is none.
    const char* readCString() const;
    // The buffer, which must have exactly `length` bytes.
    status_t readBuffer(size_t length, size_t* handle, const void** buffer) const;
    // The same for an embedded one, which must belong to that place; the pointer there is set.
    // The nullable kind gives null for a buffer without bytes.
    status_t readEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                size_t parentOffset, const void** buffer) const;
    status_t readNullableEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                        size_t parentOffset, const void** buffer) const;
    status_t readNullableStrongBinder(sp<IBinder>* binder) const;
    // The handle and its descriptors belong to the parcel: clone what is to be kept.
    status_t readNullableNativeHandleNoDup(const native_handle_t** handle) const;
    status_t readNullableEmbeddedNativeHandle(size_t parentHandle, size_t parentOffset,
                                              const native_handle_t** handle) const;

    // Notes that the content is not what the reader was promised, for `reason` (a literal). Returns
    // BAD_VALUE.
    status_t setMalformed(const char* reason) const;
    // Why the content is malformed; null while it is not.
    const char* malformedReason() const;

    // Empties the parcel.
    void reset();

    // For transports: the contents, made on first use (contents()) or null if nothing was written.
    ParcelContents* contents();
    ParcelContents* contentsOrNull() const { return mContents; }
    // Takes over received contents from ParcelContents::acquire().
    void adopt(ParcelContents* contents);

  private:
    template <typename T>
    status_t writeScalar(T value);
    template <typename T>
    status_t readScalar(T* value) const;
    template <typename T>
    status_t readNarrow(T* value) const;
    status_t writeBufferObject(const void* buffer, size_t length, size_t* handle, bool embedded,
                               size_t parentHandle, size_t parentOffset);
    status_t readBufferObject(size_t length, size_t* handle, bool embedded, size_t parentHandle,
                              size_t parentOffset, const void** buffer) const;
    status_t writeHandle(const native_handle_t* handle, bool embedded, size_t parentHandle,
                         size_t parentOffset);
    status_t readHandle(bool embedded, size_t parentHandle, size_t parentOffset,
                        const native_handle_t** handle) const;
    template <typename Object>
    status_t readObject(uint32_t type, Object** object, size_t* index) const;

    ParcelContents* mContents = nullptr;
};

}  // namespace android::hardware
