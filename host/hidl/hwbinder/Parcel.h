// The arguments or results of one call, in the binder's own shape: flat data, a table of the
// objects in it (buffers, binders, arrays of descriptors), and the buffers themselves. Buffers are
// borrowed while writing; the transport gathers them when it sends. A parcel does not know its
// transport.
//
// A parcel is written or read by one thread. Buffers and handles that are written must
// live until the parcel was sent. Pointers that are read point into the received message, which
// lives as long as the parcel.
#pragma once

#include <cstddef>
#include <cstdint>

#include <cutils/native_handle.h>
#include <hwbinder/IBinder.h>
#include <hwbinder/ParcelContentsOwner.h>
#include <utils/Errors.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

class Parcel {
  public:
    Parcel() = default;
    ~Parcel();
    Parcel(const Parcel&) = delete;
    Parcel& operator=(const Parcel&) = delete;

    // Writers. They return OK, or NO_MEMORY where the parcel would grow beyond what a call may
    // carry.
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
    // Copies a text with its NUL.
    status_t writeCString(const char* text);
    // Refers to a buffer of `length` bytes. *handle is its index, by which embedded buffers name
    // their parent.
    status_t writeBuffer(const void* buffer, size_t length, size_t* handle);
    // The same for a buffer to which the pointer at `parentOffset` of buffer `parentHandle` points.
    status_t writeEmbeddedBuffer(const void* buffer, size_t length, size_t* handle,
                                 size_t parentHandle, size_t parentOffset);
    status_t writeStrongBinder(const sp<IBinder>& binder);
    // The caller keeps its descriptors; the receiver gets duplicates.
    status_t writeNativeHandleNoDup(const native_handle_t* handle);
    status_t writeEmbeddedNativeHandle(const native_handle_t* handle, size_t parentHandle,
                                       size_t parentOffset);

    // Readers. They return OK, NOT_ENOUGH_DATA beyond the end, or BAD_VALUE where the parcel holds
    // something else. After either error malformedReason() tells why.
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
    // Returns the text, which lies in the parcel; null where there is none.
    const char* readCString() const;
    // Reads a buffer, which must have exactly `length` bytes.
    status_t readBuffer(size_t length, size_t* handle, const void** buffer) const;
    // The same for an embedded buffer, which must belong to that place of that parent. A buffer
    // without bytes is an error, or null from the nullable kind.
    status_t readEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                size_t parentOffset, const void** buffer) const;
    status_t readNullableEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                        size_t parentOffset, const void** buffer) const;
    status_t readNullableStrongBinder(sp<IBinder>* binder) const;
    // The handle and its descriptors belong to the parcel: a reader that keeps them clones them.
    status_t readNullableNativeHandleNoDup(const native_handle_t** handle) const;
    status_t readNullableEmbeddedNativeHandle(size_t parentHandle, size_t parentOffset,
                                              const native_handle_t** handle) const;

    // Marks the content as malformed for `reason` (a literal), unless it is already. Returns
    // BAD_VALUE.
    status_t setMalformed(const char* reason) const {
        noteMalformed(reason);
        return BAD_VALUE;
    }
    // Returns why the content is malformed; null while it is not.
    const char* malformedReason() const;

    // Empties the parcel.
    void reset();

    // For transports. The parcel keeps its contents; contents() makes them on first use,
    // contentsOrNull() returns null for a parcel that has none.
    ParcelContents* contents();
    ParcelContents* contentsOrNull() const { return mContents.get(); }
    // Takes over received contents, in place of those that the parcel has.
    void adopt(ParcelContentsOwner contents);

  private:
    void noteMalformed(const char* reason) const;
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

    ParcelContentsOwner mContents;
};

}  // namespace android::hardware
