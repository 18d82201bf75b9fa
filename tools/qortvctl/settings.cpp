// The command line of the settings.
#include "command_line.h"

namespace qortvctl {

namespace {

constexpr char kConfigFooter[] =
        R"(docs/configuration.md tells what the settings mean.

Examples:
  qortvctl config get
  qortvctl config set picture.mode cinema
  qortvctl config watch sound.volume)";

constexpr char kGetFooter[] =
        R"(Without KEY: all settings that are known. One that is disabled depends on another that is off.
With --json: {"key", "value": number or text, "text", "least", "greatest", "choices", "visible",
"enabled"}, in an array without KEY.

Examples:
  qortvctl config get
  qortvctl config get picture.brightness
  qortvctl config get --json | jq -r '.[] | select(.enabled) | .key')";

constexpr char kSetFooter[] =
        R"(VALUE is a number, the name of a choice, or a text; an empty text stands for the one that was
delivered. Values that a setting cannot have are refused (exit status 1). One that is disabled is
set too, which is said on standard error.

Examples:
  qortvctl config set picture.brightness 60
  qortvctl config set picture.mode cinema
  qortvctl config set general.device_name "Living room")";

constexpr char kWatchFooter[] =
        R"(Prints a line for each change, whoever makes it: the key and its new value. Without KEY: of all
settings that are known. Ends with Ctrl-C. With --count and --for, fewer changes than N are a
failure (exit status 1). With --json: {"key", "value", "text"}.

Examples:
  qortvctl config watch
  qortvctl config watch sound.volume sound.mute
  qortvctl config watch --count 1 --for 30 --json)";

}  // namespace

void addSettings(CLI::App& app, Wanted& wanted) {
    auto* config = app.add_subcommand("config", "Show and change the settings");
    config->footer(kConfigFooter);
    config->require_subcommand(0, 1);
    auto& options = wanted.config;
    const auto add = [&](const char* name, const char* description, const char* footer,
                         int (*run)(const Common&, const ConfigOptions&)) {
        auto* command = config->add_subcommand(name, description);
        command->footer(footer);
        command->callback([&wanted, run] {
            wanted.command = [&wanted, run] { return run(wanted.common, wanted.config); };
        });
        return command;
    };
    add("get", "Show settings, and what they can be", kGetFooter, configGet)
            ->add_option("KEY", options.key, "Such as picture.brightness");
    auto* set = add("set", "Change a setting", kSetFooter, configSet);
    set->add_option("KEY", options.key, "Such as picture.brightness")->required();
    set->add_option("VALUE", options.value, "Its new value")->required();
    auto* watch = add("watch", "Print changes as they happen", kWatchFooter, configWatch);
    watch->add_option("KEY", options.keys, "Only these");
    watch->add_option("--count", options.watch.count, "End after N changes")
            ->check(atLeastOne())
            ->type_name("N");
    addSeconds(*watch, "--for", options.watch.limit, "End after so many seconds");
    config->callback([&wanted] {
        if (wanted.command) return;
        wanted.command = [&wanted] { return configGet(wanted.common, wanted.config); };
    });
}

}  // namespace qortvctl
