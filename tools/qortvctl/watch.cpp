#include <fmt/format.h>

#include <cstdio>
#include <exception>
#include <mutex>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "output.h"
#include "qortv/subscription.h"
#include "wake_up.h"

namespace qortvctl {

namespace {

using std::chrono::steady_clock;

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
    Printer(const WakeUp& wakeUp, bool json, uint64_t count)
        : mWakeUp(wakeUp), mJson(json), mCount(count) {}

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
        if (mDone) mWakeUp.ring();
    }

    void onDisconnected() override {
        std::fputs("qortvctl: the service is gone, waiting for it to come back\n", stderr);
    }

    void onConnected() override {
        std::fputs("qortvctl: the service is back, listening again\n", stderr);
    }

    /** Whether there is nothing more to print. */
    bool done() {
        std::lock_guard lock(mMutex);
        return mDone;
    }

    /** Ends the printing; returns how many notifications were printed. */
    uint64_t finish() {
        std::lock_guard lock(mMutex);
        mDone = true;
        if (mFailure) std::rethrow_exception(mFailure);
        return mHeard;
    }

  private:
    const WakeUp& mWakeUp;
    const bool mJson;
    const uint64_t mCount;
    std::mutex mMutex;
    uint64_t mHeard = 0;
    bool mDone = false;
    std::exception_ptr mFailure;
};

}  // namespace

int watch(const Common& common, const WatchOptions& options) {
    const WakeUp wakeUp;
    Printer printer(wakeUp, common.json, options.count);
    qortv::Subscription subscription(printer, common.timeout);

    // From here an interrupt is the ordinary end; before it, it simply ends the process.
    Interrupts interrupts(wakeUp);
    std::fputs("qortvctl: listening\n", stderr);
    const auto end =
            options.limit ? steady_clock::now() + *options.limit : steady_clock::time_point::max();

    bool timeIsUp = false;
    while (!timeIsUp && !printer.done() && !interrupts.take()) timeIsUp = !wakeUp.waitUntil(end);
    const uint64_t heard = printer.finish();
    if (timeIsUp && heard < options.count) {
        fmt::print(stderr, "qortvctl: heard {} of {} notifications in {} s\n", heard, options.count,
                   static_cast<double>(options.limit->count()) / 1000);
        return kFailure;
    }
    return kOk;
}

}  // namespace qortvctl
