// The objects in a parcel's data: buffers, binders, native handles.
#include <hwbinder/Parcel.h>

#include <cstring>

#include <hidl/Limits.h>
#include <hwbinder/ParcelContents.h>

namespace android::hardware {

namespace {

// Appends an object to the data, at a multiple of 8 bytes, and its offset to the table.
template <typename Object>
Object* appendObject(ParcelContents* contents) {
    const size_t offset = padTo8(contents->data.size());
    contents->objects.push_back(offset);
    contents->data.resize(offset + sizeof(Object));
    return reinterpret_cast<Object*>(contents->data.data() + offset);
}

size_t nativeHandleSize(int numFds, int numInts) {
    return sizeof(native_handle_t) + sizeof(int) * (size_t(numFds) + size_t(numInts));
}

// Whether the handle's version and counts are such as native_handle_create() makes.
bool isWellFormed(const native_handle_t& handle) {
    return handle.version == sizeof(native_handle_t) && handle.numFds >= 0 &&
           handle.numFds <= NATIVE_HANDLE_MAX_FDS && handle.numInts >= 0 &&
           handle.numInts <= NATIVE_HANDLE_MAX_INTS;
}

}  // namespace

// Takes the next object of the table, which must be of this type and lie where the reader is.
template <typename Object>
status_t Parcel::readObject(uint32_t type, Object** object, size_t* index) const {
    ParcelContents* contents = mContents.get();
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
    auto* object = appendObject<binder_buffer_object>(c);
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
    auto* object = appendObject<flat_binder_object>(c);
    memset(object, 0, sizeof(*object));
    object->hdr.type = BINDER_TYPE_BINDER;
    c->binders.push_back(binder);
    return OK;
}

status_t Parcel::readNullableStrongBinder(sp<IBinder>* binder) const {
    flat_binder_object* object = nullptr;
    size_t index;
    // The transport has marked both kinds of binders (the sender's and the receiver's) so.
    status_t status = readObject(BINDER_TYPE_BINDER, &object, &index);
    if (status != OK) return status;
    *binder = mContents->binders[mContents->nextBinder++];
    return OK;
}

// A native handle is its size in bytes (0: null handle), the buffer with the native_handle_t, and
// the array of its descriptors if it has some.

status_t Parcel::writeHandle(const native_handle_t* handle, bool embedded, size_t parentHandle,
                             size_t parentOffset) {
    if (handle == nullptr) return writeUint64(0);
    if (!isWellFormed(*handle)) return BAD_VALUE;
    const size_t size = nativeHandleSize(handle->numFds, handle->numInts);
    status_t status = writeUint64(size);
    if (status != OK) return status;
    size_t buffer;
    status = writeBufferObject(handle, size, &buffer, embedded, parentHandle, parentOffset);
    if (status != OK || handle->numFds == 0) return status;

    ParcelContents* c = contents();
    if (c->fds.size() + size_t(handle->numFds) > limits::kTransactionDescriptors) return NO_MEMORY;
    auto* object = appendObject<binder_fd_array_object>(c);
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
    status_t status = readUint64(&size);
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
    if (!isWellFormed(*native) || nativeHandleSize(native->numFds, native->numInts) != size) {
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
