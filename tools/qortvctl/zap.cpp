// qortvctl zap.
#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "channel_choice.h"
#include "commands.h"
#include "event_queue.h"
#include "guide_output.h"
#include "output.h"
#include "qortv/subscription.h"
#include "qortv/tuner.h"

namespace qortvctl {

namespace {

using qortv::Channel;
using qortv::ChannelList;
using qortv::Tuning;
using qortv::TuningEvent;
using std::chrono::steady_clock;

/** Longest that a tuner searches. */
constexpr std::chrono::seconds kTuningPatience{15};

class TuningEvents : public qortv::TuningListener {
  public:
    explicit TuningEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onTuningEvent(const TuningEvent& event) override {
        if (event.mainWindow) mQueue.push(event);
    }
    void onDisconnected() override { mQueue.lose(); }

    EventQueue<TuningEvent>& queue() { return mQueue; }

  private:
    EventQueue<TuningEvent> mQueue;
};

/**
 * How tuning ended, which began after `events` was emptied.
 *
 * @param channelId of which channel; 0: of the one that is tuned to first
 * @throws qortv::Error when the service dies
 * @return nothing when the tuner says nothing
 */
std::optional<TuningEvent> waitForEnd(EventQueue<TuningEvent>& events, const WakeUp& wakeUp,
                                      uint32_t channelId) {
    const auto end = steady_clock::now() + kTuningPatience;
    for (;;) {
        while (const auto event = events.take()) {
            if (channelId == 0) channelId = event->channelId;
            const bool over = event->tuning == Tuning::kLocked || event->tuning == Tuning::kFailed;
            if (over && event->channelId == channelId) return event;
        }
        if (events.lost()) {
            throw qortv::Error(qortv::Error::Kind::kLost, "the service went away while tuning");
        }
        if (!wakeUp.waitUntil(end)) return std::nullopt;
    }
}

std::string percentText(std::optional<int> percent) {
    return percent ? fmt::format("{} %", *percent) : "unknown";
}

/** The channel that is shown where it is the only one: going up and down changes nothing then, and
 * the tuner would say nothing. */
std::optional<Channel> onlyShown(ChannelList& list) {
    std::optional<Channel> only;
    for (const auto& channel : list.read()) {
        if (!channel.visible) continue;
        if (only) return std::nullopt;
        only = channel;
    }
    return only;
}

/** A channel that was tuned to, and what came of it. */
struct Zapped {
    Channel channel;
    TuningEvent end;
    std::optional<int> level;
    std::optional<int> quality;
    NowNext events;
};

void printJson(const Zapped& zapped, EventWords& words) {
    const auto number = [](std::optional<int> percent) {
        return percent ? nlohmann::ordered_json(*percent) : nlohmann::ordered_json();
    };
    const nlohmann::ordered_json json = {
            {"channel", toJson(zapped.channel)},       {"tuning", name(zapped.end.tuning)},
            {"error", name(zapped.end.error)},         {"signalLevel", number(zapped.level)},
            {"signalQuality", number(zapped.quality)}, {"now", words.json(zapped.events.now)},
            {"next", words.json(zapped.events.next)}};
    printLine(json.dump(2));
}

void printText(const Zapped& zapped, EventWords& words) {
    printLine(withoutControls(fmt::format("locked: {} ({}, {}), signal level {}, quality {}",
                                          label(zapped.channel), name(zapped.channel.medium),
                                          frequencyText(zapped.channel.frequencyKhz),
                                          percentText(zapped.level), percentText(zapped.quality))));
    const auto show = [&](const char* when, const std::optional<qortv::Event>& event) {
        if (!event) return;
        printLine(withoutControls(
                fmt::format("{:<4}  {}  {}", when, words.span(*event), event->title)));
    };
    show("now", zapped.events.now);
    show("next", zapped.events.next);
}

}  // namespace

int zap(const Common& common, const ZapOptions& options) {
    const bool up = options.channel == "+";
    const bool step = up || options.channel == "-";
    const WakeUp wakeUp;
    TuningEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    ChannelList list(qortv::connect<ChannelList::Interface>(common.timeout));
    qortv::Tuner tuner(qortv::connect<qortv::Tuner::Interface>(common.timeout));

    std::optional<Channel> channel;
    if (step) {
        channel = onlyShown(list);
    } else {
        channel = chooseChannel(list, options.channel, options.medium);
        if (!channel) return kFailure;
        if (!common.json) printLine(withoutControls("tuning to " + label(*channel)));
    }
    events.queue().forget();
    if (channel) {
        tuner.tune(channel->id);
    } else if (up) {
        tuner.up();
    } else {
        tuner.down();
    }
    const auto end = waitForEnd(events.queue(), wakeUp, channel ? channel->id : 0);
    if (!end) {
        fmt::print(stderr, "qortvctl: the tuner does not say whether the channel comes in\n");
        return kFailure;
    }
    if (!channel) {
        const auto channels = list.read();
        const auto found = std::find_if(channels.begin(), channels.end(), [&](const Channel& one) {
            return one.id == end->channelId;
        });
        if (found == channels.end()) {
            fmt::print(stderr, "qortvctl: the channel that was tuned to is gone\n");
            return kFailure;
        }
        channel = *found;
    }

    qortv::Guide guide(qortv::connect<qortv::Guide::Interface>(common.timeout));
    qortv::Clock clock(qortv::connect<qortv::Clock::Interface>(common.timeout));
    EventWords words(clock);
    const Zapped zapped = {*channel, *end, tuner.signalLevel(), tuner.signalQuality(),
                           readNowNext(guide, channel->id)};
    if (common.json) printJson(zapped, words);
    if (end->tuning == Tuning::kFailed) {
        fmt::print(stderr, "qortvctl: {} does not come in: {}\n", label(*channel),
                   name(end->error));
        return kFailure;
    }
    if (!common.json) printText(zapped, words);
    return kOk;
}

}  // namespace qortvctl
