// The command line of recording.
#include "command_line.h"
#include "schedule_time.h"

namespace qortvctl {

namespace {

constexpr char kRecordFooter[] =
        R"(Records now, without a channel the one that is on. Ctrl-C ends the recording and keeps it. The
television ends one with --for by itself. One that breaks off is a failure (exit status 1); what was
recorded until then is kept.
With --json, at the end: {"path", "start": seconds since 1970 UTC, "date", "time", "channelId",
"channelNumber", "channel", "program", "seconds", "bytes", "minimumAge", "retentionDays", "state",
"error": null or why it broke off}.

Examples:
  qortvctl record
  qortvctl record "world news" --for 600
  qortvctl record 7 --for 60 --json | jq -r .path
  qortvctl record at 7 20:15 1h30m
  qortvctl record list
  qortvctl record stop)";

constexpr char kRecordAtFooter[] =
        R"(TIME is 20:15, the next time that it is so late, or 2026-11-21T20:15; by the television's local time
unless Z or an offset such as +01:00 stands behind a date. DURATION is 1h30m, 90m, 45s or seconds.
With --json: {"id", "channelId", "channelNumber", "channel": null where the channel is gone, "start":
seconds since 1970 UTC, "date", "time": local, "seconds", "repeat": "once", "daily" or "weekly",
"reminder", "title", "state"}.

Examples:
  qortvctl record at 7 20:15 1h30m
  qortvctl record at "world news" 2026-12-24T18:00 45m --title "Christmas"
  qortvctl record at 7 19:00 30m --repeat daily)";

constexpr char kRecordListFooter[] =
        R"(Those that are over stay until they are cancelled or room is needed. With --json: an array of objects
as in record at, "state" being "waiting", "running", "done" or "failed".

Examples:
  qortvctl record list
  qortvctl record list --json | jq '.[] | select(.state == "waiting") | .id')";

constexpr char kRecordCancelFooter[] =
        R"(The recording that a schedule is making ends, and is kept.

Examples:
  qortvctl record cancel 3)";

constexpr char kRecordStopFooter[] =
        R"(Ends what is being recorded now, whichever program started it, and gives its recorder back: also
what a program that was killed has left running. What was recorded is kept. The television does not
tell what a schedule records from the rest: it is ended too, and its schedule is done.
With --json: an array of objects as in recordings, without "index".

Examples:
  qortvctl record stop
  qortvctl record stop --json | jq -r '.[].path')";

constexpr char kRecordingsFooter[] =
        R"(Times are local. With --json: an array of objects as record prints, with "index" and without
"error"; "state" is "recording" or why the recording ended: "stopped", "complete", "disk-full",
"no-signal", "closed" or "unknown".

Examples:
  qortvctl recordings
  qortvctl recordings --json | jq -r '.[] | select(.bytes > 1e9) | .path'
  qortvctl recordings delete 0)";

constexpr char kDeleteFooter[] =
        R"(INDEX is that of the list just now: it changes when a recording before it goes.

Examples:
  qortvctl recordings delete 0)";

CLI::App* addRecord(CLI::App& app, Wanted& wanted) {
    auto* command = app.add_subcommand("record", "Record a channel, now or later");
    command->footer(kRecordFooter);
    command->require_subcommand(0, 1);
    addChannel(*command, wanted.record.channel,
               "Its number, name, or part of the name; the current one if left out");
    addMedium(*command, wanted.record.medium, kMediumOfNumber);
    addSeconds(*command, "--for", wanted.record.limit, "Record so long (rounded up to seconds)");
    command->callback([&wanted, command] {
        if (!command->get_subcommands().empty()) {
            // What a subcommand has no place for falls through to here.
            if (!wanted.record.channel.empty()) throw CLI::ExtrasError({wanted.record.channel});
            return;
        }
        wanted.command = [&wanted] { return record(wanted.common, wanted.record); };
    });
    return command;
}

void addRecordAt(CLI::App& record, Wanted& wanted) {
    static const std::map<std::string, qortv::Schedule::Repeat> kRepeats = {
            {"once", qortv::Schedule::Repeat::kOnce},
            {"daily", qortv::Schedule::Repeat::kDaily},
            {"weekly", qortv::Schedule::Repeat::kWeekly}};
    const auto check = [](const char* what, auto parse) {
        return CLI::Validator(
                [what, parse](const std::string& text) {
                    return parse(text) ? std::string() : "'" + text + "' is no " + what;
                },
                "");
    };
    auto* command = record.add_subcommand("at", "Have the television record later");
    command->footer(kRecordAtFooter);
    auto& options = wanted.recordAt;
    addChannel(*command, options.channel, "Its number, name, or part of the name")->required();
    command->add_option("TIME", options.time, "When it begins")
            ->required()
            ->check(check("time such as 20:15 or 2026-11-21T20:15", parseTime));
    command->add_option("DURATION", options.duration, "How long it is")
            ->required()
            ->check(check("duration such as 1h30m, 90m or 5400", parseDuration));
    command->add_option_function<std::string>(
                   "--repeat",
                   [&options](const std::string& name) { options.repeat = kRepeats.at(name); },
                   "once, daily or weekly (default once)")
            ->check(CLI::IsMember(kRepeats))
            ->type_name("HOW");
    command->add_option("--title", options.title, "Its title; else the guide's")->type_name("TEXT");
    addMedium(*command, options.medium, kMediumOfNumber);
    command->callback([&wanted] {
        wanted.command = [&wanted] { return recordAt(wanted.common, wanted.recordAt); };
    });
}

}  // namespace

void addRecording(CLI::App& app, Wanted& wanted) {
    auto* record = addRecord(app, wanted);
    addRecordAt(*record, wanted);
    auto* command = record->add_subcommand("list", "Show what is to be recorded");
    command->footer(kRecordListFooter);
    command->callback(
            [&wanted] { wanted.command = [&wanted] { return recordList(wanted.common); }; });
    command = record->add_subcommand("stop", "End everything that is being recorded");
    command->footer(kRecordStopFooter);
    command->callback(
            [&wanted] { wanted.command = [&wanted] { return recordStop(wanted.common); }; });
    command = record->add_subcommand("cancel", "Give up a recording that is to be made");
    command->footer(kRecordCancelFooter);
    command->add_option("ID", wanted.schedule, "As record list shows it")->required();
    command->callback([&wanted] {
        wanted.command = [&wanted] { return recordCancel(wanted.common, wanted.schedule); };
    });

    auto* recordingsCommand = app.add_subcommand("recordings", "Show the recordings");
    recordingsCommand->footer(kRecordingsFooter);
    recordingsCommand->require_subcommand(0, 1);
    command = recordingsCommand->add_subcommand("delete", "Delete a recording");
    command->footer(kDeleteFooter);
    command->add_option("INDEX", wanted.recording, "As recordings shows it")->required();
    command->callback([&wanted] {
        wanted.command = [&wanted] { return recordingsDelete(wanted.common, wanted.recording); };
    });
    recordingsCommand->callback([&wanted] {
        if (wanted.command) return;
        wanted.command = [&wanted] { return recordings(wanted.common); };
    });
}

}  // namespace qortvctl
