#include "support/fake_ion.h"

#include <fcntl.h>
#include <ion/ion.h>

extern "C" int ion_open() {
    std::lock_guard<std::mutex> lock(gIonMutex);
    const int device = ++gIon.opened;
    gIon.events.push_back("open " + std::to_string(device));
    if (device == gIon.failing_open) return -1;
    const int fd = gIon.opens_as_zero ? 0 : open("/dev/null", O_RDWR | O_CLOEXEC);
    gIon.devices[fd] = device;
    gIon.device_fds.push_back(fd);
    return fd;
}

extern "C" int ion_import(int fd, int share_fd, ion_user_handle_t* handle) {
    std::lock_guard<std::mutex> lock(gIonMutex);
    gIon.events.push_back("import " + std::to_string(gIon.device(fd)));
    gIon.imported_fds.push_back(share_fd);
    if (gIon.import_result == 0) *handle = 1000 + gIon.device(fd);
    return gIon.import_result;
}

extern "C" int ion_free(int fd, ion_user_handle_t handle) {
    std::lock_guard<std::mutex> lock(gIonMutex);
    gIon.events.push_back("free " + std::to_string(gIon.device(fd)));
    gIon.freed_handles.push_back(handle);
    return gIon.free_result;
}

extern "C" int ion_is_legacy(int) {
    return gIon.legacy ? 1 : 0;
}

extern "C" int ion_close(int fd) {
    std::unique_lock<std::mutex> lock(gIonMutex);
    const int device = gIon.device(fd);
    if (gIon.closing) {
        lock.unlock();
        gIon.closing(device);
        lock.lock();
    }
    gIon.events.push_back("close " + std::to_string(device));
    gIon.devices.erase(fd);
    if (fd != 0) close(fd);
    return gIon.close_result;
}
