// qortvctl zap: tunes to a channel and shows the signal and what is on.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/channel_list.h"
#include "qortv/subscription.h"
#include "qortv/tuner.h"
#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/commands/guide_access.h"
#include "qortvctl/commands/tuning_events.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/channel_text.h"
#include "qortvctl/presentation/guide_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/units.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Channel;
using qortv::ChannelList;
using qortv::Tuning;
using qortv::TuningEvent;

constexpr char kZapHelp[] =
        R"(select only makes a channel the current one; zap tunes, waits until the channel comes in or not, and
shows the signal and what is on. A channel that does not come in is a failure (exit status 1).
With --json: {"channel": as in channels, "tuning": "locked" or "failed", "error", "signalLevel",
"signalQuality": per cent, "now", "next": as in now}.

Examples:
  qortvctl zap 7
  qortvctl zap "world news"
  qortvctl zap +)";

struct ZapOptions {
    std::string channel;  ///< number, name, "+" or "-"
    std::optional<qortv::Medium> medium;

    bool up() const { return channel == "+"; }
    bool down() const { return channel == "-"; }
};

/** The visible channel if there is only one: up and down would not leave it, and the tuner would
 * report nothing. */
std::optional<Channel> onlyVisible(ChannelList& list) {
    std::optional<Channel> only;
    for (const auto& channel : list.read()) {
        if (!channel.visible) continue;
        if (only) return std::nullopt;
        only = channel;
    }
    return only;
}

/** Asks for the channel, or for the next one up or down. */
void tune(qortv::Tuner& tuner, const std::optional<Channel>& channel, const ZapOptions& options) {
    if (channel) {
        tuner.tune(channel->id);
    } else if (options.up()) {
        tuner.up();
    } else {
        tuner.down();
    }
}

/** The channel with this id; nothing, after a message on standard error, when there is none. */
std::optional<Channel> channelWithId(ChannelList& list, uint32_t id) {
    const auto channels = list.read();
    const auto found = std::find_if(channels.begin(), channels.end(),
                                    [&](const Channel& channel) { return channel.id == id; });
    if (found != channels.end()) return *found;
    fmt::print(stderr, "qortvctl: the channel that was tuned to is gone\n");
    return std::nullopt;
}

/** What zap shows of the channel that was tuned to. */
struct ZapResult {
    Channel channel;
    TuningEvent end;             ///< locked or failed
    std::optional<int> level;    ///< of the signal, per cent
    std::optional<int> quality;  ///< of the signal, per cent
    NowNext events;
};

void printJson(const ZapResult& result, EventFormatter& formatter) {
    const auto orNull = [](std::optional<int> percent) {
        return percent ? nlohmann::ordered_json(*percent) : nlohmann::ordered_json();
    };
    const nlohmann::ordered_json json = {{"channel", toJson(result.channel)},
                                         {"tuning", name(result.end.tuning)},
                                         {"error", name(result.end.error)},
                                         {"signalLevel", orNull(result.level)},
                                         {"signalQuality", orNull(result.quality)},
                                         {"now", formatter.toJson(result.events.now)},
                                         {"next", formatter.toJson(result.events.next)}};
    printLine(json.dump(2));
}

void printText(const ZapResult& result, EventFormatter& formatter) {
    const Channel& channel = result.channel;
    printLine(withoutControls(fmt::format("locked: {} ({}, {}), signal level {}, quality {}",
                                          channelLabel(channel), name(channel.medium),
                                          frequencyText(channel.frequencyKhz),
                                          percentText(result.level), percentText(result.quality))));
    const auto printEvent = [&](const char* when, const std::optional<qortv::Event>& event) {
        if (!event) return;
        printLine(withoutControls(
                fmt::format("{:<4}  {}  {}", when, formatter.timeSpan(*event), event->title)));
    };
    printEvent("now", result.events.now);
    printEvent("next", result.events.next);
}

/** Prints the signal and what is on. Returns the exit status. */
int printResult(const CommonOptions& common, qortv::Tuner& tuner, const Channel& channel,
                const TuningEvent& end) {
    auto guide = connectTo<qortv::Guide>(common.timeout);
    auto clock = connectTo<qortv::Clock>(common.timeout);
    EventFormatter formatter(clock);
    const ZapResult result = {channel, end, tuner.signalLevel(), tuner.signalQuality(),
                              readNowNext(guide, channel.id)};
    if (common.json) printJson(result, formatter);
    if (end.tuning == Tuning::kFailed) {
        fmt::print(stderr, "qortvctl: {} does not come in: {}\n", channelLabel(channel),
                   name(end.error));
        return kFailure;
    }
    if (!common.json) printText(result, formatter);
    return kOk;
}

int zap(const CommonOptions& common, const ZapOptions& options) {
    const WakeUp wakeUp;
    TuningEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    auto list = connectTo<ChannelList>(common.timeout);
    auto tuner = connectTo<qortv::Tuner>(common.timeout);

    const bool step = options.up() || options.down();
    auto channel = step ? onlyVisible(list) : chooseChannel(list, options.channel, options.medium);
    if (!step) {
        if (!channel) return kFailure;
        if (!common.json) printLine(withoutControls("tuning to " + channelLabel(*channel)));
    }
    events.clear();
    tune(tuner, channel, options);
    const auto end = events.waitForEnd(channel ? channel->id : 0);
    if (!end) {
        fmt::print(stderr, "qortvctl: the tuner does not say whether the channel comes in\n");
        return kFailure;
    }
    if (!channel) channel = channelWithId(list, end->channelId);
    return channel ? printResult(common, tuner, *channel, *end) : kFailure;
}

}  // namespace

void addZap(CommandLine& commandLine) {
    const auto options = std::make_shared<ZapOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "zap", "Tune to a channel and show what is on", kZapHelp,
            [options](const CommonOptions& common) { return zap(common, *options); });
    addChannel(command, options->channel,
               "Its number, name, or part of the name; + or - for the next one")
            ->required();
    addMedium(command, options->medium, kMediumOfNumber);
}

}  // namespace qortvctl
