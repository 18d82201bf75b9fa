#include <hwbinder/ParcelContents.h>

#include <unistd.h>

#include <cstring>

namespace android::hardware {

namespace {

// Bytes of data or storage above which the memory is freed instead of kept for the next call: one
// big call would hold it for the life of the thread.
constexpr size_t kKeptBytes = 64 * 1024;
// Contents that a thread keeps: those of a call and its reply, and as many for one nested in it.
constexpr size_t kKeptContents = 4;

// Returns the size of the object with this type; 0 for types that no message may carry.
size_t objectSize(uint32_t type) {
    switch (type) {
        case BINDER_TYPE_PTR:
            return sizeof(binder_buffer_object);
        case BINDER_TYPE_FDA:
            return sizeof(binder_fd_array_object);
        case BINDER_TYPE_BINDER:
        case BINDER_TYPE_HANDLE:
            return sizeof(flat_binder_object);
        default:
            return 0;
    }
}

// Checks the objects of a received message in order. Each check returns null or what is wrong.
struct ObjectCheck {
    uint8_t* const data;
    const size_t dataSize;
    const binder_size_t* const offsets;
    const size_t fdCount;
    uint8_t* buffer;            // begin of the bytes that belong to no buffer object so far
    uint8_t* const buffersEnd;  // end of all buffers
    size_t objectsEnd = 0;      // end of the previous object in the data
    size_t fdsSeen = 0;         // descriptors that belong to the objects so far

    const char* check(size_t index) {
        const binder_size_t offset = offsets[index];
        if (offset < objectsEnd || offset % 8 != 0 || offset > dataSize ||
            dataSize - offset < sizeof(binder_object_header)) {
            return "object outside the data";
        }
        const uint32_t type = reinterpret_cast<binder_object_header*>(data + offset)->type;
        const size_t size = objectSize(type);
        if (size == 0) return "object of an unknown kind";
        if (dataSize - offset < size) return "object outside the data";
        objectsEnd = offset + size;
        if (type == BINDER_TYPE_PTR) return checkBuffer(index);
        if (type == BINDER_TYPE_FDA) return checkDescriptors(index);
        return nullptr;
    }

    // Also points the object at its buffer.
    const char* checkBuffer(size_t index) {
        auto* object = reinterpret_cast<binder_buffer_object*>(data + offsets[index]);
        const auto left = static_cast<size_t>(buffersEnd - buffer);
        if (object->length > left) return "buffer longer than the message";
        if ((object->flags & BINDER_BUFFER_FLAG_HAS_PARENT) != 0) {
            const binder_buffer_object* parent = parentOf(index, object->parent);
            if (parent == nullptr) return "buffer without its parent";
            if (object->parent_offset % 8 != 0 || parent->length < sizeof(uint64_t) ||
                object->parent_offset > parent->length - sizeof(uint64_t)) {
                return "buffer that its parent has no room for";
            }
        }
        object->buffer = object->length == 0 ? 0 : reinterpret_cast<binder_uintptr_t>(buffer);
        const size_t padded = padTo8(object->length);
        if (padded > left) return "buffer longer than the message";
        buffer += padded;
        return nullptr;
    }

    const char* checkDescriptors(size_t index) {
        const auto* object = reinterpret_cast<binder_fd_array_object*>(data + offsets[index]);
        const binder_buffer_object* parent = parentOf(index, object->parent);
        if (parent == nullptr) return "descriptors without their handle";
        if (object->num_fds > fdCount - fdsSeen) return "descriptors that did not come";
        fdsSeen += object->num_fds;
        if (object->parent_offset % sizeof(int) != 0 || object->parent_offset > parent->length ||
            object->num_fds > (parent->length - object->parent_offset) / sizeof(int)) {
            return "descriptors that their handle has no room for";
        }
        return nullptr;
    }

    // Returns the buffer object with index `parent`; null if it is none or does not come before
    // object `index`.
    const binder_buffer_object* parentOf(size_t index, binder_size_t parent) const {
        if (parent >= index) return nullptr;
        const auto* object = reinterpret_cast<binder_buffer_object*>(data + offsets[parent]);
        return object->hdr.type == BINDER_TYPE_PTR ? object : nullptr;
    }
};

}  // namespace

struct ParcelContentsStore {
    ~ParcelContentsStore() {
        while (count > 0) delete kept[--count];
    }
    ParcelContents* take() { return count > 0 ? kept[--count] : new ParcelContents(); }
    void give(ParcelContents* contents) {
        contents->clear();
        if (count < kKeptContents) {
            kept[count++] = contents;
        } else {
            delete contents;
        }
    }

    ParcelContents* kept[kKeptContents];
    size_t count = 0;
};

static thread_local ParcelContentsStore tStore;

ParcelContentsOwner ParcelContents::acquire() {
    return ParcelContentsOwner(tStore.take());
}

void ParcelContentsRecycler::operator()(ParcelContents* contents) const {
    tStore.give(contents);
}

void ParcelContents::clear() {
    if (received) {
        for (int fd : fds) close(fd);
    }
    fds.clear();
    // Dropping the last reference of an object may run code of its owner, which may use parcels.
    binders.clear();
    data.clear();
    objects.clear();
    if (data.capacity() > kKeptBytes) std::vector<uint8_t>().swap(data);
    if (mStorageSize > kKeptBytes) {
        mStorage.reset();
        mStorageSize = 0;
    }
    bufferBytes = 0;
    received = false;
    receivedData = nullptr;
    receivedDataSize = 0;
    receivedObjects = nullptr;
    receivedObjectCount = 0;
    position = nextObject = nextBinder = nextFd = 0;
    malformed = nullptr;
}

uint8_t* ParcelContents::storage(size_t size, size_t keep) {
    if (size > mStorageSize) {
        const size_t units = padTo8(size) / sizeof(uint64_t);
        std::unique_ptr<uint64_t[]> bigger(new uint64_t[units]);
        if (keep > 0) memcpy(bigger.get(), mStorage.get(), keep);
        mStorage = std::move(bigger);
        mStorageSize = units * sizeof(uint64_t);
    }
    received = true;
    return reinterpret_cast<uint8_t*>(mStorage.get());
}

// Establishes everything that the readers of Parcel rely on: each object lies inside the data and
// overlaps no other; each buffer has its own bytes; a parent is an earlier buffer that has room for
// the pointer or the descriptors; and there are exactly as many descriptors and buffer bytes as the
// objects account for.
const char* ParcelContents::accept(size_t at, size_t dataSize, size_t objectCount,
                                   size_t bufferSize) {
    uint8_t* const bytes = reinterpret_cast<uint8_t*>(mStorage.get()) + at;
    const auto* offsets = reinterpret_cast<const binder_size_t*>(bytes + padTo8(dataSize));
    uint8_t* const buffers = bytes + padTo8(dataSize) + objectCount * sizeof(binder_size_t);
    ObjectCheck objectCheck{bytes, dataSize, offsets, fds.size(), buffers, buffers + bufferSize};
    for (size_t i = 0; i < objectCount; ++i) {
        const char* reason = objectCheck.check(i);
        if (reason != nullptr) return reason;
    }
    if (objectCheck.buffer != objectCheck.buffersEnd) return "bytes that belong to no buffer";
    if (objectCheck.fdsSeen != fds.size()) return "descriptors that belong to no handle";

    receivedData = bytes;
    receivedDataSize = dataSize;
    receivedObjects = offsets;
    receivedObjectCount = objectCount;
    return nullptr;
}

}  // namespace android::hardware
