#include "television/stream/folder_watch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "television/base/log.h"

namespace television {
namespace {

/** How often a missing folder is looked for, in multiples of the calm time. */
constexpr int kLookAgain = 4;
/** After how long changes that do not end are reported all the same, in multiples of the calm time.
 */
constexpr int kLongest = 20;

constexpr uint32_t kEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                             IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB | IN_ONLYDIR;

enum { kTimeOut = 0, kWoken = 1, kStopped = 2 };

}  // namespace

FolderWatch::FolderWatch(std::string folder, std::chrono::milliseconds calm,
                         std::function<bool(const std::string&)> concerns)
    : mFolder(std::move(folder)), mCalm(calm), mConcerns(std::move(concerns)) {
    mNotify = inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    mStop = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (mNotify < 0 || mStop < 0) {
        LOG_TV_WARN("cannot watch the folder of streams {}: {}; changes show after a restart",
                    mFolder, std::strerror(errno));
    }
    watch();
}

FolderWatch::~FolderWatch() {
    if (mNotify >= 0) close(mNotify);
    if (mStop >= 0) close(mStop);
}

/** Starts to watch the folder. Returns whether it is there. */
bool FolderWatch::watch() {
    mWatch = mNotify < 0 ? -1 : inotify_add_watch(mNotify, mFolder.c_str(), kEvents);
    return mWatch >= 0;
}

/** Takes all events of inotify that have come. Returns whether one was about the folder or about a
 * file whose changes are to be reported. */
bool FolderWatch::takeEvents() {
    alignas(inotify_event) char buffer[4096];
    bool any = false;
    for (;;) {
        const ssize_t got = read(mNotify, buffer, sizeof(buffer));
        if (got <= 0) return any;
        for (ssize_t at = 0; at < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            any = any || event->len == 0 || mConcerns(event->name);
            if ((event->mask & IN_MOVE_SELF) != 0) inotify_rm_watch(mNotify, event->wd);
            if ((event->mask & IN_IGNORED) != 0 && event->wd == mWatch) mWatch = -1;
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
}

/** Waits for an event of inotify (kWoken), a call of stop() (kStopped) or the time-out (kTimeOut);
 * a negative time-out never comes. */
int FolderWatch::poll(std::chrono::milliseconds timeout) const {
    pollfd files[] = {{mStop, POLLIN, 0}, {mNotify, POLLIN, 0}};
    const int ready = ::poll(files, 2, static_cast<int>(timeout.count()));
    if (ready < 0) return kTimeOut;
    if (files[0].revents != 0) return kStopped;
    return files[1].revents != 0 ? kWoken : kTimeOut;
}

bool FolderWatch::wait() {
    using Clock = std::chrono::steady_clock;
    bool changed = false;
    Clock::time_point first;
    for (;;) {
        if (mWatch < 0 && watch()) {
            // The folder has appeared, which counts as a change of all that is in it.
            if (!changed) first = Clock::now();
            changed = true;
        }
        const auto timeout = changed      ? mCalm
                             : mWatch < 0 ? kLookAgain * mCalm
                                          : std::chrono::milliseconds(-1);
        const int woken = poll(timeout);
        if (woken == kStopped) return false;
        const bool more = woken == kWoken && takeEvents();
        if (more && !changed) first = Clock::now();
        changed = changed || more;
        if (changed && (!more || Clock::now() - first > kLongest * mCalm)) return true;
    }
}

void FolderWatch::stop() {
    const uint64_t one = 1;
    if (write(mStop, &one, sizeof(one)) < 0) {
        LOG_TV_ERROR("cannot stop watching {}: {}", mFolder, std::strerror(errno));
    }
}

}  // namespace television
