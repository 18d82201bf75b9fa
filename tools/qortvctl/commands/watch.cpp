// qortvctl watch: prints the television's notifications.
#include <fmt/format.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <variant>

#include "qortv/subscription.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/waiting/interrupts.h"

namespace qortvctl {

namespace {

using std::chrono::steady_clock;

constexpr char kWatchHelp[] =
        R"(Ends with Ctrl-C. Waits for a service that dies and registers with it again, and says so on
standard error. With --count and --for, fewer notifications than N are a failure (exit status 1).

Examples:
  qortvctl watch
  qortvctl watch --count 1 --for 30
  qortvctl watch --json | jq -c 'select(.notification == "notifyScan")')";

struct WatchOptions {
    uint64_t count = 0;                              ///< end after so many; 0: never
    std::optional<std::chrono::milliseconds> limit;  ///< end after this time
};

std::string toJsonLine(const qortv::Notification& notification) {
    nlohmann::ordered_json fields = nlohmann::ordered_json::object();
    for (const auto& field : notification.fields) {
        std::visit([&](const auto& value) { fields[field.name] = value; }, field.value);
    }
    const nlohmann::ordered_json line = {{"notification", notification.method}, {"fields", fields}};
    // dump() must not fail for a text of the middleware that is not UTF-8.
    return line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

/**
 * Prints notifications on the runtime's threads, at most `count` of them (0: no limit). Wakes the
 * main thread when it is done; a failure to write is kept for finish().
 */
class NotificationPrinter : public qortv::Listener {
  public:
    NotificationPrinter(const WakeUp& wakeUp, bool json, uint64_t count)
        : mWakeUp(wakeUp), mJson(json), mCount(count) {}

    void onNotification(const qortv::Notification& notification) override {
        std::lock_guard lock(mMutex);
        if (mDone) return;
        try {
            printLine(mJson ? toJsonLine(notification) : toString(notification));
            mDone = ++mPrinted == mCount;
        } catch (...) {
            mFailure = std::current_exception();
            mDone = true;
        }
        if (mDone) mWakeUp.wake();
    }

    void onDisconnected() override {
        std::fputs("qortvctl: the service is gone, waiting for it to come back\n", stderr);
    }

    void onConnected() override {
        std::fputs("qortvctl: the service is back, listening again\n", stderr);
    }

    /** Whether the count was reached or writing failed. */
    bool done() {
        std::lock_guard lock(mMutex);
        return mDone;
    }

    /**
     * Stops printing and returns how many notifications were printed.
     *
     * @throws what printLine() threw
     */
    uint64_t finish() {
        std::lock_guard lock(mMutex);
        mDone = true;
        if (mFailure) std::rethrow_exception(mFailure);
        return mPrinted;
    }

  private:
    const WakeUp& mWakeUp;
    const bool mJson;
    const uint64_t mCount;
    std::mutex mMutex;
    uint64_t mPrinted = 0;
    bool mDone = false;
    std::exception_ptr mFailure;
};

int watch(const CommonOptions& common, const WatchOptions& options) {
    const WakeUp wakeUp;
    NotificationPrinter printer(wakeUp, common.json, options.count);
    qortv::Subscription subscription(printer, common.timeout);

    // From here on a signal is the ordinary end; until here it ends the process.
    Interrupts interrupts(wakeUp);
    std::fputs("qortvctl: listening\n", stderr);
    const auto end =
            options.limit ? steady_clock::now() + *options.limit : steady_clock::time_point::max();

    bool timeIsUp = false;
    while (!timeIsUp && !printer.done() && !interrupts.takeSignal()) {
        timeIsUp = !wakeUp.waitUntil(end);
    }
    const uint64_t printed = printer.finish();
    if (timeIsUp && printed < options.count) {
        fmt::print(stderr, "qortvctl: heard {} of {} notifications in {} s\n", printed,
                   options.count, static_cast<double>(options.limit->count()) / 1000);
        return kFailure;
    }
    return kOk;
}

}  // namespace

void addWatch(CommandLine& commandLine) {
    const auto options = std::make_shared<WatchOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "watch", "Print notifications, one line each", kWatchHelp,
            [options](const CommonOptions& common) { return watch(common, *options); });
    command.add_option("--count", options->count, "End after N notifications")
            ->check(atLeastOne())
            ->type_name("N");
    addSeconds(command, "--for", options->limit, "End after so many seconds");
}

}  // namespace qortvctl
