// qortvctl epg: the events of the next hours, or the details of one event.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/commands/guide_access.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/channel_text.h"
#include "qortvctl/presentation/guide_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Channel;

constexpr char kEpgHelp[] =
        R"(Times are local. The first column is what --details takes. With --json: an array of events as in
now; with --details also one event, with "details", "guidance", "series" and "blocked".

Examples:
  qortvctl epg
  qortvctl epg 7 --hours 3
  qortvctl epg 7 --details 14580
  qortvctl epg "world news" --json | jq -r '.[] | .startLocal + " " + .title')";

struct EpgOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    uint32_t hours = 24;              ///< from now
    std::optional<uint16_t> details;  ///< id of the event to show instead of the next hours
};

/** Prints a text of several lines below an empty line; nothing for an empty text. */
void printParagraph(const std::string& text) {
    if (text.empty()) return;
    printLine("");
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        printLine(withoutControls(text.substr(at, end - at)));
        at = end + 1;
    }
}

void printText(const Channel& channel, const qortv::EventDetails& details,
               EventFormatter& formatter) {
    const qortv::Event& event = details.event;
    printLine(withoutControls(event.title));
    printLine(withoutControls(fmt::format("{}, {} {}", channelLabel(channel), formatter.date(event),
                                          formatter.timeSpan(event))));
    printParagraph(details.text);
    printParagraph(details.longText);
    printParagraph(factsText(details));
}

int printDetails(const CommonOptions& common, GuideAccess& access, const Channel& channel,
                 uint16_t id) {
    const auto details = access.guide.details(channel.id, id);
    if (!details) {
        fmt::print(stderr, "qortvctl: the guide of {} has no event {}\n", channelLabel(channel),
                   id);
        return kFailure;
    }
    if (common.json) {
        printLine(access.formatter.toJson(*details).dump(2));
    } else {
        printText(channel, *details, access.formatter);
    }
    return kOk;
}

void printJson(const std::vector<qortv::Event>& events, EventFormatter& formatter) {
    auto array = nlohmann::ordered_json::array();
    for (const auto& event : events) array.push_back(formatter.toJson(event));
    printLine(array.dump(2));
}

void printTable(const std::vector<qortv::Event>& events, EventFormatter& formatter) {
    Table table(
            {{"EVENT", Table::Align::kRight}, {"DATE"}, {"TIME"}, {"GENRE"}, {"AGE"}, {"TITLE"}});
    for (const auto& event : events) {
        table.add({std::to_string(event.id), formatter.date(event), formatter.timeSpan(event),
                   qortv::genreName(event.genre), ageText(event), event.title});
    }
    table.print();
}

int epg(const CommonOptions& common, const EpgOptions& options) {
    GuideAccess access(common.timeout);
    const auto channel = namedOrCurrent(access.list, options.channel, options.medium);
    if (!channel) return kFailure;
    if (options.details) return printDetails(common, access, *channel, *options.details);

    const int64_t from = access.formatter.now();
    const int64_t to = from + int64_t{options.hours} * 3600;
    const auto events = access.guide.schedule(channel->id, from, to);
    if (events.empty()) reportNoEvents(*channel);
    if (common.json) {
        printJson(events, access.formatter);
    } else {
        printTable(events, access.formatter);
    }
    return kOk;
}

}  // namespace

void addEpg(CommandLine& commandLine) {
    const auto options = std::make_shared<EpgOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "epg", "Show the programme of the next hours", kEpgHelp,
            [options](const CommonOptions& common) { return epg(common, *options); });
    addChannel(command, options->channel, kNumberOrNameOrCurrent);
    addMedium(command, options->medium, kMediumOfNumber);
    command.add_option("--hours", options->hours, "Hours from now (default 24)")
            ->check(CLI::Range(1U, 24U * 365U).description(""))
            ->type_name("N");
    command.add_option("--details", options->details, "All about this event instead")
            ->type_name("EVENT");
}

}  // namespace qortvctl
