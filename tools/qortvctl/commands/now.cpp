// qortvctl now: what is on now and next.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "qortvctl/commands/channel_choice.h"
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
using Json = nlohmann::ordered_json;

constexpr char kNowHelp[] =
        R"(Times are local. With --json: an array of {"channel": {"id", "number", "name"}, "now", "next"}, each of
which is null where the guide has nothing, or {"id", "title", "text", "language", "genre", "age",
"start", "end": seconds since 1970 UTC, "startLocal", "endLocal", "percent"}.

Examples:
  qortvctl now
  qortvctl now "world news"
  qortvctl now --all --medium cable
  qortvctl now --all --json | jq -r '.[] | select(.now) | .channel.name + ": " + .now.title')";

struct NowOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    bool all = false;  ///< every channel
};

Json nowToJson(const Channel& channel, const NowNext& events, EventFormatter& formatter) {
    return {{"channel", {{"id", channel.id}, {"number", channel.number}, {"name", channel.name}}},
            {"now", formatter.toJson(events.now)},
            {"next", formatter.toJson(events.next)}};
}

/** Prints a row for each of the two events of one channel. */
void printOneChannel(const Channel& channel, const NowNext& events, EventFormatter& formatter) {
    Table table({{""}, {"TIME"}, {"PROGRESS", Table::Align::kRight}, {"AGE"}, {"TITLE"}, {"TEXT"}});
    const auto add = [&](const char* when, const std::optional<qortv::Event>& event) {
        if (!event) return;
        table.add({when, formatter.timeSpan(*event), formatter.progress(*event), ageText(*event),
                   event->title, event->text});
    };
    add("now", events.now);
    add("next", events.next);
    printLine(withoutControls(channelLabel(channel)));
    table.print();
}

/** A table with a row for each channel. */
class AllChannelsTable {
  public:
    void add(const Channel& channel, const NowNext& events, EventFormatter& formatter) {
        std::vector<std::string> row = {std::to_string(channel.number), channel.name};
        if (events.now) {
            row.insert(row.end(), {events.now->title, formatter.timeOfDay(events.now->end()),
                                   formatter.progress(*events.now)});
        } else {
            row.insert(row.end(), {"-", "", ""});
        }
        row.push_back(events.next ? events.next->title : "-");
        mTable.add(std::move(row));
    }
    void print() const { mTable.print(); }

  private:
    Table mTable{{{"NUMBER", Table::Align::kRight},
                  {"NAME"},
                  {"NOW"},
                  {"UNTIL"},
                  {"PROGRESS", Table::Align::kRight},
                  {"NEXT"}}};
};

int nowOnAll(const CommonOptions& common, const NowOptions& options, GuideAccess& access) {
    auto array = Json::array();
    AllChannelsTable table;
    for (const auto& channel : access.list.read(queryFor(options.medium))) {
        const NowNext events = readNowNext(access.guide, channel.id);
        if (common.json) {
            array.push_back(nowToJson(channel, events, access.formatter));
        } else {
            table.add(channel, events, access.formatter);
        }
    }
    if (common.json) {
        printLine(array.dump(2));
    } else {
        table.print();
    }
    return kOk;
}

int now(const CommonOptions& common, const NowOptions& options) {
    GuideAccess access(common.timeout);
    if (options.all) return nowOnAll(common, options, access);
    const auto channel = namedOrCurrent(access.list, options.channel, options.medium);
    if (!channel) return kFailure;
    const NowNext events = readNowNext(access.guide, channel->id);
    if (!events.now && !events.next) reportNoEvents(*channel);
    if (common.json) {
        printLine(Json::array({nowToJson(*channel, events, access.formatter)}).dump(2));
    } else {
        printOneChannel(*channel, events, access.formatter);
    }
    return kOk;
}

}  // namespace

void addNow(CommandLine& commandLine) {
    const auto options = std::make_shared<NowOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "now", "Show what is on now and next", kNowHelp,
            [options](const CommonOptions& common) { return now(common, *options); });
    auto* channel = addChannel(command, options->channel, kNumberOrNameOrCurrent);
    command.add_flag("--all", options->all, "Every channel")->excludes(channel);
    addMedium(command, options->medium, kMediumOfNumber);
}

}  // namespace qortvctl
