// qortvctl time: the clock of the television.
#include <nlohmann/json.hpp>

#include "qortv/clock.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/clock_text.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

namespace {

constexpr char kTimeHelp[] =
        R"(With --json: {"utc": seconds since 1970, "utcText", "local", "offset", "zone": seconds east of
Greenwich, "summer", "source", "follows": "broadcast", "system" or "user", "totReceived",
"broadcastUtc": seconds or null}.

Examples:
  qortvctl time
  qortvctl time --json | jq .offset)";

int showTime(const CommonOptions& common) {
    auto clock = connectTo<qortv::Clock>(common.timeout);
    const qortv::ClockState state = clock.state();
    const qortv::LocalTime local = clock.local(state.utc);
    if (common.json) {
        printLine(toJson(state, local).dump(2));
    } else {
        for (const auto& line : toLines(state, local)) printLine(line);
    }
    return kOk;
}

}  // namespace

void addTime(CommandLine& commandLine) {
    commandLine.addCommand(commandLine.program(), "time", "Show the clock of the television",
                           kTimeHelp, showTime);
}

}  // namespace qortvctl
