// qortvctl config get and set: the television's settings; the group that config watch belongs to.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "qortv/configuration.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/setting_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Configuration;
using qortv::ConfigurationItem;

constexpr char kConfigHelp[] =
        R"(docs/configuration.md tells what the settings mean.

Examples:
  qortvctl config get
  qortvctl config set picture.mode cinema
  qortvctl config watch sound.volume)";

constexpr char kGetHelp[] =
        R"(Without KEY: all settings that are known. One that is disabled depends on another that is off.
With --json: {"key", "value": number or text, "text", "least", "greatest", "choices", "visible",
"enabled"}, in an array without KEY.

Examples:
  qortvctl config get
  qortvctl config get picture.brightness
  qortvctl config get --json | jq -r '.[] | select(.enabled) | .key')";

constexpr char kSetHelp[] =
        R"(VALUE is a number, the name of a choice, or a text; an empty text stands for the one that was
delivered. Values that a setting cannot have are refused (exit status 1). One that is disabled is
set too, which is said on standard error.

Examples:
  qortvctl config set picture.brightness 60
  qortvctl config set picture.mode cinema
  qortvctl config set general.device_name "Living room")";

/** All settings that this television has of those that the client library knows. */
std::vector<ConfigurationItem> readAll(Configuration& configuration) {
    std::vector<ConfigurationItem> items;
    for (const auto& key : Configuration::keys()) {
        try {
            items.push_back(configuration.item(key));
        } catch (const qortv::Error& error) {
            if (error.kind() != qortv::Error::Kind::kRefused) throw;
        }
    }
    return items;
}

void printTable(const std::vector<ConfigurationItem>& items) {
    Table table({{"KEY"}, {"VALUE"}, {"CAN BE"}, {"FLAGS"}});
    for (const auto& item : items) {
        table.add({item.key, item.text(), item.canBe(), flagsText(item)});
    }
    table.print();
}

int getAll(const CommonOptions& common) {
    auto configuration = connectTo<Configuration>(common.timeout);
    const auto items = readAll(configuration);
    if (common.json) {
        auto array = nlohmann::ordered_json::array();
        for (const auto& item : items) array.push_back(toJson(item));
        printLine(array.dump(2));
    } else {
        printTable(items);
    }
    return kOk;
}

int getOne(const CommonOptions& common, const std::string& key) {
    auto configuration = connectTo<Configuration>(common.timeout);
    const auto item = configuration.item(key);
    if (common.json) {
        printLine(toJson(item).dump(2));
    } else {
        printTable({item});
    }
    return kOk;
}

int set(const CommonOptions& common, const std::string& key, const std::string& value) {
    auto configuration = connectTo<Configuration>(common.timeout);
    configuration.setText(key, value);
    const auto item = configuration.item(key);
    if (common.json) {
        printLine(toJson(item).dump(2));
    } else {
        printLine(withoutControls(item.key + " is " + item.text()));
    }
    if (!item.enabled) fmt::print(stderr, "qortvctl: {} is disabled now\n", item.key);
    return kOk;
}

void addGet(CommandLine& commandLine, CLI::App& config) {
    const auto key = std::make_shared<std::string>();
    auto& command =
            commandLine.addCommand(config, "get", "Show settings, and what they can be", kGetHelp,
                                   [key](const CommonOptions& common) {
                                       return key->empty() ? getAll(common) : getOne(common, *key);
                                   });
    command.add_option("KEY", *key, "Such as picture.brightness");
}

void addSet(CommandLine& commandLine, CLI::App& config) {
    const auto key = std::make_shared<std::string>();
    const auto value = std::make_shared<std::string>();
    auto& command = commandLine.addCommand(
            config, "set", "Change a setting", kSetHelp,
            [key, value](const CommonOptions& common) { return set(common, *key, *value); });
    command.add_option("KEY", *key, "Such as picture.brightness")->required();
    command.add_option("VALUE", *value, "Its new value")->required();
}

}  // namespace

void addConfig(CommandLine& commandLine) {
    auto& group = commandLine.addGroup(commandLine.program(), "config",
                                       "Show and change the settings", kConfigHelp, getAll);
    addGet(commandLine, group);
    addSet(commandLine, group);
    addConfigWatch(commandLine, group);
}

}  // namespace qortvctl
