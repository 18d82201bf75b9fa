// qortvctl config watch: prints changes of settings.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "qortv/configuration.h"
#include "qortv/subscription.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/setting_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/utf8.h"
#include "qortvctl/waiting/event_queue.h"
#include "qortvctl/waiting/interrupts.h"

namespace qortvctl {

namespace {

using qortv::Configuration;
using qortv::ConfigurationChange;
using std::chrono::steady_clock;

constexpr char kConfigWatchHelp[] =
        R"(Prints a line for each change, whoever makes it: the key and its new value. Without KEY: of all
settings that are known. Ends with Ctrl-C. With --count and --for, fewer changes than N are a
failure (exit status 1). With --json: {"key", "value", "text"}.

Examples:
  qortvctl config watch
  qortvctl config watch sound.volume sound.mute
  qortvctl config watch --count 1 --for 30 --json)";

struct ConfigWatchOptions {
    std::vector<std::string> keys;                   ///< empty: all that are known
    uint64_t count = 0;                              ///< end after so many changes; 0: never
    std::optional<std::chrono::milliseconds> limit;  ///< end after this time
};

/** Hands changes of settings to the main thread. */
class ChangeEvents : public qortv::ConfigurationListener {
  public:
    ChangeEvents(const WakeUp& wakeUp, const std::vector<std::string>& keys)
        : ConfigurationListener(keys), mWakeUp(wakeUp), mQueue(wakeUp) {}

    void onConfigurationChange(const ConfigurationChange& change) override { mQueue.push(change); }
    void onDisconnected() override {
        std::fputs("qortvctl: the service is gone, waiting for it to come back\n", stderr);
    }
    void onConnected() override {
        mReconnected = true;
        mWakeUp.wake();
    }

    std::optional<ConfigurationChange> take() { return mQueue.take(); }

    /** Whether the service came back since the last call. Keys must be registered anew then. */
    bool takeReconnected() { return mReconnected.exchange(false); }

  private:
    const WakeUp& mWakeUp;
    EventQueue<ConfigurationChange> mQueue;
    std::atomic<bool> mReconnected{false};
};

/** A connection to the service, and the keys that are registered through it. */
struct Registration {
    Registration(std::chrono::milliseconds timeout, const std::vector<std::string>& keys)
        : configuration(connectTo<Configuration>(timeout)), watch(configuration, keys) {}

    Configuration configuration;
    qortv::ConfigurationWatch watch;
};

void printChange(Configuration& configuration, const ConfigurationChange& change, bool json) {
    auto item = configuration.item(change.key);
    // A number is in the change itself, and may have changed again since. A text is not.
    if (!item.isText()) item.value = change.value;
    if (json) {
        printLine(valueToJson(item).dump());
    } else {
        printLine(withoutControls(item.key + " " + item.text()));
    }
}

/** Prints the changes that have come, at most `most`. Returns how many. */
uint64_t printChanges(Configuration& configuration, ChangeEvents& events, uint64_t most,
                      bool json) {
    uint64_t count = 0;
    while (count < most) {
        const auto change = events.take();
        if (!change) break;
        printChange(configuration, *change, json);
        ++count;
    }
    return count;
}

/** The exit status when the time limit has passed; a count that was not reached is a failure. */
int exitStatusAtLimit(const ConfigWatchOptions& options, uint64_t printed) {
    if (options.count == 0) return kOk;
    fmt::print(stderr, "qortvctl: heard {} of {} changes in {} s\n", printed, options.count,
               static_cast<double>(options.limit->count()) / 1000);
    return kFailure;
}

int configWatch(const CommonOptions& common, const ConfigWatchOptions& options) {
    const WakeUp wakeUp;
    const auto keys = options.keys.empty() ? Configuration::keys() : options.keys;
    ChangeEvents events(wakeUp, keys);
    const qortv::Subscription subscription(events, common.timeout);
    // From here on a signal is the ordinary end, and the registrations are taken back.
    Interrupts interrupts(wakeUp);
    auto registration = std::make_unique<Registration>(common.timeout, keys);
    std::fputs("qortvctl: listening\n", stderr);
    const auto end =
            options.limit ? steady_clock::now() + *options.limit : steady_clock::time_point::max();
    const uint64_t most = options.count == 0 ? UINT64_MAX : options.count;
    uint64_t printed = 0;
    while (!interrupts.takeSignal()) {
        try {
            if (events.takeReconnected()) {
                registration = std::make_unique<Registration>(common.timeout, keys);
                std::fputs("qortvctl: the service is back, listening again\n", stderr);
            }
            printed +=
                    printChanges(registration->configuration, events, most - printed, common.json);
        } catch (const qortv::Error& error) {
            // The subscription notices this too, and reports when the service is back.
            if (error.kind() != qortv::Error::Kind::kLost) throw;
        }
        if (printed == most) return kOk;
        if (!wakeUp.waitUntil(end)) return exitStatusAtLimit(options, printed);
    }
    return kOk;
}

}  // namespace

void addConfigWatch(CommandLine& commandLine, CLI::App& config) {
    const auto options = std::make_shared<ConfigWatchOptions>();
    auto& command = commandLine.addCommand(
            config, "watch", "Print changes as they happen", kConfigWatchHelp,
            [options](const CommonOptions& common) { return configWatch(common, *options); });
    command.add_option("KEY", options->keys, "Only these");
    command.add_option("--count", options->count, "End after N changes")
            ->check(atLeastOne())
            ->type_name("N");
    addSeconds(command, "--for", options->limit, "End after so many seconds");
}

}  // namespace qortvctl
