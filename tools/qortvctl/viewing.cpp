// The command line of watching television.
#include "command_line.h"

namespace qortvctl {

namespace {

constexpr char kScanFooter[] =
        R"(Shows a progress bar on a terminal, a line for each multiplex otherwise. Ctrl-C calls the scan off:
the channel lists stay as they were (exit status 130). One whose output
nobody reads any more is called off too.
With --json, a line for each event: {"event": "started", "medium", "multiplexes"},
{"event": "progress", "percent", "tv", "radio", "frequencyKhz"}, then {"event": "completed",
"services", "tv", "radio", "multiplexes"}, {"event": "cancelled", "percent"} or
{"event": "failed", "code"}.

Examples:
  qortvctl scan
  qortvctl scan --medium cable --clear
  qortvctl scan --update --json | jq -c 'select(.event == "completed")')";

constexpr char kZapFooter[] =
        R"(select only makes a channel the current one; zap tunes, waits until the channel comes in or not, and
shows the signal and what is on. A channel that does not come in is a failure (exit status 1).
With --json: {"channel": as in channels, "tuning": "locked" or "failed", "error", "signalLevel",
"signalQuality": per cent, "now", "next": as in now}.

Examples:
  qortvctl zap 7
  qortvctl zap "world news"
  qortvctl zap +)";

constexpr char kNowFooter[] =
        R"(Times are local. With --json: an array of {"channel": {"id", "number", "name"}, "now", "next"}, each of
which is null where the guide has nothing, or {"id", "title", "text", "language", "genre", "age",
"start", "end": seconds since 1970 UTC, "startLocal", "endLocal", "percent"}.

Examples:
  qortvctl now
  qortvctl now "world news"
  qortvctl now --all --medium cable
  qortvctl now --all --json | jq -r '.[] | select(.now) | .channel.name + ": " + .now.title')";

constexpr char kEpgFooter[] =
        R"(Times are local. The first column is what --details takes. With --json: an array of events as in
now; with --details also one event, with "details", "guidance", "series" and "blocked".

Examples:
  qortvctl epg
  qortvctl epg 7 --hours 3
  qortvctl epg 7 --details 14580
  qortvctl epg "world news" --json | jq -r '.[] | .startLocal + " " + .title')";

constexpr char kTimeFooter[] =
        R"(With --json: {"utc": seconds since 1970, "utcText", "local", "offset", "zone": seconds east of
Greenwich, "summer", "source", "follows": "broadcast", "system" or "user", "totReceived",
"broadcastUtc": seconds or null}.

Examples:
  qortvctl time
  qortvctl time --json | jq .offset)";

/** Adds a command that `run` does with its options. */
template <typename Options>
CLI::App* add(CLI::App& app, Wanted& wanted, const char* name, const char* description,
              const Options& options, int (*run)(const Common&, const Options&)) {
    auto* command = app.add_subcommand(name, description);
    command->callback([&wanted, &options, run] {
        wanted.command = [&wanted, &options, run] { return run(wanted.common, options); };
    });
    return command;
}

}  // namespace

void addViewing(CLI::App& app, Wanted& wanted) {
    auto* command = add(app, wanted, "scan", "Search for channels", wanted.scan, scan);
    command->footer(kScanFooter);
    addMedium(*command, wanted.scan.medium, "Only this medium");
    auto* update = command->add_flag("--update", wanted.scan.update,
                                     "Only add and refresh: keep what is no longer broadcast");
    command->add_flag("--clear", wanted.scan.clear,
                      "Also forget names, numbers and favourites that viewers gave")
            ->excludes(update);

    command = add(app, wanted, "zap", "Tune to a channel and show what is on", wanted.zap, zap);
    command->footer(kZapFooter);
    addChannel(*command, wanted.zap.channel,
               "Its number, name, or part of the name; + or - for the next one")
            ->required();
    addMedium(*command, wanted.zap.medium, kMediumOfNumber);

    constexpr char kOrCurrent[] =
            "Its number, name, or part of the name; the current one if left "
            "out";
    command = add(app, wanted, "now", "Show what is on now and next", wanted.now, now);
    command->footer(kNowFooter);
    auto* channel = addChannel(*command, wanted.now.channel, kOrCurrent);
    command->add_flag("--all", wanted.now.all, "Every channel")->excludes(channel);
    addMedium(*command, wanted.now.medium, kMediumOfNumber);

    command = add(app, wanted, "epg", "Show the programme of the next hours", wanted.epg, epg);
    command->footer(kEpgFooter);
    addChannel(*command, wanted.epg.channel, kOrCurrent);
    addMedium(*command, wanted.epg.medium, kMediumOfNumber);
    command->add_option("--hours", wanted.epg.hours, "Hours from now (default 24)")
            ->check(CLI::Range(1U, 24U * 365U).description(""))
            ->type_name("N");
    command->add_option("--details", wanted.epg.details, "All about this event instead")
            ->type_name("EVENT");

    command = app.add_subcommand("time", "Show the clock of the television");
    command->footer(kTimeFooter);
    command->callback(
            [&wanted] { wanted.command = [&wanted] { return qortvctl::time(wanted.common); }; });
}

}  // namespace qortvctl
