// qortvctl config: the television's settings.
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands.h"
#include "event_queue.h"
#include "output.h"
#include "qortv/configuration.h"
#include "qortv/subscription.h"
#include "wake_up.h"

namespace qortvctl {

namespace {

using qortv::Configuration;
using qortv::ConfigurationItem;
using std::chrono::steady_clock;

Configuration connectConfiguration(std::chrono::milliseconds timeout) {
    return Configuration(qortv::connect<Configuration::Interface>(timeout));
}

nlohmann::ordered_json toJson(const qortv::ConfigurationValue& value) {
    return std::visit([](const auto& plain) { return nlohmann::ordered_json(plain); }, value);
}

nlohmann::ordered_json toJson(const ConfigurationItem& item) {
    nlohmann::ordered_json json = {
            {"key", item.key}, {"value", toJson(item.value)}, {"text", item.text()}};
    if (!item.isText()) {
        json["least"] = item.least;
        json["greatest"] = item.greatest;
        json["choices"] = item.choices;
    }
    json["visible"] = item.visible;
    json["enabled"] = item.enabled;
    return json;
}

std::string flags(const ConfigurationItem& item) {
    if (!item.visible) return "hidden";
    return item.enabled ? "" : "disabled";
}

/** What there is to know of the keys; those that this television does not have are left out. */
std::vector<ConfigurationItem> known(Configuration& configuration,
                                     const std::vector<std::string>& keys) {
    std::vector<ConfigurationItem> items;
    for (const auto& key : keys) {
        try {
            items.push_back(configuration.item(key));
        } catch (const qortv::Error& error) {
            if (error.kind() != qortv::Error::Kind::kRefused) throw;
        }
    }
    return items;
}

void print(const std::vector<ConfigurationItem>& items) {
    Table table({{"KEY"}, {"VALUE"}, {"CAN BE"}, {"FLAGS"}});
    for (const auto& item : items) {
        table.add({item.key, item.text(), item.canBe(), flags(item)});
    }
    table.print();
}

/** Keeps the changes that it hears until the main thread asks. */
class Changes : public qortv::ConfigurationListener {
  public:
    Changes(const WakeUp& wakeUp, const std::vector<std::string>& keys)
        : ConfigurationListener(keys), mWakeUp(wakeUp), mQueue(wakeUp) {}

    void onConfigurationChange(const qortv::ConfigurationChange& change) override {
        mQueue.push(change);
    }
    void onDisconnected() override {
        std::fputs("qortvctl: the service is gone, waiting for it to come back\n", stderr);
    }
    void onConnected() override {
        mBack = true;
        mWakeUp.ring();
    }

    std::optional<qortv::ConfigurationChange> take() { return mQueue.take(); }
    /** Whether another service is there, which nothing is registered with yet. */
    bool takeBack() { return mBack.exchange(false); }

  private:
    const WakeUp& mWakeUp;
    EventQueue<qortv::ConfigurationChange> mQueue;
    std::atomic<bool> mBack{false};
};

/** A connection, and what is registered through it. */
struct Watching {
    Watching(std::chrono::milliseconds timeout, const std::vector<std::string>& keys)
        : configuration(connectConfiguration(timeout)), watch(configuration, keys) {}

    Configuration configuration;
    qortv::ConfigurationWatch watch;
};

void print(Configuration& configuration, const qortv::ConfigurationChange& change, bool json) {
    ConfigurationItem item = configuration.item(change.key);
    // Of a number the change that is told, even if another one has come since.
    if (!item.isText()) item.value = change.value;
    if (json) {
        const nlohmann::ordered_json line = {
                {"key", item.key}, {"value", toJson(item.value)}, {"text", item.text()}};
        printLine(line.dump());
    } else {
        printLine(withoutControls(item.key + " " + item.text()));
    }
}

/** Answers how many changes were printed. */
uint64_t printChanges(Watching& watching, Changes& changes, uint64_t most, bool json) {
    uint64_t count = 0;
    while (count < most) {
        const auto change = changes.take();
        if (!change) break;
        print(watching.configuration, *change, json);
        ++count;
    }
    return count;
}

}  // namespace

int configGet(const Common& common, const ConfigOptions& options) {
    auto configuration = connectConfiguration(common.timeout);
    if (options.key.empty()) {
        const auto items = known(configuration, Configuration::keys());
        if (common.json) {
            auto array = nlohmann::ordered_json::array();
            for (const auto& item : items) array.push_back(toJson(item));
            printLine(array.dump(2));
        } else {
            print(items);
        }
        return kOk;
    }
    const auto item = configuration.item(options.key);
    if (common.json) {
        printLine(toJson(item).dump(2));
    } else {
        print({item});
    }
    return kOk;
}

int configSet(const Common& common, const ConfigOptions& options) {
    auto configuration = connectConfiguration(common.timeout);
    configuration.setText(options.key, options.value);
    const auto item = configuration.item(options.key);
    if (common.json) {
        printLine(toJson(item).dump(2));
    } else {
        printLine(withoutControls(item.key + " is " + item.text()));
    }
    if (!item.enabled) fmt::print(stderr, "qortvctl: {} is disabled now\n", item.key);
    return kOk;
}

int configWatch(const Common& common, const ConfigOptions& options) {
    const WakeUp wakeUp;
    const auto keys = options.keys.empty() ? Configuration::keys() : options.keys;
    Changes changes(wakeUp, keys);
    const qortv::Subscription subscription(changes, common.timeout);
    // From here an interrupt is the ordinary end, and takes the registrations back.
    Interrupts interrupts(wakeUp);
    auto watching = std::make_unique<Watching>(common.timeout, keys);
    std::fputs("qortvctl: listening\n", stderr);
    const auto end = options.watch.limit ? steady_clock::now() + *options.watch.limit
                                         : steady_clock::time_point::max();
    const uint64_t most = options.watch.count == 0 ? UINT64_MAX : options.watch.count;
    uint64_t heard = 0;
    while (!interrupts.take()) {
        try {
            if (changes.takeBack()) {
                watching = std::make_unique<Watching>(common.timeout, keys);
                std::fputs("qortvctl: the service is back, listening again\n", stderr);
            }
            heard += printChanges(*watching, changes, most - heard, common.json);
        } catch (const qortv::Error& error) {
            // The subscription notices too, and tells when another service is there.
            if (error.kind() != qortv::Error::Kind::kLost) throw;
        }
        if (heard == most) return kOk;
        if (wakeUp.waitUntil(end)) continue;
        if (options.watch.count == 0) return kOk;
        fmt::print(stderr, "qortvctl: heard {} of {} changes in {} s\n", heard, most,
                   static_cast<double>(options.watch.limit->count()) / 1000);
        return kFailure;
    }
    return kOk;
}

}  // namespace qortvctl
