#include <hwbinder/ParcelContents.h>

#include <unistd.h>

#include <cstring>

namespace android::hardware {

namespace {

// Storage beyond this is given back to the heap, so that one big call does not cost for ever.
constexpr size_t kKeptBytes = 64 * 1024;
// Contents that a thread keeps: those of a call and its answer, and as many for one nested in it.
constexpr size_t kKeptContents = 4;

// Size of the object with this type; 0 for types that no message may carry.
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

ParcelContents* ParcelContents::acquire() {
    return tStore.take();
}

void ParcelContents::release(ParcelContents* contents) {
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
    binderCount = 0;
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

// Everything that the readers of Parcel rely on is established here: each object lies inside the
// data and overlaps no other; each buffer has its own bytes; a parent is an earlier buffer that has
// room for the pointer or the descriptors; and there are exactly as many descriptors and buffer
// bytes as the objects account for.
const char* ParcelContents::accept(size_t at, size_t dataSize, size_t objectCount,
                                   size_t bufferSize) {
    uint8_t* const bytes = reinterpret_cast<uint8_t*>(mStorage.get()) + at;
    const auto* offsets = reinterpret_cast<const binder_size_t*>(bytes + padTo8(dataSize));
    uint8_t* buffer = bytes + padTo8(dataSize) + objectCount * sizeof(binder_size_t);
    uint8_t* const buffersEnd = buffer + bufferSize;
    size_t fdsSeen = 0;
    size_t end = 0;

    // The buffer object with index `parent` if it comes before object `index`.
    auto parentOf = [&](binder_size_t parent, size_t index) -> binder_buffer_object* {
        if (parent >= index) return nullptr;
        auto* object = reinterpret_cast<binder_buffer_object*>(bytes + offsets[parent]);
        return object->hdr.type == BINDER_TYPE_PTR ? object : nullptr;
    };

    for (size_t i = 0; i < objectCount; ++i) {
        const binder_size_t offset = offsets[i];
        if (offset < end || offset % 8 != 0 || offset > dataSize ||
            dataSize - offset < sizeof(binder_object_header)) {
            return "object outside the data";
        }
        const uint32_t type = reinterpret_cast<binder_object_header*>(bytes + offset)->type;
        const size_t size = objectSize(type);
        if (size == 0) return "object of an unknown kind";
        if (dataSize - offset < size) return "object outside the data";
        end = offset + size;

        if (type == BINDER_TYPE_PTR) {
            auto* object = reinterpret_cast<binder_buffer_object*>(bytes + offset);
            if (object->length > static_cast<size_t>(buffersEnd - buffer)) {
                return "buffer longer than the message";
            }
            if ((object->flags & BINDER_BUFFER_FLAG_HAS_PARENT) != 0) {
                const binder_buffer_object* parent = parentOf(object->parent, i);
                if (parent == nullptr) return "buffer without its parent";
                if (object->parent_offset % 8 != 0 || parent->length < sizeof(uint64_t) ||
                    object->parent_offset > parent->length - sizeof(uint64_t)) {
                    return "buffer that its parent has no room for";
                }
            }
            object->buffer = object->length == 0 ? 0 : reinterpret_cast<binder_uintptr_t>(buffer);
            const size_t padded = padTo8(object->length);
            if (padded > static_cast<size_t>(buffersEnd - buffer)) {
                return "buffer longer than the message";
            }
            buffer += padded;
        } else if (type == BINDER_TYPE_FDA) {
            auto* object = reinterpret_cast<binder_fd_array_object*>(bytes + offset);
            const binder_buffer_object* parent = parentOf(object->parent, i);
            if (parent == nullptr) return "descriptors without their handle";
            if (object->num_fds > fds.size() - fdsSeen) return "descriptors that did not come";
            fdsSeen += object->num_fds;
            if (object->parent_offset % sizeof(int) != 0 ||
                object->parent_offset > parent->length ||
                object->num_fds > (parent->length - object->parent_offset) / sizeof(int)) {
                return "descriptors that their handle has no room for";
            }
        } else {
            ++binderCount;
        }
    }
    if (buffer != buffersEnd) return "bytes that belong to no buffer";
    if (fdsSeen != fds.size()) return "descriptors that belong to no handle";

    receivedData = bytes;
    receivedDataSize = dataSize;
    receivedObjects = offsets;
    receivedObjectCount = objectCount;
    return nullptr;
}

}  // namespace android::hardware
