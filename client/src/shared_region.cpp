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

/** Size of a huge page. Large regions are multiples of it, so that the kernel can use huge pages
 * for all of their memory. */
constexpr size_t kHugePage = 2 << 20;

size_t roundedUp(size_t bytes) {
    return bytes < kHugePage ? bytes : (bytes + kHugePage - 1) / kHugePage * kHugePage;
}

/** Returns the descriptor of a memory file whose size is sealed, or -1 with errno set. */
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
    // The service maps the region for every read, which costs time for each page. Huge pages save
    // most of it, if they are allocated before the service maps them. Both calls may fail or do
    // nothing where the system has no huge pages for shared memory; the region works all the same.
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
