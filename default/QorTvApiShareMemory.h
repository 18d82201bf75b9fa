/** A client's shared buffer, mapped by the service while the middleware fills it with records. */
#pragma once

#include <hidl/HidlSupport.h>
#include <ion/ion.h>

#include <cstdint>

namespace qortvapi {

/**
 * Used in this order: constructor, `getPointer`, the middleware writes, `commit`. The client sees
 * the bytes as soon as they are written. One thread at a time.
 */
class QorTvApiShareMemory {
  public:
    /**
     * Opens the buffer device and imports the first descriptor of `handle`, which is copied.
     * `size` is the number of bytes that will be mapped, whatever the size of the buffer. A failure
     * is logged.
     */
    QorTvApiShareMemory(const ::android::hardware::hidl_handle& handle, uint32_t size);
    ~QorTvApiShareMemory();
    QorTvApiShareMemory(const QorTvApiShareMemory&) = delete;
    QorTvApiShareMemory& operator=(const QorTvApiShareMemory&) = delete;

    /** Returns 0 if the device is open, even if the import failed. Negative: the region is
     * unusable. */
    int32_t getStatus() const { return m_status; }

    /** Returns whether there is a buffer to map: false without a device, for a handle without a
     * descriptor, and after the commit. */
    bool hasDescriptor() const { return m_share_fd >= 0; }

    /**
     * Maps the buffer, readable, writable and shared, and returns its address. Further calls return
     * the same address. Returns null on failure, also for a file that ends before the region's last
     * page; further calls then return MAP_FAILED.
     */
    void* getPointer();

    /** Unmaps the buffer and closes the device. Later calls, and the destructor's, do nothing more.
     */
    void commit();

  private:
    bool endsPagesBeforeRegion() const;

    int32_t m_ion_fd = -1;
    int32_t m_share_fd = -1;  // belongs to m_handle, which closes it
    ::android::hardware::hidl_handle m_handle;
    uint32_t m_size;
    ion_user_handle_t m_ion_handle = -1;
    void* m_address = nullptr;
    int32_t m_status = -1;
};

}  // namespace qortvapi
