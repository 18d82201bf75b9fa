// qortvctl now and epg.
#include "qortv/guide.h"

#include <fmt/format.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <vector>

#include "channel_choice.h"
#include "commands.h"
#include "guide_output.h"
#include "output.h"

namespace qortvctl {

namespace {

using qortv::Channel;
using qortv::ChannelList;
using Json = nlohmann::ordered_json;

/** What a question about the guide is answered from. */
struct Sources {
    explicit Sources(const Common& common)
        : list(qortv::connect<ChannelList::Interface>(common.timeout)),
          guide(qortv::connect<qortv::Guide::Interface>(common.timeout)),
          clock(qortv::connect<qortv::Clock::Interface>(common.timeout)),
          words(clock) {}

    ChannelList list;
    qortv::Guide guide;
    qortv::Clock clock;
    EventWords words;
};

/** The channel that was asked for or is on; nothing, and a message, when there is none. */
std::optional<Channel> channelFor(ChannelList& list, const std::string& text,
                                  const std::optional<qortv::Medium>& medium) {
    if (!text.empty()) return chooseChannel(list, text, medium);
    auto current = list.current();
    if (!current) fmt::print(stderr, "qortvctl: no channel is on: name one, or zap to it first\n");
    return current;
}

void sayNoGuide(const Channel& channel) {
    fmt::print(stderr, "qortvctl: the guide has nothing of {}\n", label(channel));
}

Json toJson(const Channel& channel, const NowNext& events, EventWords& words) {
    return {{"channel", {{"id", channel.id}, {"number", channel.number}, {"name", channel.name}}},
            {"now", words.json(events.now)},
            {"next", words.json(events.next)}};
}

/** A row for each programme of one channel. */
void printOne(const Channel& channel, const NowNext& events, EventWords& words) {
    Table table({{""}, {"TIME"}, {"PROGRESS", Table::Align::kRight}, {"AGE"}, {"TITLE"}, {"TEXT"}});
    const auto add = [&](const char* when, const std::optional<qortv::Event>& event) {
        if (!event) return;
        table.add({when, words.span(*event), words.progress(*event), ageText(*event), event->title,
                   event->text});
    };
    add("now", events.now);
    add("next", events.next);
    printLine(withoutControls(label(channel)));
    table.print();
}

/** A row for each channel. */
class AllTable {
  public:
    void add(const Channel& channel, const NowNext& events, EventWords& words) {
        std::vector<std::string> row = {std::to_string(channel.number), channel.name};
        if (events.now) {
            row.insert(row.end(), {events.now->title, words.time(events.now->end()),
                                   words.progress(*events.now)});
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

int nowOnAll(const Common& common, const NowOptions& options, Sources& sources) {
    auto array = Json::array();
    AllTable table;
    for (const auto& channel : sources.list.read(queryFor(options.medium))) {
        const NowNext events = readNowNext(sources.guide, channel.id);
        if (common.json) {
            array.push_back(toJson(channel, events, sources.words));
        } else {
            table.add(channel, events, sources.words);
        }
    }
    if (common.json) {
        printLine(array.dump(2));
    } else {
        table.print();
    }
    return kOk;
}

int printDetails(const Common& common, Sources& sources, const Channel& channel, uint16_t id) {
    const auto details = sources.guide.details(channel.id, id);
    if (!details) {
        fmt::print(stderr, "qortvctl: the guide of {} has no event {}\n", label(channel), id);
        return kFailure;
    }
    const qortv::Event& event = details->event;
    if (common.json) {
        Json json = sources.words.json(event);
        json["text"] = details->text;
        json["details"] = details->longText;
        json["guidance"] = details->guidance;
        json["series"] = details->series;
        json["blocked"] = details->blocked;
        printLine(json.dump(2));
        return kOk;
    }
    printLine(withoutControls(event.title));
    printLine(withoutControls(fmt::format("{}, {} {}", label(channel), sources.words.date(event),
                                          sources.words.span(event))));
    const auto paragraph = [](const char* heading, const std::string& text) {
        if (text.empty()) return;
        printLine("");
        if (*heading != '\0') printLine(heading);
        for (size_t at = 0; at < text.size();) {
            const size_t end = std::min(text.find('\n', at), text.size());
            printLine(withoutControls(text.substr(at, end - at)));
            at = end + 1;
        }
    };
    paragraph("", details->text);
    paragraph("", details->longText);
    std::string facts = qortv::genreName(event.genre);
    const auto addFact = [&](const std::string& fact) {
        if (!fact.empty()) facts += (facts.empty() ? "" : ", ") + fact;
    };
    addFact(details->guidance);
    if (details->blocked) addFact("blocked");
    if (event.scrambled) addFact("scrambled");
    if (!details->series.empty()) addFact("series " + details->series);
    paragraph("", facts);
    return kOk;
}

}  // namespace

int now(const Common& common, const NowOptions& options) {
    Sources sources(common);
    if (options.all) return nowOnAll(common, options, sources);
    const auto channel = channelFor(sources.list, options.channel, options.medium);
    if (!channel) return kFailure;
    const NowNext events = readNowNext(sources.guide, channel->id);
    if (!events.now && !events.next) sayNoGuide(*channel);
    if (common.json) {
        printLine(Json::array({toJson(*channel, events, sources.words)}).dump(2));
    } else {
        printOne(*channel, events, sources.words);
    }
    return kOk;
}

int epg(const Common& common, const EpgOptions& options) {
    Sources sources(common);
    const auto channel = channelFor(sources.list, options.channel, options.medium);
    if (!channel) return kFailure;
    if (options.details) return printDetails(common, sources, *channel, *options.details);

    const int64_t from = sources.words.now();
    const auto events =
            sources.guide.schedule(channel->id, from, from + int64_t{options.hours} * 3600);
    if (events.empty()) sayNoGuide(*channel);
    auto array = Json::array();
    Table table(
            {{"EVENT", Table::Align::kRight}, {"DATE"}, {"TIME"}, {"GENRE"}, {"AGE"}, {"TITLE"}});
    for (const auto& event : events) {
        if (common.json) {
            array.push_back(sources.words.json(event));
        } else {
            table.add({std::to_string(event.id), sources.words.date(event),
                       sources.words.span(event), qortv::genreName(event.genre), ageText(event),
                       event.title});
        }
    }
    if (common.json) {
        printLine(array.dump(2));
    } else {
        table.print();
    }
    return kOk;
}

}  // namespace qortvctl
