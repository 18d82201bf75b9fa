/** System wake locks on Linux: the kernel's where it has them, else a table in memory. */
#pragma once

#include <mutex>
#include <set>
#include <string>

namespace host {

/** Wake locks by name. Any thread. */
class WakeLocks {
  public:
    /** `folder` is where the kernel keeps its files wake_lock and wake_unlock. */
    explicit WakeLocks(std::string folder) : mFolder(std::move(folder)) {}

    /**
     * Takes or drops the lock `id`. Returns the length of `id`, or a negative errno: that of the
     * write to the kernel's file, or -EINVAL for dropping a lock of the table that is not held.
     */
    int acquire(const std::string& id);
    int release(const std::string& id);

    /** Returns the locks of the table, which is used if the kernel's file cannot be opened. */
    std::set<std::string> held() const;

  private:
    const std::string mFolder;
    mutable std::mutex mMutex;
    std::set<std::string> mHeld;  // guarded by mMutex
};

/** The locks that acquire_wake_lock and release_wake_lock work on; lives as long as the process. */
WakeLocks& systemWakeLocks();

}  // namespace host
