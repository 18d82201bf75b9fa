/** Memory that an application shares with the service, which writes records directly into it. */
#pragma once

#include <cstddef>
#include <type_traits>

#include <hidl/HidlSupport.h>

namespace qortv {

/**
 * An anonymous memory file that is mapped into this process and passed to the service as a handle.
 * Its size is sealed: nobody, not even the service, can shrink it while it is mapped. Not
 * thread-safe. Reuse a region for many reads.
 *
 * Memory files made without this class work too. The service seals them against shrinking, if they
 * allow it: after the first read they cannot be truncated.
 */
class SharedRegion {
  public:
    /** Makes a region of `bytes` bytes. With 0 it has no memory before reserve() is called. */
    explicit SharedRegion(size_t bytes = 0);
    ~SharedRegion();
    SharedRegion(const SharedRegion&) = delete;
    SharedRegion& operator=(const SharedRegion&) = delete;

    /**
     * Makes the region at least `bytes` long. A region that is long enough is not changed. A
     * shorter one is replaced by new memory, filled with zeros; its views and handles become
     * invalid.
     *
     * @throws Error kSystem when memory or file descriptors run out; the region is not changed then
     */
    void reserve(size_t bytes);

    /** Returns the length in bytes. */
    size_t size() const { return mSize; }

    /** Returns the region as an argument for calls, valid until reserve() or the destructor. */
    android::hardware::hidl_handle handle() const;

    /** A view of consecutive records. */
    template <typename Record>
    class Records {
      public:
        Records(const Record* first, size_t count) : mFirst(first), mCount(count) {}
        const Record* begin() const { return mFirst; }
        const Record* end() const { return mFirst + mCount; }
        size_t size() const { return mCount; }
        const Record& operator[](size_t index) const { return mFirst[index]; }

      private:
        const Record* mFirst;
        size_t mCount;
    };

    /**
     * Returns the first `count` records, valid until reserve() or the destructor. The service may
     * write to them until the call with the handle has returned.
     *
     * @throws Error kArgument when the region is too short
     */
    template <typename Record>
    Records<Record> records(size_t count) const {
        static_assert(std::is_trivially_copyable_v<Record>, "a record is a byte image");
        requireSpace(count, sizeof(Record));
        return {static_cast<const Record*>(mAddress), count};
    }

  private:
    void requireSpace(size_t count, size_t size) const;
    void release();

    void* mAddress = nullptr;
    size_t mSize = 0;
    native_handle_t* mHandle = nullptr;
};

}  // namespace qortv
