#define LOG_TAG "power"

#include "hardware_legacy/power.h"

#include <android/log.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "host/wake_locks.h"

namespace host {
namespace {

/** Returns the length of `id`, or the negative errno of the write; nothing if there is no such
 * file.
 */
std::optional<int> writeToKernel(const std::string& file, const std::string& id) {
    const int fd = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    const ssize_t written = write(fd, id.data(), id.size());
    const int result = written < 0 ? -errno : static_cast<int>(written);
    close(fd);
    return result;
}

void logChange(const char* change, const std::string& id) {
    __android_log_print(ANDROID_LOG_INFO, LOG_TAG, "wake lock %s %s", id.c_str(), change);
}

}  // namespace

int WakeLocks::acquire(const std::string& id) {
    if (const auto written = writeToKernel(mFolder + "/wake_lock", id)) return *written;
    std::lock_guard<std::mutex> lock(mMutex);
    if (mHeld.insert(id).second) logChange("taken", id);
    return static_cast<int>(id.size());
}

int WakeLocks::release(const std::string& id) {
    if (const auto written = writeToKernel(mFolder + "/wake_unlock", id)) return *written;
    std::lock_guard<std::mutex> lock(mMutex);
    if (mHeld.erase(id) == 0) return -EINVAL;
    logChange("dropped", id);
    return static_cast<int>(id.size());
}

std::set<std::string> WakeLocks::held() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mHeld;
}

WakeLocks& systemWakeLocks() {
    static WakeLocks& locks =
            *new WakeLocks("/sys/power");  // never destroyed: threads may outlive main
    return locks;
}

}  // namespace host

int acquire_wake_lock(int, const char* id) {
    return host::systemWakeLocks().acquire(id);
}

int release_wake_lock(const char* id) {
    return host::systemWakeLocks().release(id);
}
