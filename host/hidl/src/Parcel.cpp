#include <hwbinder/Parcel.h>

#include <cstring>

#include <hidl/Limits.h>
#include <hwbinder/ParcelContents.h>

namespace android::hardware {

namespace {

// Data is kept in units of 4 bytes, as the driver wants it.
constexpr size_t padTo4(size_t size) {
    return (size + 3) & ~size_t{3};
}

// Objects lie at multiples of 8 in the data.
template <typename Object>
Object* append(ParcelContents* contents) {
    const size_t offset = padTo8(contents->data.size());
    contents->objects.push_back(offset);
    contents->data.resize(offset + sizeof(Object));
    return reinterpret_cast<Object*>(contents->data.data() + offset);
}

size_t nativeHandleSize(int numFds, int numInts) {
    return sizeof(native_handle_t) + sizeof(int) * (size_t(numFds) + size_t(numInts));
}

bool plausible(const native_handle_t& handle) {
    return handle.version == sizeof(native_handle_t) && handle.numFds >= 0 &&
           handle.numFds <= NATIVE_HANDLE_MAX_FDS && handle.numInts >= 0 &&
           handle.numInts <= NATIVE_HANDLE_MAX_INTS;
}

}  // namespace

Parcel::~Parcel() {
    reset();
}

void Parcel::reset() {
    if (mContents != nullptr) ParcelContents::release(mContents);
    mContents = nullptr;
}

ParcelContents* Parcel::contents() {
    if (mContents == nullptr) mContents = ParcelContents::acquire();
    return mContents;
}

void Parcel::adopt(ParcelContents* contents) {
    reset();
    mContents = contents;
}

status_t Parcel::setMalformed(const char* reason) const {
    if (mContents != nullptr && mContents->malformed == nullptr) mContents->malformed = reason;
    return BAD_VALUE;
}

const char* Parcel::malformedReason() const {
    return mContents != nullptr ? mContents->malformed : nullptr;
}

// Scalars.

template <typename T>
status_t Parcel::writeScalar(T value) {
    static_assert(sizeof(T) % 4 == 0, "scalars take whole units");
    std::vector<uint8_t>& data = contents()->data;
    const size_t offset = data.size();
    if (offset + sizeof(T) > limits::kTransactionBytes) return NO_MEMORY;
    data.resize(offset + sizeof(T));
    memcpy(data.data() + offset, &value, sizeof(T));
    return OK;
}

template <typename T>
status_t Parcel::readScalar(T* value) const {
    if (mContents == nullptr || mContents->receivedDataSize - mContents->position < sizeof(T)) {
        setMalformed("data ends too early");
        return NOT_ENOUGH_DATA;
    }
    memcpy(value, mContents->receivedData + mContents->position, sizeof(T));
    mContents->position += sizeof(T);
    return OK;
}

status_t Parcel::writeBool(bool value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeInt8(int8_t value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeUint8(uint8_t value) {
    return writeScalar<uint32_t>(value);
}
status_t Parcel::writeInt16(int16_t value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeUint16(uint16_t value) {
    return writeScalar<uint32_t>(value);
}
status_t Parcel::writeInt32(int32_t value) {
    return writeScalar(value);
}
status_t Parcel::writeUint32(uint32_t value) {
    return writeScalar(value);
}
status_t Parcel::writeInt64(int64_t value) {
    return writeScalar(value);
}
status_t Parcel::writeUint64(uint64_t value) {
    return writeScalar(value);
}
status_t Parcel::writeFloat(float value) {
    return writeScalar(value);
}
status_t Parcel::writeDouble(double value) {
    return writeScalar(value);
}

// Narrow types travel in a unit of 4 bytes.
template <typename T>
status_t Parcel::readNarrow(T* value) const {
    uint32_t unit = 0;
    const status_t status = readScalar(&unit);
    if (status == OK) *value = static_cast<T>(unit);
    return status;
}

status_t Parcel::readBool(bool* value) const {
    uint32_t unit = 0;
    status_t status = readScalar(&unit);
    if (status == OK) *value = unit != 0;
    return status;
}
status_t Parcel::readInt8(int8_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readUint8(uint8_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readInt16(int16_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readUint16(uint16_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readInt32(int32_t* value) const {
    return readScalar(value);
}
status_t Parcel::readUint32(uint32_t* value) const {
    return readScalar(value);
}
status_t Parcel::readInt64(int64_t* value) const {
    return readScalar(value);
}
status_t Parcel::readUint64(uint64_t* value) const {
    return readScalar(value);
}
status_t Parcel::readFloat(float* value) const {
    return readScalar(value);
}
status_t Parcel::readDouble(double* value) const {
    return readScalar(value);
}

// Texts in the data.

status_t Parcel::writeInterfaceToken(const char* interface) {
    return writeCString(interface);
}

status_t Parcel::writeCString(const char* text) {
    std::vector<uint8_t>& data = contents()->data;
    const size_t offset = data.size();
    const size_t length = strlen(text) + 1;
    if (offset + padTo4(length) > limits::kTransactionBytes) return NO_MEMORY;
    data.resize(offset + padTo4(length));
    memcpy(data.data() + offset, text, length);
    return OK;
}

const char* Parcel::readCString() const {
    if (mContents == nullptr) return nullptr;
    const size_t left = mContents->receivedDataSize - mContents->position;
    const auto* text = reinterpret_cast<const char*>(mContents->receivedData + mContents->position);
    const size_t length = left == 0 ? 0 : strnlen(text, left);
    if (length == left || padTo4(length + 1) > left) {
        setMalformed("text without end");
        return nullptr;
    }
    mContents->position += padTo4(length + 1);
    return text;
}

bool Parcel::enforceInterface(const char* interface) const {
    const char* token = readCString();
    return token != nullptr && strcmp(token, interface) == 0;
}

// Objects in the data.

template <typename Object>
status_t Parcel::readObject(uint32_t type, Object** object, size_t* index) const {
    ParcelContents* contents = mContents;
    if (contents == nullptr) return BAD_VALUE;
    const size_t position = padTo8(contents->position);
    if (contents->nextObject == contents->receivedObjectCount ||
        contents->receivedObjects[contents->nextObject] != position) {
        return setMalformed("no object where one belongs");
    }
    contents->position = position;
    auto* header =
            reinterpret_cast<binder_object_header*>(contents->receivedData + contents->position);
    if (header->type != type) return setMalformed("object of another kind");
    *object = reinterpret_cast<Object*>(header);
    *index = contents->nextObject++;
    contents->position += sizeof(Object);
    return OK;
}

status_t Parcel::writeBufferObject(const void* buffer, size_t length, size_t* handle, bool embedded,
                                   size_t parentHandle, size_t parentOffset) {
    ParcelContents* c = contents();
    if (length > limits::kTransactionBytes ||
        c->data.size() + c->bufferBytes + length > limits::kTransactionBytes) {
        return NO_MEMORY;
    }
    *handle = c->objects.size();
    auto* object = append<binder_buffer_object>(c);
    object->hdr.type = BINDER_TYPE_PTR;
    object->flags = embedded ? static_cast<uint32_t>(BINDER_BUFFER_FLAG_HAS_PARENT) : 0;
    object->buffer = reinterpret_cast<binder_uintptr_t>(buffer);
    object->length = length;
    object->parent = embedded ? parentHandle : 0;
    object->parent_offset = embedded ? parentOffset : 0;
    c->bufferBytes += padTo8(length);
    return OK;
}

status_t Parcel::writeBuffer(const void* buffer, size_t length, size_t* handle) {
    return writeBufferObject(buffer, length, handle, false, 0, 0);
}

status_t Parcel::writeEmbeddedBuffer(const void* buffer, size_t length, size_t* handle,
                                     size_t parentHandle, size_t parentOffset) {
    return writeBufferObject(buffer, length, handle, true, parentHandle, parentOffset);
}

status_t Parcel::readBufferObject(size_t length, size_t* handle, bool embedded, size_t parentHandle,
                                  size_t parentOffset, const void** buffer) const {
    binder_buffer_object* object = nullptr;
    status_t status = readObject(BINDER_TYPE_PTR, &object, handle);
    if (status != OK) return status;
    const bool hasParent = (object->flags & BINDER_BUFFER_FLAG_HAS_PARENT) != 0;
    if (hasParent != embedded) return setMalformed("embedded buffer in the wrong place");
    if (embedded && (object->parent != parentHandle || object->parent_offset != parentOffset)) {
        return setMalformed("embedded buffer of another parent");
    }
    if (object->length != length) return setMalformed("buffer of another size");
    *buffer = reinterpret_cast<const void*>(static_cast<uintptr_t>(object->buffer));
    return OK;
}

status_t Parcel::readBuffer(size_t length, size_t* handle, const void** buffer) const {
    return readBufferObject(length, handle, false, 0, 0, buffer);
}

status_t Parcel::readEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                    size_t parentOffset, const void** buffer) const {
    status_t status =
            readNullableEmbeddedBuffer(length, handle, parentHandle, parentOffset, buffer);
    if (status == OK && *buffer == nullptr) return setMalformed("buffer without bytes");
    return status;
}

status_t Parcel::readNullableEmbeddedBuffer(size_t length, size_t* handle, size_t parentHandle,
                                            size_t parentOffset, const void** buffer) const {
    return readBufferObject(length, handle, true, parentHandle, parentOffset, buffer);
}

status_t Parcel::writeStrongBinder(const sp<IBinder>& binder) {
    ParcelContents* c = contents();
    if (c->data.size() + sizeof(flat_binder_object) > limits::kTransactionBytes) return NO_MEMORY;
    auto* object = append<flat_binder_object>(c);
    memset(object, 0, sizeof(*object));
    object->hdr.type = BINDER_TYPE_BINDER;
    c->binders.push_back(binder);
    ++c->binderCount;
    return OK;
}

status_t Parcel::readNullableStrongBinder(sp<IBinder>* binder) const {
    flat_binder_object* object = nullptr;
    size_t index;
    // The transport has put the receiver's own binders in place of either kind.
    status_t status = readObject(BINDER_TYPE_BINDER, &object, &index);
    if (status != OK) return status;
    *binder = mContents->binders[mContents->nextBinder++];
    return OK;
}

// Handles: size, buffer with the native handle, and the array of its descriptors if it has some. A
// null handle is a size of 0.

status_t Parcel::writeHandle(const native_handle_t* handle, bool embedded, size_t parentHandle,
                             size_t parentOffset) {
    if (handle == nullptr) return writeUint64(0);
    if (!plausible(*handle)) return BAD_VALUE;
    const size_t size = nativeHandleSize(handle->numFds, handle->numInts);
    status_t status = writeUint64(size);
    if (status != OK) return status;
    size_t buffer;
    status = writeBufferObject(handle, size, &buffer, embedded, parentHandle, parentOffset);
    if (status != OK || handle->numFds == 0) return status;

    ParcelContents* c = contents();
    if (c->fds.size() + size_t(handle->numFds) > limits::kTransactionDescriptors) return NO_MEMORY;
    auto* object = append<binder_fd_array_object>(c);
    memset(object, 0, sizeof(*object));
    object->hdr.type = BINDER_TYPE_FDA;
    object->num_fds = static_cast<binder_size_t>(handle->numFds);
    object->parent = buffer;
    object->parent_offset = offsetof(native_handle_t, data);
    c->fds.insert(c->fds.end(), handle->data, handle->data + handle->numFds);
    return OK;
}

status_t Parcel::writeNativeHandleNoDup(const native_handle_t* handle) {
    return writeHandle(handle, false, 0, 0);
}

status_t Parcel::writeEmbeddedNativeHandle(const native_handle_t* handle, size_t parentHandle,
                                           size_t parentOffset) {
    return writeHandle(handle, true, parentHandle, parentOffset);
}

status_t Parcel::readHandle(bool embedded, size_t parentHandle, size_t parentOffset,
                            const native_handle_t** handle) const {
    uint64_t size;
    status_t status = readScalar(&size);
    if (status != OK) return status;
    *handle = nullptr;
    if (size == 0) return OK;
    if (size < sizeof(native_handle_t) || size > limits::kTransactionBytes) {
        return setMalformed("handle of an impossible size");
    }
    size_t buffer;
    const void* bytes;
    status = readBufferObject(size, &buffer, embedded, parentHandle, parentOffset, &bytes);
    if (status != OK) return status;
    auto* native = const_cast<native_handle_t*>(static_cast<const native_handle_t*>(bytes));
    if (!plausible(*native) || nativeHandleSize(native->numFds, native->numInts) != size) {
        return setMalformed("handle whose counts do not agree with its size");
    }
    if (native->numFds > 0) {
        binder_fd_array_object* object = nullptr;
        size_t index;
        status = readObject(BINDER_TYPE_FDA, &object, &index);
        if (status != OK) return status;
        if (object->parent != buffer || object->parent_offset != offsetof(native_handle_t, data) ||
            object->num_fds != static_cast<binder_size_t>(native->numFds)) {
            return setMalformed("descriptors of another handle");
        }
        memcpy(native->data, mContents->fds.data() + mContents->nextFd,
               sizeof(int) * size_t(native->numFds));
        mContents->nextFd += size_t(native->numFds);
    }
    *handle = native;
    return OK;
}

status_t Parcel::readNullableNativeHandleNoDup(const native_handle_t** handle) const {
    return readHandle(false, 0, 0, handle);
}

status_t Parcel::readNullableEmbeddedNativeHandle(size_t parentHandle, size_t parentOffset,
                                                  const native_handle_t** handle) const {
    return readHandle(true, parentHandle, parentOffset, handle);
}

}  // namespace android::hardware
