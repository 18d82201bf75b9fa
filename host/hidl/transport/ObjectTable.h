// The objects that two processes hold of each other.
//
// A local object that was sent to the peer is kept under a number, with a strong reference and a
// count of how often it was sent. The peer has one RemoteBinder for the number and counts how often
// it was received. When the last reference to the RemoteBinder goes, the peer sends that count; it
// is subtracted from the object's count, and at 0 the object is dropped. If the object was sent
// again meanwhile, the count stays above 0 and the object stays. Numbers are never used twice.
#pragma once

#include <linux/android/binder.h>

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <vector>

#include <hwbinder/IBinder.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

class RemoteBinder;
class Session;

// Any thread. No method drops a last reference while it holds the lock; it returns what is to be
// dropped to the caller.
class ObjectTable {
  public:
    explicit ObjectTable(Session* session) : mSession(session) {}

    // Describes `binder` to the peer and counts it as sent. Returns OK, INVALID_OPERATION for an
    // object of a third process, NO_MEMORY if the peer holds too many objects, DEAD_OBJECT after
    // close().
    status_t send(const sp<IBinder>& binder, flat_binder_object* description);

    // Finds the binder that the peer describes. Returns null, or what is wrong with the description
    // (a literal).
    const char* receive(const flat_binder_object& description, sp<IBinder>* binder);

    // Returns the local object with this number; null if the peer does not hold it.
    sp<BHwBinder> find(uint64_t id);

    // Subtracts `count` from the times that local object `id` was sent. At 0 the object is moved to
    // *dropped. Returns false if the peer does not hold the object that often.
    bool release(uint64_t id, uint32_t count, sp<IBinder>* dropped);

    // Removes the peer's object `id` after the last reference to `remote` is gone. Returns how
    // often it was received, to be sent to the peer; 0 if a newer RemoteBinder has the number.
    uint32_t forget(uint64_t id, const RemoteBinder* remote);

    // Empties the table because the peer is gone. Returns the local objects that it held and the
    // remote ones that are still referred to.
    void close(std::vector<sp<IBinder>>* dropped, std::vector<sp<RemoteBinder>>* remotes);

  private:
    struct Exported {
        sp<IBinder> binder;
        uint32_t sent;  // times, less those that the peer has released
    };
    struct Imported {
        wp<IBinder> reference;
        const RemoteBinder* remote;  // to be compared only
        uint32_t received;           // times
    };

    Session* const mSession;
    std::mutex mMutex;  // guards what follows
    bool mClosed = false;
    uint64_t mLastId = 0;
    std::unordered_map<uint64_t, Exported> mExported;     // local objects by number
    std::unordered_map<IBinder*, uint64_t> mExportedIds;  // their numbers
    std::unordered_map<uint64_t, Imported> mImported;     // the peer's objects by number
};

}  // namespace android::hardware::transport
