// qortvctl: the television from the command line.
#include <android/log.h>
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <functional>
#include <map>

#include "commands.h"
#include "output.h"
#include "qortv/error.h"

namespace {

using namespace qortvctl;
using std::chrono::milliseconds;

constexpr char kFooter[] = R"(Examples:
  qortvctl list
  qortvctl channels --medium cable
  qortvctl select "World News HD"
  qortvctl watch --for 10
  qortvctl --timeout 30 channels --json

Exit status: 0 done; 1 failed; 2 wrong usage; 3 no service is registered.
The service is looked for in $QORTV_RUNTIME_DIR, else in $XDG_RUNTIME_DIR/qortv, else in /run/qortv.)";

constexpr char kListFooter[] =
        R"(A name whose process is gone is shown as stale; it is replaced when the service comes back.

Examples:
  qortvctl list
  qortvctl list --json | jq '.[].pid')";

constexpr char kChannelsFooter[] = R"(Examples:
  qortvctl channels
  qortvctl channels --medium satellite --filter sport
  qortvctl channels --json | jq -r '.[].name')";

constexpr char kSelectFooter[] =
        R"(A text that fits several channels selects none of them and fails.

Examples:
  qortvctl select 7
  qortvctl select 1 --medium cable
  qortvctl select "world news")";

constexpr char kWatchFooter[] =
        R"(Ends with Ctrl-C. Waits for a service that dies and registers with it again, and says so on
standard error. With --count and --for, fewer notifications than N are a failure (exit status 1).

Examples:
  qortvctl watch
  qortvctl watch --count 1 --for 30
  qortvctl watch --json | jq -c 'select(.notification == "notifyScan")')";

const std::map<std::string, qortv::Medium> kMedia = {{"terrestrial", qortv::Medium::kTerrestrial},
                                                     {"cable", qortv::Medium::kCable},
                                                     {"satellite", qortv::Medium::kSatellite}};

/** Seconds that a person can mean: up to about three years. */
const CLI::Validator kSeconds = CLI::Range(0.0, 1e8).description("");

/** What the command line says. */
struct Wanted {
    Common common;
    ChannelsOptions channels;
    SelectOptions select;
    WatchOptions watch;
    std::function<int()> command;
};

/** Adds an option of seconds, which may have a fraction. */
template <typename Duration>
void addSeconds(CLI::App& app, const char* name, Duration& duration, const char* description) {
    app.add_option_function<double>(
               name,
               [&duration](double seconds) {
                   duration = milliseconds{static_cast<milliseconds::rep>(seconds * 1000)};
               },
               description)
            ->check(kSeconds)
            ->type_name("SECONDS");
}

void addMedium(CLI::App& command, std::optional<qortv::Medium>& medium) {
    command.add_option_function<std::string>(
                   "--medium", [&medium](const std::string& name) { medium = kMedia.at(name); },
                   "Only channels of this medium")
            ->check(CLI::IsMember(kMedia))
            ->type_name("MEDIUM");
}

void addList(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("list", "Show what is registered, and by which process");
    command->footer(kListFooter);
    command->callback([&wanted] { wanted.command = [&wanted] { return list(wanted.common); }; });
}

void addChannels(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("channels", "Show the channel list");
    command->footer(kChannelsFooter);
    addMedium(*command, wanted.channels.medium);
    command->add_option("--filter", wanted.channels.filter,
                        "Only channels whose name contains TEXT, in any letter case")
            ->type_name("TEXT");
    command->callback([&wanted] {
        wanted.command = [&wanted] { return channels(wanted.common, wanted.channels); };
    });
}

void addSelect(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("select", "Make a channel the current one");
    command->footer(kSelectFooter);
    command->add_option("CHANNEL", wanted.select.channel, "Its number, name, or part of the name")
            ->required();
    addMedium(*command, wanted.select.medium);
    command->callback([&wanted] {
        wanted.command = [&wanted] { return select(wanted.common, wanted.select); };
    });
}

void addWatch(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("watch", "Print notifications, one line each");
    command->footer(kWatchFooter);
    command->add_option("--count", wanted.watch.count, "End after N notifications")
            ->check(CLI::PositiveNumber)
            ->type_name("N");
    addSeconds(*command, "--for", wanted.watch.limit, "End after so many seconds");
    command->callback([&wanted] {
        wanted.command = [&wanted] { return watch(wanted.common, wanted.watch); };
    });
}

int failed(const char* message, int status) {
    std::fprintf(stderr, "qortvctl: %s\n", message);
    return status;
}

int parseAndRun(int argc, char** argv) {
    Wanted wanted;
    CLI::App app(
            "The television from the command line: registered interfaces, channels, notifications.",
            "qortvctl");
    app.footer(kFooter);
    app.fallthrough();  // the options below may stand behind the command too
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return fmt::format("qortvctl: {}\nRun with --help for more information.\n", error.what());
    });
    addSeconds(app, "--timeout", wanted.common.timeout,
               "Seconds to wait for the service to appear (default 5)");
    app.add_flag("--json", wanted.common.json, "Print JSON instead of text");
    // The parser tells of a command too many; one too few is told of below, after its own checks.
    app.require_subcommand(0, 1);
    addList(app, wanted);
    addChannels(app, wanted);
    addSelect(app, wanted);
    addWatch(app, wanted);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        app.exit(error);
        return kUsage;
    }
    if (!wanted.command) {
        return failed("a command is needed: list, channels, select or watch (see --help)", kUsage);
    }
    return wanted.command();
}

}  // namespace

int main(int argc, char** argv) {
    prepareOutput();
    // What goes wrong is told once, by our own messages.
    __android_log_set_minimum_priority(ANDROID_LOG_FATAL);
    try {
        return parseAndRun(argc, argv);
    } catch (const OutputClosed&) {
        return kOk;
    } catch (const qortv::Error& error) {
        const bool missing = error.kind() == qortv::Error::Kind::kNoService;
        return failed(error.what(), missing ? kNoService : kFailure);
    } catch (const std::exception& error) {
        return failed(error.what(), kFailure);
    }
}
