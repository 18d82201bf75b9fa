#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiShareMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "log.h"

namespace qortvapi {
namespace {

// A region up to this size, in bytes, is mapped with all its pages at once: page faults while the
// middleware writes would cost more than the writing. A larger region may not be written to its
// end.
constexpr uint32_t kPopulateLimit = 16 << 20;

}  // namespace

QorTvApiShareMemory::QorTvApiShareMemory(const ::android::hardware::hidl_handle& handle,
                                         uint32_t size)
    : m_handle(handle), m_size(size) {
    m_ion_fd = ion_open();
    if (m_ion_fd < 0) {
        TVAPI_LOG("ion_open failed:%d", m_ion_fd);
        return;
    }
    const native_handle_t* native_handle = m_handle.getNativeHandle();
    if (native_handle != nullptr && native_handle->numFds > 0) {
        m_share_fd = native_handle->data[0];
    } else {
        TVAPI_LOG("getNativeHandle null");
    }
    const int ret = ion_import(m_ion_fd, m_share_fd, &m_ion_handle);
    if (ret < 0) {
        TVAPI_DEBUG("ion_import failed:%d %d ret=%d(%s)", m_ion_fd, m_share_fd, ret,
                    strerror(errno));
    }
    TVAPI_DEBUG("2, m_ion_fd:%d, m_share_fd:%d", m_ion_fd, m_share_fd);
    m_status = 0;
}

QorTvApiShareMemory::~QorTvApiShareMemory() {
    commit();
    TVAPI_DEBUG("~");
}

// Returns whether the region has pages that the file lacks. A dma-buf cannot be mapped beyond its
// end, a file can: an access to a page beyond its last one would end the service with a signal. A
// memory file is sealed where possible, so that it cannot be shortened after this check.
bool QorTvApiShareMemory::endsPagesBeforeRegion() const {
    fcntl(m_share_fd, F_ADD_SEALS, F_SEAL_SHRINK);
    struct stat buffer = {};
    if (fstat(m_share_fd, &buffer) != 0 || !S_ISREG(buffer.st_mode)) return false;
    const auto page = static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
    const uint64_t pages = (static_cast<uint64_t>(buffer.st_size) + page - 1) / page;
    return pages * page < m_size;
}

void* QorTvApiShareMemory::getPointer() {
    if (m_address != nullptr) return m_address;
    if (endsPagesBeforeRegion()) {
        m_address = MAP_FAILED;
        errno = EINVAL;
    } else {
        const int populate = m_size <= kPopulateLimit ? MAP_POPULATE : 0;
        m_address =
                mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_SHARED | populate, m_share_fd, 0);
    }
    if (m_address == MAP_FAILED) {
        __android_log_print(ANDROID_LOG_ERROR, LOG_TAG, "mmap failed: %s\n", strerror(errno));
        return nullptr;
    }
    return m_address;
}

void QorTvApiShareMemory::commit() {
    TVAPI_DEBUG("commit %d %d", m_ion_fd, m_share_fd);
    if (m_address != nullptr) {
        if (m_address != MAP_FAILED) munmap(m_address, m_size);
        m_address = nullptr;
        if (m_ion_fd != 0 && ion_is_legacy(m_ion_fd) != 0) {
            const int ret = ion_free(m_ion_fd, m_ion_handle);
            if (ret < 0) TVAPI_LOG("ion_close failed:%d", ret);
        }
    }
    m_share_fd = -1;
    if (m_ion_fd >= 0) {
        const int ret = ion_close(m_ion_fd);
        if (ret < 0) TVAPI_LOG("ion_close failed:%d %d", m_ion_fd, ret);
        m_ion_fd = -1;
    }
}

}  // namespace qortvapi
