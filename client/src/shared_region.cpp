#include "qortv/shared_region.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "qortv/error.h"

namespace qortv {

namespace {

/** A large region is a multiple of this, so that the kernel may back all of it with huge pages. */
constexpr size_t kHugePage = 2 << 20;

size_t roundedUp(size_t bytes) {
    return bytes < kHugePage ? bytes : (bytes + kHugePage - 1) / kHugePage * kHugePage;
}

/** A sealed memory file; -1 with errno when the system refuses. */
int makeMemoryFile(size_t bytes) {
    const int fd = memfd_create("qortv-region", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (fd < 0) return -1;
    if (ftruncate(fd, static_cast<off_t>(bytes)) == 0 &&
        fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) == 0) {
        return fd;
    }
    const int reason = errno;
    close(fd);
    errno = reason;
    return -1;
}

[[noreturn]] void throwSystemError(size_t bytes) {
    throw Error(Error::Kind::kSystem, "cannot make a shared region of " + std::to_string(bytes) +
                                              " bytes: " + std::strerror(errno));
}

}  // namespace

SharedRegion::SharedRegion(size_t bytes) {
    reserve(bytes);
}

SharedRegion::~SharedRegion() {
    release();
}

void SharedRegion::reserve(size_t bytes) {
    if (bytes <= mSize) return;
    bytes = roundedUp(bytes);
    const int fd = makeMemoryFile(bytes);
    if (fd < 0) throwSystemError(bytes);
    void* address = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    native_handle_t* handle = address == MAP_FAILED ? nullptr : native_handle_create(1, 0);
    if (handle == nullptr) {
        const int reason = errno;
        if (address != MAP_FAILED) munmap(address, bytes);
        close(fd);
        errno = reason;
        throwSystemError(bytes);
    }
    handle->data[0] = fd;
    // The service maps the region for every read, which costs by the page. Where the system allows
    // huge pages for shared memory they spare most of that, if they are there before the service
    // comes; elsewhere both are refused or do nothing, and no loss.
    madvise(address, bytes, MADV_HUGEPAGE);
    madvise(address, bytes, MADV_POPULATE_WRITE);
    release();
    mAddress = address;
    mSize = bytes;
    mHandle = handle;
}

android::hardware::hidl_handle SharedRegion::handle() const {
    return android::hardware::hidl_handle(mHandle);
}

void SharedRegion::requireSpace(size_t count, size_t size) const {
    if (count <= mSize / size) return;
    throw Error(Error::Kind::kArgument, "a shared region of " + std::to_string(mSize) +
                                                " bytes does not hold " + std::to_string(count) +
                                                " records of " + std::to_string(size));
}

void SharedRegion::release() {
    if (mHandle == nullptr) return;
    munmap(mAddress, mSize);
    native_handle_close(mHandle);
    native_handle_delete(mHandle);
    mAddress = nullptr;
    mSize = 0;
    mHandle = nullptr;
}

}  // namespace qortv
