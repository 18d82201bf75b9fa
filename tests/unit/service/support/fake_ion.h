/** A buffer library of the tests, in the place of the platform's, and shared buffers to map. */
#pragma once

#include <cutils/native_handle.h>
#include <hidl/HidlSupport.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "support/log_capture.h"

/** The results of the library's next calls, and the calls that it received. */
struct FakeIon {
    /** The device that fails to open, counted from 1; 0 for none. */
    int failing_open = 0;
    int import_result = 0;
    int free_result = 0;
    int close_result = 0;
    bool legacy = false;
    /** Whether a device's descriptor is 0, as in a process without a standard input. */
    bool opens_as_zero = false;
    /** Called with the number of a device that is about to be closed. */
    std::function<void(int)> closing;

    /** The calls and what noteEvent() adds: "open 1", "import 1", "free 1", "close 1" with the
     * number of the device. */
    std::vector<std::string> events;
    int opened = 0;
    std::map<int, int> devices;     // the number of the device behind each open descriptor
    std::vector<int> imported_fds;  // what was imported, in order
    std::vector<int> device_fds;    // the descriptors of all devices, in order
    std::vector<int> freed_handles;

    int device(int fd) const {
        const auto found = devices.find(fd);
        return found == devices.end() ? 0 : found->second;
    }
};
/** A test resets and reads it while no call is running; calls may come from several threads. */
inline FakeIon gIon;
inline std::mutex gIonMutex;

/** Adds to the library's events, so that a test sees the order of all that happens. */
inline void noteEvent(const std::string& event) {
    std::lock_guard<std::mutex> lock(gIonMutex);
    gIon.events.push_back(event);
}

/** The region's line about a mapping that failed. */
inline LogLine mapFailure(int error) {
    return {ANDROID_LOG_ERROR, "QorTvApiChannelListImpl(service)", "",
            std::string("mmap failed: ") + strerror(error) + "\n"};
}

/** A shared buffer of `size` bytes, which are 0xee, and a handle that carries its descriptor. */
class SharedBuffer {
  public:
    explicit SharedBuffer(size_t size) : mSize(size), mFd(memfd_create("records", MFD_CLOEXEC)) {
        if (ftruncate(mFd, static_cast<off_t>(size)) != 0) abort();
        const std::vector<uint8_t> filling(size, 0xee);
        if (pwrite(mFd, filling.data(), size, 0) != static_cast<ssize_t>(size)) abort();
        mHandle = native_handle_create(1, 0);
        mHandle->data[0] = mFd;
    }
    ~SharedBuffer() {
        native_handle_delete(mHandle);
        close(mFd);
    }
    SharedBuffer(const SharedBuffer&) = delete;
    SharedBuffer& operator=(const SharedBuffer&) = delete;

    ::android::hardware::hidl_handle handle() const {
        return ::android::hardware::hidl_handle(mHandle);
    }
    /** What the client sees. */
    std::vector<uint8_t> bytes() const {
        std::vector<uint8_t> content(mSize);
        if (pread(mFd, content.data(), mSize, 0) != static_cast<ssize_t>(mSize)) abort();
        return content;
    }

  private:
    size_t mSize;
    int mFd;
    native_handle_t* mHandle;
};
