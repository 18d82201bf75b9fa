// What a parcel consists of, for transports: the same parts that the kernel's binder driver is
// given.
//
// Sending: `data` holds the flat data and, in it, the kernel's own object structures; `objects`
// their offsets. A binder_buffer_object points at memory of the sender, of binder_fd_array_objects
// and flat_binder_objects the descriptors and binders stand in `fds` and `binders`, in order.
//
// Receiving: a transport puts data, offsets and buffers (each rounded up to 8 bytes, in order) one
// behind the other into storage(), fills `fds`, and calls accept(), which checks every offset,
// length and index and points each buffer object at its buffer. Then it fills `binders`, one for
// each flat_binder_object in order.
#pragma once

#include <linux/android/binder.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <hwbinder/IBinder.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

constexpr size_t padTo8(size_t size) {
    return (size + 7) & ~size_t{7};
}

struct ParcelContents {
    // Contents from a store that each thread keeps, so that a call allocates nothing in the long
    // run; and back to it, releasing binders and closing received descriptors.
    static ParcelContents* acquire();
    static void release(ParcelContents* contents);

    // Memory for `size` received bytes, aligned to 8; what the first `keep` bytes held is kept.
    uint8_t* storage(size_t size, size_t keep);

    // Checks a received message that lies `at` bytes into the storage: dataSize bytes of data
    // (padded to 8), objectCount offsets, bufferSize bytes of buffers. Null if it is sound, else
    // what is wrong with it (a literal). The descriptors in `fds` belong to the contents whatever
    // the result.
    const char* accept(size_t at, size_t dataSize, size_t objectCount, size_t bufferSize);

    // Calls visit(flat_binder_object*) for each binder in the received data, in order, until it
    // returns false.
    template <typename Visitor>
    void visitBinders(uint8_t* bytes, const binder_size_t* offsets, size_t count, Visitor visit) {
        for (size_t i = 0; i < count; ++i) {
            auto* header = reinterpret_cast<binder_object_header*>(bytes + offsets[i]);
            if (header->type != BINDER_TYPE_BINDER && header->type != BINDER_TYPE_HANDLE) continue;
            if (!visit(reinterpret_cast<flat_binder_object*>(header))) return;
        }
    }

    // Both ways.
    std::vector<sp<IBinder>> binders;
    std::vector<int> fds;  // sending: borrowed; receiving: owned

    // Sending.
    std::vector<uint8_t> data;
    std::vector<binder_size_t> objects;
    size_t bufferBytes = 0;  // of all buffers, each rounded up to 8
    size_t binderCount = 0;  // flat_binder_objects among the objects

    // Receiving: into the storage.
    bool received = false;
    uint8_t* receivedData = nullptr;
    size_t receivedDataSize = 0;
    const binder_size_t* receivedObjects = nullptr;
    size_t receivedObjectCount = 0;

    // Where the reader stands.
    size_t position = 0;
    size_t nextObject = 0;
    size_t nextBinder = 0;
    size_t nextFd = 0;
    const char* malformed = nullptr;

  private:
    ParcelContents() = default;
    ~ParcelContents() = default;
    void clear();

    friend struct ParcelContentsStore;
    std::unique_ptr<uint64_t[]> mStorage;
    size_t mStorageSize = 0;
};

}  // namespace android::hardware
