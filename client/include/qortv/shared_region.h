/** Memory that an application lends to the service, which writes records straight into it. */
#pragma once

#include <cstddef>
#include <type_traits>

#include <hidl/HidlSupport.h>

namespace qortv {

/**
 * An anonymous memory file, mapped here and handed to the service as a handle. It is sealed:
 * nobody, the service included, can shrink it under our mapping. A memory file made without this
 * class is sealed against shrinking by the service, if it allows sealing: after the first read it
 * cannot be truncated. Reuse one region for many reads; it is one reader's: use it from one thread
 * at a time.
 */
class SharedRegion {
  public:
    /** A region of `bytes` bytes; 0 makes an empty one that reserve() fills later. */
    explicit SharedRegion(size_t bytes = 0);
    ~SharedRegion();
    SharedRegion(const SharedRegion&) = delete;
    SharedRegion& operator=(const SharedRegion&) = delete;

    /**
     * Makes the region at least `bytes` long. A region that is long enough stays as it is; another
     * is replaced by a new one filled with zeros, so views and handles taken before end here.
     *
     * @throws Error kSystem when memory or descriptors run out; the old region is kept then
     */
    void reserve(size_t bytes);

    /** Length in bytes. */
    size_t size() const { return mSize; }

    /** The region as an argument of a call. Borrowed: valid until reserve() or the destructor. */
    android::hardware::hidl_handle handle() const;

    /** A view of records lying back to back. */
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
     * The first `count` records. The service may still write to them until its call has returned;
     * valid until reserve() or the destructor.
     *
     * @throws Error kArgument when the region is shorter than that
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
