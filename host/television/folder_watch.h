/** Tells when the streams in a folder changed. */
#pragma once

#include <chrono>
#include <string>

namespace television {

/**
 * Watches one folder with inotify, also one that does not exist yet. One thread waits; any thread
 * may wake it.
 */
class FolderWatch {
  public:
    /** `calm` is how long nothing may change before a change counts: copying a file takes a while.
     */
    FolderWatch(std::string folder, std::chrono::milliseconds calm);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /** Waits for a change; false when `stop` was called. */
    bool wait();
    /** Ends all waiting, now and later. */
    void stop();

  private:
    bool watch();
    bool drain();
    int poll(std::chrono::milliseconds timeout) const;

    const std::string mFolder;
    const std::chrono::milliseconds mCalm;
    int mNotify = -1;  ///< inotify
    int mStop = -1;    ///< eventfd
    int mWatch = -1;   ///< -1 while the folder is not there
};

}  // namespace television
