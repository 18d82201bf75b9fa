/** A client's shared buffer, mapped by the service while the middleware fills it with records. */
#pragma once

#include <hidl/HidlSupport.h>
#include <ion/ion.h>

#include <cstdint>

namespace qortvapi {

/**
 * Construct, `getPointer` once, let the middleware write, `commit`. What is written is visible to
 * the client at once. One thread at a time.
 */
class QorTvApiShareMemory {
  public:
    /**
     * Opens the buffer device and imports the first descriptor of `handle`, which is copied.
     * `size`, in bytes, is what will be mapped, whatever the buffer holds. A failure is logged.
     */
    QorTvApiShareMemory(const ::android::hardware::hidl_handle& handle, uint32_t size);
    ~QorTvApiShareMemory();
    QorTvApiShareMemory(const QorTvApiShareMemory&) = delete;
    QorTvApiShareMemory& operator=(const QorTvApiShareMemory&) = delete;

    /** 0 once the device is open, also when the import failed; negative: the region is unusable. */
    int32_t getStatus() const { return m_status; }

    /** Whether there is a buffer to map: false without a device, for a handle without a descriptor,
     * and after the commit. */
    bool hasDescriptor() const { return m_share_fd >= 0; }

    /**
     * Maps the buffer, readable, writable and shared, and returns its address, the same one in each
     * further call. Returns null on failure, also for a file that lacks one of the region's pages;
     * further calls then return the failed mapping's value.
     */
    void* getPointer();

    /** Unmaps the buffer and closes the device. Later calls, and the destructor's, do nothing more.
     */
    void commit();

  private:
    bool endsPagesBeforeRegion() const;

    int32_t m_ion_fd = -1;
    int32_t m_share_fd = -1;  // the handle's, closed with it
    ::android::hardware::hidl_handle m_handle;
    uint32_t m_size;
    ion_user_handle_t m_ion_handle = -1;
    void* m_address = nullptr;
    int32_t m_status = -1;
};

}  // namespace qortvapi
