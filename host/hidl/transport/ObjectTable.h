// The objects that two processes hold of each other.
//
// A local object that was sent to the peer is kept under a number, with a strong reference and a
// count of how often it was sent. The peer has one RemoteBinder for the number, which counts how
// often it was received. When the peer's last reference goes, the RemoteBinder tells its count; the
// object's count goes down by that, and at 0 the object is let go. If the object was sent again
// meanwhile, the count stays above 0 and the object stays. Numbers are never used twice.
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

// Any thread. No method drops a last reference while it holds the lock; what is to be dropped is
// given to the caller.
class ObjectTable {
  public:
    explicit ObjectTable(Session* session) : mSession(session) {}

    // Describes `binder` to the peer. OK; INVALID_OPERATION for an object of a third process;
    // NO_MEMORY where the peer holds too many; DEAD_OBJECT after close().
    status_t send(const sp<IBinder>& binder, flat_binder_object* description);

    // The binder that the peer describes. Null reason if that is sound, else what is wrong (a
    // literal).
    const char* receive(const flat_binder_object& description, sp<IBinder>* binder);

    // The local object with this number; null if the peer has none such.
    sp<BHwBinder> find(uint64_t id);

    // The peer let go of object `id`, which it had been sent `count` times. The object if this was
    // the last reference, for the caller to drop. False if the peer never had that many.
    bool release(uint64_t id, uint32_t count, sp<IBinder>* dropped);

    // The last reference of `remote` is gone: how often it was received, to be told to the peer; 0
    // if a newer RemoteBinder has taken the number over.
    uint32_t forget(uint64_t id, const RemoteBinder* remote);

    // The peer is gone. Gives the local objects it held and the remote ones that are still referred
    // to.
    void close(std::vector<sp<IBinder>>* dropped, std::vector<sp<RemoteBinder>>* remotes);

    size_t exportedCount();

  private:
    struct Exported {
        sp<IBinder> binder;
        uint32_t sent;
    };
    struct Imported {
        wp<IBinder> reference;
        const RemoteBinder* remote;
        uint32_t received;
    };

    Session* const mSession;
    std::mutex mMutex;
    bool mClosed = false;
    uint64_t mLastId = 0;
    std::unordered_map<uint64_t, Exported> mExported;
    std::unordered_map<IBinder*, uint64_t> mExportedIds;
    std::unordered_map<uint64_t, Imported> mImported;
};

}  // namespace android::hardware::transport
