// qortvctl recordings: what is on the television's disk.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "qortv/recordings.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/recording_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"
#include "qortvctl/text/units.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Recording;
using qortv::Recordings;

constexpr char kRecordingsHelp[] =
        R"(Times are local. With --json: an array of objects as record prints, with "index" and without
"error"; "state" is "recording" or why the recording ended: "stopped", "complete", "disk-full",
"no-signal", "closed" or "unknown".

Examples:
  qortvctl recordings
  qortvctl recordings --json | jq -r '.[] | select(.bytes > 1e9) | .path'
  qortvctl recordings delete 0)";

constexpr char kDeleteHelp[] =
        R"(INDEX is that of the list just now: it changes when a recording before it goes.

Examples:
  qortvctl recordings delete 0)";

void printJson(const std::vector<Recording>& list) {
    auto array = nlohmann::ordered_json::array();
    for (const auto& recording : list) array.push_back(toJson(recording));
    printLine(array.dump(2));
}

void printTable(const std::vector<Recording>& list) {
    Table table({{"INDEX", Table::Align::kRight},
                 {"DATE"},
                 {"TIME"},
                 {"CHANNEL"},
                 {"PROGRAMME"},
                 {"DURATION", Table::Align::kRight},
                 {"SIZE", Table::Align::kRight},
                 {"STATE"}});
    for (const auto& recording : list) {
        table.add({std::to_string(recording.index), recording.date, recording.time,
                   recording.channel, recording.program, durationText(recording.duration),
                   sizeText(recording.bytes), stateText(recording)});
    }
    table.print();
}

int showRecordings(const CommonOptions& common) {
    const auto list = connectTo<Recordings>(common.timeout).list();
    if (common.json) {
        printJson(list);
    } else {
        printTable(list);
    }
    return kOk;
}

int deleteRecording(const CommonOptions& common, uint32_t index) {
    auto recordings = connectTo<Recordings>(common.timeout);
    const auto list = recordings.list();
    if (index >= list.size()) {
        fmt::print(stderr, "qortvctl: there is no recording {}: there are {}\n", index,
                   list.size());
        return kFailure;
    }
    recordings.remove(list[index]);
    if (common.json) {
        printLine(nlohmann::json{{"deleted", list[index].path}}.dump());
    } else {
        printLine(withoutControls("deleted " + list[index].path));
    }
    return kOk;
}

}  // namespace

void addRecordings(CommandLine& commandLine) {
    auto& group = commandLine.addGroup(commandLine.program(), "recordings", "Show the recordings",
                                       kRecordingsHelp, showRecordings);
    const auto index = std::make_shared<uint32_t>();
    auto& command = commandLine.addCommand(
            group, "delete", "Delete a recording", kDeleteHelp,
            [index](const CommonOptions& common) { return deleteRecording(common, *index); });
    command.add_option("INDEX", *index, "As recordings shows it")->required();
}

}  // namespace qortvctl
