#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <mutex>
#include <nlohmann/json.hpp>
#include <system_error>

#include "commands.h"
#include "output.h"
#include "qortv/subscription.h"

namespace qortvctl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/** Set by the signal handler and by the listener; the main thread sleeps on it. */
int sWakeUp = -1;

void wakeUp() {
    const uint64_t one = 1;
    // The counter of an eventfd that is not read cannot overflow here, so nothing can fail.
    [[maybe_unused]] const ssize_t written = write(sWakeUp, &one, sizeof one);
}

void onSignal(int) {
    const int saved = errno;
    wakeUp();
    errno = saved;
}

std::string toJsonLine(const qortv::Notification& notification) {
    nlohmann::ordered_json fields = nlohmann::ordered_json::object();
    for (const auto& field : notification.fields) {
        std::visit([&](const auto& value) { fields[field.name] = value; }, field.value);
    }
    const nlohmann::ordered_json line = {{"notification", notification.method}, {"fields", fields}};
    // A text of the middleware that is not UTF-8 must not end the watch.
    return line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/** Prints what it hears, up to the count; keeps the first failure to write for the main thread. */
class Printer : public qortv::Listener {
  public:
    Printer(bool json, uint64_t count) : mJson(json), mCount(count) {}

    void onNotification(const qortv::Notification& notification) override {
        std::lock_guard lock(mMutex);
        if (mDone) return;
        try {
            printLine(mJson ? toJsonLine(notification) : toString(notification));
            mDone = ++mHeard == mCount;
        } catch (...) {
            mFailure = std::current_exception();
            mDone = true;
        }
        if (mDone) wakeUp();
    }

    void onDisconnected() override {
        std::fputs("qortvctl: the service is gone, waiting for it to come back\n", stderr);
    }

    void onConnected() override {
        std::fputs("qortvctl: the service is back, listening again\n", stderr);
    }

    /** Ends the printing; returns how many notifications were printed. */
    uint64_t finish() {
        std::lock_guard lock(mMutex);
        mDone = true;
        if (mFailure) std::rethrow_exception(mFailure);
        return mHeard;
    }

  private:
    const bool mJson;
    const uint64_t mCount;
    std::mutex mMutex;
    uint64_t mHeard = 0;
    bool mDone = false;
    std::exception_ptr mFailure;
};

/** Sleeps until woken; true when the time passed instead. */
bool sleepFor(const std::optional<milliseconds>& limit) {
    const auto end = steady_clock::now() + limit.value_or(milliseconds{0});
    for (;;) {
        pollfd waiting = {sWakeUp, POLLIN, 0};
        milliseconds left{-1};
        if (limit) left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        if (limit && left <= milliseconds{0}) return true;
        const auto step = std::min<milliseconds::rep>(left.count(), 1000 * 1000);
        const int ready = poll(&waiting, 1, static_cast<int>(step));
        if (ready > 0) return false;
        if (ready < 0 && errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "poll");
        }
    }
}

}  // namespace

int watch(const Common& common, const WatchOptions& options) {
    sWakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (sWakeUp < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    Printer printer(common.json, options.count);
    qortv::Subscription subscription(printer, common.timeout);

    // From here an interrupt is the ordinary end; before it, it simply ends the process.
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::fputs("qortvctl: listening\n", stderr);

    const bool timeIsUp = sleepFor(options.limit);
    const uint64_t heard = printer.finish();
    if (timeIsUp && heard < options.count) {
        fmt::print(stderr, "qortvctl: heard {} of {} notifications in {} s\n", heard, options.count,
                   static_cast<double>(options.limit->count()) / 1000);
        return kFailure;
    }
    return kOk;
}

}  // namespace qortvctl
