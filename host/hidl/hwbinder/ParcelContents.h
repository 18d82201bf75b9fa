// The parts that a parcel consists of, for transports: the same that the kernel's binder driver
// takes.
//
// Sending: `data` holds the flat data and, in it, the kernel's object structures; `objects` holds
// their offsets. A binder_buffer_object points at memory of the sender. The descriptors of
// binder_fd_array_objects are in `fds` and the binders of flat_binder_objects in `binders`, in the
// order of the objects.
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
#include <hwbinder/ParcelContentsOwner.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

constexpr size_t padTo8(size_t size) {
    return (size + 7) & ~size_t{7};
}

struct ParcelContents {
    // Returns empty contents. They come from a store that each thread keeps, so that a call
    // allocates nothing once the store is filled.
    static ParcelContentsOwner acquire();

    // Returns memory for `size` received bytes, aligned to 8. Its first `keep` bytes are those that
    // the storage held before.
    uint8_t* storage(size_t size, size_t keep);

    // Checks a received message that lies at offset `at` of the storage: dataSize bytes of data
    // (padded to 8), objectCount offsets, bufferSize bytes of buffers. Returns null if it is sound,
    // else what is wrong with it (a literal). The contents own the descriptors in `fds` either way.
    const char* accept(size_t at, size_t dataSize, size_t objectCount, size_t bufferSize);

    // Calls visit(flat_binder_object*) for each binder in order, until it returns false: of
    // contents to be sent, and of contents that accept() found sound.
    template <typename Visitor>
    void visitBindersToSend(Visitor visit) {
        visitBinders(data.data(), objects.data(), objects.size(), visit);
    }
    template <typename Visitor>
    void visitReceivedBinders(Visitor visit) {
        visitBinders(receivedData, receivedObjects, receivedObjectCount, visit);
    }

    // Both ways.
    std::vector<sp<IBinder>> binders;
    std::vector<int> fds;  // sending: the caller's; receiving: owned, closed with the contents

    // Sending.
    std::vector<uint8_t> data;
    std::vector<binder_size_t> objects;
    size_t bufferBytes = 0;  // length of all buffers, each rounded up to 8

    // Receiving: pointers into the storage.
    bool received = false;  // the contents own `fds`
    uint8_t* receivedData = nullptr;
    size_t receivedDataSize = 0;
    const binder_size_t* receivedObjects = nullptr;
    size_t receivedObjectCount = 0;

    // What the parcel's readers take next: an offset in the data and indexes.
    size_t position = 0;
    size_t nextObject = 0;
    size_t nextBinder = 0;
    size_t nextFd = 0;
    const char* malformed = nullptr;  // what a reader found wrong first (a literal)

  private:
    ParcelContents() = default;
    ~ParcelContents() = default;
    void clear();

    template <typename Visitor>
    static void visitBinders(uint8_t* bytes, const binder_size_t* offsets, size_t count,
                             Visitor visit) {
        for (size_t i = 0; i < count; ++i) {
            auto* header = reinterpret_cast<binder_object_header*>(bytes + offsets[i]);
            if (header->type != BINDER_TYPE_BINDER && header->type != BINDER_TYPE_HANDLE) continue;
            if (!visit(reinterpret_cast<flat_binder_object*>(header))) return;
        }
    }

    friend struct ParcelContentsStore;
    std::unique_ptr<uint64_t[]> mStorage;
    size_t mStorageSize = 0;  // bytes
};

}  // namespace android::hardware
