// qortvctl: the television from the command line.
#include <android/log.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>

#include "command_line.h"
#include "commands.h"
#include "output.h"
#include "qortv/error.h"

namespace {

using namespace qortvctl;

constexpr char kFooter[] = R"(Examples:
  qortvctl list
  qortvctl channels --medium cable
  qortvctl select "World News HD"
  qortvctl scan --medium cable
  qortvctl zap +
  qortvctl now --all
  qortvctl record 7 --for 60
  qortvctl config get
  qortvctl watch --for 10
  qortvctl cam
  qortvctl --timeout 30 channels --json

Exit status: 0 done; 1 failed; 2 wrong usage; 3 no service is registered;
130 a scan was cancelled by Ctrl-C.
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
        R"(A text that fits several channels selects none of them and fails. Does not look whether the channel
comes in: see zap.

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

constexpr char kCamFooter[] =
        R"(Without a command: menu. Without a CAM in the slot every command but insert fails (exit status 1).

Examples:
  qortvctl cam
  qortvctl cam status --json
  qortvctl cam pin < pin.txt)";

constexpr char kCamMenuFooter[] =
        R"(A line is an answer: the number of an item; nothing or b to go back; q to close the dialogue.
Where the CAM asks for a text, the line is that text, and nothing goes back. What the CAM wants
hidden is not shown while it is typed. The end of the input and Ctrl-C close the dialogue.
With --json, what the CAM shows is one line each. From a pipe a line is read when an answer is due.

Examples:
  qortvctl cam menu
  printf '2\n\n' | qortvctl cam menu
  printf '1\n' | qortvctl cam menu --json | jq -r 'select(.event == "list") | .items[]')";

constexpr char kCamPinFooter[] =
        R"(The PIN is the first line of standard input, never an argument, and is not shown while it is typed.
Exit status: 0 right; 4 wrong; 5 locked.

Examples:
  qortvctl cam pin
  qortvctl cam pin < pin.txt)";

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
    addChannel(*command, wanted.select.channel, "Its number, name, or part of the name")
            ->required();
    addMedium(*command, wanted.select.medium, kMediumOfNumber);
    command->callback([&wanted] {
        wanted.command = [&wanted] { return select(wanted.common, wanted.select); };
    });
}

void addWatch(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("watch", "Print notifications, one line each");
    command->footer(kWatchFooter);
    command->add_option("--count", wanted.watch.count, "End after N notifications")
            ->check(atLeastOne())
            ->type_name("N");
    addSeconds(*command, "--for", wanted.watch.limit, "End after so many seconds");
    command->callback([&wanted] {
        wanted.command = [&wanted] { return watch(wanted.common, wanted.watch); };
    });
}

void addCam(CLI::App& app, Wanted& wanted) {
    auto* cam = app.add_subcommand("cam", "Talk with the Common Interface module");
    cam->footer(kCamFooter);
    cam->require_subcommand(0, 1);
    const auto add = [&](const char* name, const char* description, int (*run)(const Common&)) {
        auto* command = cam->add_subcommand(name, description);
        command->callback(
                [&wanted, run] { wanted.command = [&wanted, run] { return run(wanted.common); }; });
        return command;
    };
    add("menu", "Walk through its menus", camMenu)->footer(kCamMenuFooter);
    add("status", "Show what it is", camStatus)->footer("Example:\n  qortvctl cam status --json");
    add("pin", "Give it its PIN", camPin)->footer(kCamPinFooter);
    add("insert", "Put the software television's CAM into the slot", camInsert)
            ->footer("Example:\n  qortvctl cam insert");
    add("remove", "Take it out", camRemove)->footer("Example:\n  qortvctl cam remove");
    cam->callback([&wanted] {
        if (!wanted.command) wanted.command = [&wanted] { return camMenu(wanted.common); };
    });
}

/** Keeps 0, 1 and 2 from becoming connections to the service, where what is written to them would
 * go. */
void openStandardDescriptors() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest number that is free is given: this one.
        if (fcntl(fd, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_RDWR));
    }
}

int failed(const char* message, int status) {
    std::fprintf(stderr, "qortvctl: %s\n", message);
    return status;
}

int parseAndRun(int argc, char** argv) {
    Wanted wanted;
    CLI::App app(
            "The television from the command line: channels, scan, guide, clock, notifications.",
            "qortvctl");
    app.footer(kFooter);
    app.fallthrough();  // the options below may stand behind the command too
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return fmt::format("qortvctl: {}\nRun with --help for more information.\n", error.what());
    });
    addSeconds(app, "--timeout", wanted.common.timeout,
               "Seconds to wait for the service to appear (default 5)", Zero::kAllowed);
    app.add_flag("--json", wanted.common.json, "Print JSON instead of text");
    // The parser tells of a command too many; one too few is told of below, after its own checks.
    app.require_subcommand(0, 1);
    addList(app, wanted);
    addChannels(app, wanted);
    addSelect(app, wanted);
    addWatch(app, wanted);
    addCam(app, wanted);
    addViewing(app, wanted);
    addRecording(app, wanted);
    addSettings(app, wanted);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& success) {
        std::ostringstream help;
        const int status = app.exit(success, help);
        std::string text = help.str();
        text.erase(text.find_last_not_of('\n') + 1);
        printLine(text);
        return status;
    } catch (const CLI::ParseError& error) {
        app.exit(error);
        return kUsage;
    }
    if (!wanted.command) {
        return failed("a command is needed, such as channels, zap or now (see --help)", kUsage);
    }
    return wanted.command();
}

}  // namespace

int main(int argc, char** argv) {
    openStandardDescriptors();
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
