#include "qortvctl/commands/command_line.h"

#include <fmt/format.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <utility>

#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

namespace {

constexpr char kCommandLineHelp[] = R"(Examples:
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

std::string usageMessage(const CLI::App* /*command*/, const CLI::Error& error) {
    return fmt::format("qortvctl: {}\nRun with --help for more information.\n", error.what());
}

/** Prints what --help asked for. Returns the exit status. */
int printHelp(const CLI::App& program, const CLI::Success& success) {
    std::ostringstream help;
    const int status = program.exit(success, help);
    std::string text = help.str();
    text.erase(text.find_last_not_of('\n') + 1);
    printLine(text);
    return status;
}

}  // namespace

CommandLine::CommandLine()
    : mProgram("The television from the command line: channels, scan, guide, clock, notifications.",
               "qortvctl") {
    mProgram.footer(kCommandLineHelp);
    mProgram.fallthrough();  // the options below may stand behind the command too
    mProgram.failure_message(usageMessage);
    addSeconds(mProgram, "--timeout", mCommon.timeout,
               "Seconds to wait for the service to appear (default 5)", Zero::kAllowed);
    mProgram.add_flag("--json", mCommon.json, "Print JSON instead of text");
    // run() itself complains when there is no command, after everything else was checked.
    mProgram.require_subcommand(0, 1);
}

CLI::App& CommandLine::addCommand(CLI::App& parent, const char* name, const char* description,
                                  const char* help, Action action) {
    auto* command = parent.add_subcommand(name, description);
    command->footer(help);
    command->callback([this, action = std::move(action)] { mChosen = action; });
    return *command;
}

CLI::App& CommandLine::addGroup(CLI::App& parent, const char* name, const char* description,
                                const char* help, Action action) {
    auto* group = parent.add_subcommand(name, description);
    group->footer(help);
    group->require_subcommand(0, 1);
    // The parser calls this after the callback of the group's own command.
    group->callback([this, action = std::move(action)] {
        if (!mChosen) mChosen = action;
    });
    return *group;
}

int CommandLine::run(int argc, char** argv) {
    try {
        mProgram.parse(argc, argv);
    } catch (const CLI::Success& success) {
        return printHelp(mProgram, success);
    } catch (const CLI::ParseError& error) {
        mProgram.exit(error);
        return kUsage;
    }
    if (!mChosen) {
        std::fputs("qortvctl: a command is needed, such as channels, zap or now (see --help)\n",
                   stderr);
        return kUsage;
    }
    return mChosen(mCommon);
}

}  // namespace qortvctl
