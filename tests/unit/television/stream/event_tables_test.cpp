// Event and time tables, from sections made by hand and from the generator.
#include "television/stream/event_tables.h"

#include <gtest/gtest.h>

#include "support/sections.h"
#include "television/base/calendar.h"
#include "television/generator/event_plan.h"
#include "television/generator/stream_writer.h"
#include "television/stream/event_descriptors.h"
#include "television/stream/stream_folder.h"

using namespace stream_generator;
using sections::Bytes;
using television::BroadcastTime;
using television::EventTables;
using television::GuideEvent;
using television::ParsedMultiplex;
using television::ServiceEvents;

namespace {

/** 1993-10-13 12:45:00 UTC. */
constexpr int64_t kExample = 750516300;
constexpr uint16_t kStream = 7;
constexpr uint16_t kNetwork = 9;

ParsedMultiplex parse(const Bytes& bytes) {
    return television::readMultiplex([&bytes, at = size_t{0}](uint8_t* data, size_t size) mutable {
        const size_t part = std::min(size, bytes.size() - at);
        std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(at), part, data);
        at += part;
        return static_cast<long>(part);
    });
}

Bytes joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes descriptor(uint8_t tag, const Bytes& content) {
    return joined({{tag, static_cast<uint8_t>(content.size())}, content});
}

Bytes text(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

/** A text with its length in front. */
Bytes field(const std::string& content) {
    return joined({{static_cast<uint8_t>(content.size())}, text(content)});
}

Bytes shortEvent(const std::string& title, const std::string& content = "",
                 const std::string& language = "eng") {
    return descriptor(0x4D, joined({text(language), field(title), field(content)}));
}

/** The entry of an event that begins at kExample and lasts an hour. */
Bytes event(uint16_t id, const Bytes& descriptors,
            const Bytes& time = {0xC0, 0x79, 0x12, 0x45, 0x00, 0x01, 0x00, 0x00}) {
    return joined({{static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id)},
                   time,
                   {static_cast<uint8_t>(0x80 | descriptors.size() >> 8),
                    static_cast<uint8_t>(descriptors.size())},
                   descriptors});
}

struct Place {
    uint8_t number = 0;
    uint8_t last = 0;
    uint8_t version = 1;
    bool current = true;
    uint16_t stream = kStream;
};

Bytes eit(uint8_t tableId, uint16_t service, const Bytes& entries, const Place& place = {}) {
    const Bytes header = {0, static_cast<uint8_t>(place.stream), 0, kNetwork, place.last, tableId};
    return sections::section(tableId, service, joined({header, entries}), place.version,
                             place.current, place.number, place.last);
}

/** Reads a stream with these sections of the EIT. */
ParsedMultiplex readEvents(const std::vector<Bytes>& parts) {
    sections::Stream stream;
    stream.add(0, sections::pat(kStream, {{1, 0x100}}));
    for (const Bytes& part : parts) stream.add(0x12, part);
    return parse(stream.finish());
}

std::vector<GuideEvent> eventsOf(const ParsedMultiplex& multiplex, uint16_t service = 1) {
    if (multiplex.events == nullptr) return {};
    for (const ServiceEvents& events : *multiplex.events) {
        if (events.service.serviceId == service) return events.events;
    }
    return {};
}

/** The event that is read from an entry with these descriptors. */
GuideEvent eventOf(const Bytes& descriptors) {
    const auto events = eventsOf(readEvents({eit(0x4E, 1, event(5, descriptors))}));
    EXPECT_EQ(events.size(), 1u);
    return events.empty() ? GuideEvent() : events.front();
}

TEST(EventTables, ShortEvent) {
    const ParsedMultiplex read =
            readEvents({eit(0x4E, 1,
                            event(5, joined({shortEvent("M\xC8"
                                                        "anner",
                                                        "Text"),
                                             shortEvent("Autre", "", "fra")})))});
    EXPECT_EQ(read.damagedSections, 0u);
    ASSERT_NE(read.events, nullptr);
    ASSERT_EQ(read.events->size(), 1u);
    const ServiceEvents& service = read.events->front();
    EXPECT_TRUE(service.actual);
    EXPECT_EQ(service.service.originalNetworkId, kNetwork);
    EXPECT_EQ(service.service.transportStreamId, kStream);
    ASSERT_EQ(service.events.size(), 1u);
    const GuideEvent& got = service.events.front();
    EXPECT_EQ(got.eventId, 5);
    EXPECT_EQ(got.start, kExample);
    EXPECT_EQ(got.duration, 3600u);
    EXPECT_EQ(got.runningStatus, 4);
    EXPECT_FALSE(got.scrambled);
    EXPECT_TRUE(got.presentFollowing);
    EXPECT_FALSE(got.schedule);
    EXPECT_EQ(got.title, "Männer");
    EXPECT_EQ(got.text, "Text");
    EXPECT_EQ(got.language, "eng");
}

TEST(EventTables, DetailsAreJoinedInTheOrderOfTheirNumbers) {
    const auto extended = [](uint8_t number, const Bytes& items, const std::string& content,
                             const std::string& language = "deu") {
        return descriptor(0x4E, joined({{static_cast<uint8_t>(number << 4 | 2)},
                                        text(language),
                                        {static_cast<uint8_t>(items.size())},
                                        items,
                                        field(content)}));
    };
    const GuideEvent got = eventOf(
            joined({extended(1, joined({field(""), field("ter")}), "des Textes"),
                    extended(0, joined({field("Regie"), field("A"), field("Autor"), field("Pe")}),
                             "Der Anfang "),
                    extended(0, {}, "noch einmal"), extended(2, {}, "only English", "eng"),
                    extended(2, {}, " und sein Ende")}));
    EXPECT_EQ(got.extended, "Regie: A\nAutor: Peter\nDer Anfang des Textes und sein Ende");
    EXPECT_EQ(eventOf(extended(0, {}, "nur Text")).extended, "nur Text");
    EXPECT_EQ(eventOf(extended(0, joined({field("Regie"), field("A")}), "")).extended, "Regie: A");
}

TEST(EventTables, GenresRatingsAudioAndIdentifiers) {
    const GuideEvent got =
            eventOf(joined({descriptor(0x54, {0x43, 0x00, 0x91, 0x12, 0x77}),
                            descriptor(0x55, joined({text("DEU"),
                                                     {0x09},
                                                     text("FRA"),
                                                     {0x0F},
                                                     text("GBR"),
                                                     {0x10},
                                                     text("AUT"),
                                                     {0x00},
                                                     text("X")})),
                            descriptor(0x50, joined({{0xF2, 0x03, 0x01}, text("engStereo")})),
                            descriptor(0x50, joined({{0xF1, 0x03, 0x02}, text("engPicture")})),
                            descriptor(0x50, joined({{0xF4, 0x05, 0x03}, text("d3u")})),
                            descriptor(0x76, joined({{0x31 << 2, 4},
                                                     text("a/b1"),
                                                     {0x32 << 2 | 1, 0xFF, 0xFF},
                                                     {0x32 << 2, 3},
                                                     text("s/2")}))}));
    EXPECT_EQ(got.contents, (std::vector<uint8_t>{0x43, 0x91}));
    ASSERT_EQ(got.ratings.size(), 4u);
    EXPECT_EQ(got.ratings[0].country, "DEU");
    EXPECT_EQ(got.ratings[0].minimumAge, 12);
    EXPECT_EQ(got.ratings[1].minimumAge, 18);
    EXPECT_EQ(got.ratings[2].minimumAge, 0) << "the broadcaster's own";
    EXPECT_EQ(got.ratings[3].minimumAge, 0);
    EXPECT_EQ(got.minimumAge(), 18);
    ASSERT_EQ(got.audio.size(), 2u);
    EXPECT_EQ(got.audio[0].text, "Stereo");
    EXPECT_EQ(got.audio[0].language, "eng");
    EXPECT_EQ(got.audio[0].tag, 1);
    EXPECT_EQ(got.audio[1].streamContent, 4);
    EXPECT_EQ(got.audio[1].language, "") << "no code";
    ASSERT_EQ(got.identifiers.size(), 2u);
    EXPECT_EQ(got.identifiers[0].text, "a/b1");
    EXPECT_EQ(got.identifiers[0].type, 0x31);
    EXPECT_EQ(got.identifiers[1].text, "s/2");
}

TEST(EventTables, OtherStreamsEventsBelongToTheirServices) {
    Place other;
    other.stream = 8;
    const ParsedMultiplex read =
            readEvents({eit(0x4F, 1, event(5, shortEvent("There")), other),
                        eit(0x60, 1, event(6, shortEvent("There later")), other),
                        eit(0x50, 1, event(7, shortEvent("Here")))});
    ASSERT_EQ(read.events->size(), 2u);
    EXPECT_EQ((*read.events)[0].service.transportStreamId, kStream);
    EXPECT_TRUE((*read.events)[0].actual);
    EXPECT_EQ((*read.events)[1].service.transportStreamId, 8);
    EXPECT_FALSE((*read.events)[1].actual);
    EXPECT_EQ((*read.events)[1].events.size(), 2u);
}

TEST(EventTables, PresentAndFollowingWinAndAreCompletedByTheSchedule) {
    const auto events = eventsOf(readEvents(
            {eit(0x50, 1,
                 joined({event(5, joined({shortEvent("Planned", "Planned text"),
                                          descriptor(0x54, {0x10, 0})})),
                         event(6, shortEvent("Later"), {0xC0, 0x79, 0x13, 0x45, 0, 0, 0x30, 0})})),
             eit(0x4E, 1, event(5, shortEvent("As it is")))}));
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].title, "As it is");
    EXPECT_EQ(events[0].text, "Planned text");
    EXPECT_EQ(events[0].contents, std::vector<uint8_t>{0x10});
    EXPECT_TRUE(events[0].presentFollowing && events[0].schedule);
    EXPECT_EQ(events[1].title, "Later");
    EXPECT_EQ(events[1].start, kExample + 3600);
    EXPECT_EQ(events[1].duration, 1800u);
}

TEST(EventTables, ANewVersionReplacesTheTable) {
    Place second;
    second.number = 1;
    second.last = 1;
    Place newer;
    newer.version = 2;
    Place future;
    future.version = 3;
    future.current = false;
    const Bytes old = eit(0x4E, 1, event(5, shortEvent("Old")));
    EXPECT_EQ(eventsOf(readEvents({old, eit(0x4E, 1, event(6, shortEvent("Next")), second), old}))
                      .size(),
              2u);
    const auto events =
            eventsOf(readEvents({old, eit(0x4E, 1, event(6, shortEvent("Next")), second),
                                 eit(0x4E, 1, event(7, shortEvent("New")), newer),
                                 eit(0x4E, 1, event(8, shortEvent("Future")), future)}));
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].title, "New");
}

TEST(EventTables, EventsWithoutATimeAreLeftOut) {
    const Bytes good = shortEvent("x");
    const auto events = eventsOf(readEvents(
            {eit(0x4E, 1,
                 joined({event(1, good, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, 0x00, 0x00}),
                         event(2, good, {0xC0, 0x79, 0x24, 0x00, 0x00, 0x01, 0x00, 0x00}),
                         event(3, good, {0xC0, 0x79, 0x12, 0x60, 0x00, 0x01, 0x00, 0x00}),
                         event(4, good, {0xC0, 0x79, 0x12, 0x45, 0x0A, 0x01, 0x00, 0x00}),
                         event(5, good, {0xC0, 0x79, 0x12, 0x45, 0x00, 0xFF, 0xFF, 0xFF}),
                         event(6, good, {0xC0, 0x79, 0x12, 0x45, 0x00, 0x99, 0x59, 0x59})}))}));
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].eventId, 6);
    EXPECT_EQ(events[0].duration, 99 * 3600 + 59 * 60 + 59u);
}

TEST(EventTables, LengthsThatLieAreDamage) {
    Bytes entry = event(5, shortEvent("x"));
    entry[11] = 0xFF;  // the descriptors' length
    Bytes inner = event(5, shortEvent("x"));
    inner[13] = 0xFF;  // one descriptor's length
    Bytes shortEntry = event(5, {});
    shortEntry.pop_back();
    const ParsedMultiplex read =
            readEvents({eit(0x4E, 1, entry), eit(0x4E, 2, inner), eit(0x50, 3, shortEntry),
                        sections::section(0x4E, 4, {0, 0, 0, 0, 0})});
    EXPECT_EQ(read.damagedSections, 4u);
    EXPECT_EQ(read.events, nullptr);
    // A checksum that is wrong.
    Bytes broken = eit(0x4E, 1, event(5, shortEvent("x")));
    broken.back() ^= 1;
    EXPECT_EQ(readEvents({broken}).damagedSections, 1u);
    EXPECT_EQ(readEvents({broken}).events, nullptr);
    // Stuffing and tables of others on the same PID are none.
    EXPECT_EQ(readEvents({sections::section(0x72, 0, {1, 2, 3})}).damagedSections, 0u);
}

TEST(EventTables, LengthsInsideDescriptorsDoNoHarm) {
    const GuideEvent got = eventOf(joined(
            {descriptor(0x4D, joined({text("eng"), {0xFF}, text("Title")})),
             descriptor(0x4E, joined({{0x00}, text("eng"), {0xFF, 0xFF}, text("Item")})),
             descriptor(0x4E, {}), descriptor(0x4D, {}), descriptor(0x50, {0x02}),
             descriptor(0x54, {0x10}), descriptor(0x55, {'D'}), descriptor(0x76, {0xC4, 0xFF, 'a'}),
             descriptor(0x76, {0xC7}), descriptor(0x76, {0xC5})}));
    EXPECT_EQ(got.title, "Title");
    EXPECT_EQ(got.extended, "Item: ");
    ASSERT_EQ(got.identifiers.size(), 1u);
    EXPECT_TRUE(got.contents.empty());
}

TEST(EventTables, WhatIsBeyondTheLimitsIsLeftOut) {
    EventTables tables;
    const Bytes header = {0, kStream, 0, kNetwork, 0, 0x50};
    const auto take = [&](uint8_t tableId, uint16_t service, uint8_t number, const Bytes& entries) {
        const Bytes payload = joined({header, entries});
        tables.take({tableId, service, 1, number, 255},
                    television::ByteView(payload.data(), payload.size()));
    };
    Bytes hundred;
    for (uint16_t i = 0; i < 100; ++i) hundred = joined({hundred, event(i, {})});
    // More different events of one service than the limit, in sixteen tables.
    uint16_t id = 0;
    for (unsigned number = 0; number < 32; ++number) {
        for (size_t at = 0; at < hundred.size(); at += 12, ++id) {
            hundred[at] = static_cast<uint8_t>(id >> 8);
            hundred[at + 1] = static_cast<uint8_t>(id);
        }
        take(0x50 + number % 16, 1, static_cast<uint8_t>(number), hundred);
    }
    ASSERT_EQ(tables.services().size(), 1u);
    EXPECT_EQ(tables.services()[0].events.size(), EventTables::kMostEvents);
    for (unsigned service = 2; service < EventTables::kMostServices + 10; ++service) {
        take(0x4E, static_cast<uint16_t>(service), 0, event(1, {}));
    }
    EXPECT_EQ(tables.services().size(), EventTables::kMostServices);

    const GuideEvent rated = eventOf(
            joined(std::vector<Bytes>(20, descriptor(0x55, joined({text("DEU"), {0x09}})))));
    EXPECT_EQ(rated.ratings.size(), television::kMostEventDetails);
}

TEST(EventTables, TextsHaveALimit) {
    EventTables tables;
    const Bytes header = {0, kStream, 0, kNetwork, 0, 0x50};
    const std::string most(250, 'x');
    Bytes entries;
    for (uint16_t i = 0; i < 15; ++i)
        entries = joined({entries, event(i, shortEvent(most.substr(3)))});
    const Bytes payload = joined({header, entries});
    for (unsigned service = 1; service <= EventTables::kMostServices; ++service) {
        for (unsigned number = 0; number < 2; ++number) {
            tables.take({0x50, static_cast<uint16_t>(service), 1, static_cast<uint8_t>(number), 1},
                        television::ByteView(payload.data(), payload.size()));
        }
        for (unsigned table = 0x51; table < 0x54; ++table) {
            tables.take({static_cast<uint8_t>(table), static_cast<uint16_t>(service), 1, 0, 0},
                        television::ByteView(payload.data(), payload.size()));
        }
    }
    size_t bytes = 0;
    for (const ServiceEvents& service : tables.services()) {
        for (const GuideEvent& got : service.events) bytes += got.title.size();
    }
    EXPECT_GT(bytes, size_t{1} << 20);
    EXPECT_LE(bytes, EventTables::kMostTextBytes + most.size());
}

TEST(EventTables, ASectionNumberSaysWhenATableIsWhole) {
    EventTables tables;
    const auto take = [&](uint8_t tableId, uint8_t number, uint8_t last, uint8_t segmentLast,
                          uint8_t lastTable) {
        const Bytes payload = {0, kStream, 0, kNetwork, segmentLast, lastTable};
        tables.take({tableId, 1, 1, number, last},
                    television::ByteView(payload.data(), payload.size()));
    };
    EXPECT_FALSE(tables.hasPresentFollowing(1));
    take(0x4E, 0, 1, 1, 0x4E);
    EXPECT_FALSE(tables.hasPresentFollowing(1));
    take(0x4E, 1, 1, 1, 0x4E);
    EXPECT_TRUE(tables.hasPresentFollowing(1));
    EXPECT_FALSE(tables.hasSchedule(1));
    // Two segments, of two sections and one, and a second table.
    take(0x50, 0, 8, 1, 0x51);
    take(0x50, 8, 8, 8, 0x51);
    take(0x51, 0, 0, 0, 0x51);
    EXPECT_FALSE(tables.hasSchedule(1));
    take(0x50, 1, 8, 1, 0x51);
    EXPECT_TRUE(tables.hasSchedule(1));
    // Numbers beyond the table and its segment do no harm.
    take(0x50, 16, 16, 255, 0xFF);
    EXPECT_FALSE(tables.hasSchedule(2));
}

TEST(EventTables, TheProgramTableCannotTakeThePidsOfGuideAndTime) {
    sections::Stream stream;
    for (uint8_t i = 0; i < 3; ++i) {
        stream.add(0, sections::section(0, kStream,
                                        {0, 1, 0xE0, 0x12, 0, 2, 0xE0, 0x14, 0, 0, 0xE0, 0x12},
                                        static_cast<uint8_t>(i + 1)));
    }
    stream.add(0x12, eit(0x4E, 1, event(5, shortEvent("Still read"))));
    const ParsedMultiplex read = parse(stream.finish());
    EXPECT_EQ(read.services.size(), 2u);
    EXPECT_EQ(eventsOf(read).size(), 1u);
    EXPECT_EQ(read.damagedSections, 0u);
}

// Time.

Bytes tdt(const Bytes& time) {
    return joined({{0x70, 0x70, static_cast<uint8_t>(time.size())}, time});
}

Bytes tot(const Bytes& time, const Bytes& descriptors) {
    Bytes bytes = joined(
            {{0x73, 0x70, 0}, time, {0xF0, static_cast<uint8_t>(descriptors.size())}, descriptors});
    bytes[2] = static_cast<uint8_t>(bytes.size() + 4 - 3);
    const uint32_t crc = sections::crc32(bytes.data(), bytes.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(crc >> shift));
    return bytes;
}

const Bytes kExampleTime = {0xC0, 0x79, 0x12, 0x45, 0x00};

ParsedMultiplex readTime(const std::vector<Bytes>& parts) {
    sections::Stream stream;
    stream.add(0, sections::pat(kStream, {{1, 0x100}}));
    for (const Bytes& part : parts) stream.add(0x14, part);
    return parse(stream.finish());
}

Bytes region(const std::string& country, uint8_t flags, const Bytes& rest) {
    return joined({text(country), {flags}, rest});
}

TEST(TimeTables, TimeAndDate) {
    const ParsedMultiplex read = readTime({tdt(kExampleTime)});
    EXPECT_TRUE(read.time.tdt);
    EXPECT_FALSE(read.time.tot);
    EXPECT_EQ(read.time.utc, kExample);
    EXPECT_EQ(read.damagedSections, 0u);
    EXPECT_FALSE(readTime({}).time.hasTime());
}

TEST(TimeTables, OffsetOfTheFirstRegion) {
    const Bytes change = {0xC0, 0x8B, 0x01, 0x00, 0x00};  // 1993-10-31 01:00:00
    const Bytes regions = descriptor(
            0x58, joined({region("DEU", 0x02, joined({{0x02, 0x00}, change, {0x01, 0x00}})),
                          region("GBR", 0x02, joined({{0x01, 0x00}, change, {0x00, 0x00}}))}));
    const BroadcastTime east =
            readTime({tot(kExampleTime, joined({descriptor(0x77, {1}), regions}))}).time;
    EXPECT_TRUE(east.tot);
    EXPECT_FALSE(east.tdt);
    EXPECT_EQ(east.utc, kExample);
    EXPECT_EQ(east.offset, 7200);
    EXPECT_EQ(east.nextOffset, 3600);
    EXPECT_EQ(east.nextChange, 752029200);
    const BroadcastTime west =
            readTime({tot(kExampleTime,
                          descriptor(0x58, region("PRT", 0x03,
                                                  joined({{0x03, 0x30}, change, {0x02, 0x30}}))))})
                    .time;
    EXPECT_EQ(west.offset, -(3 * 3600 + 1800));
    EXPECT_EQ(west.nextOffset, -(2 * 3600 + 1800));
    // Without a region there is a time only, and an offset that was told before stays.
    const BroadcastTime none = readTime({tot(kExampleTime, {})}).time;
    EXPECT_FALSE(none.tot);
    EXPECT_EQ(readTime({tot(kExampleTime, regions), tdt(kExampleTime), tot(kExampleTime, {})})
                      .time.offset,
              7200);
}

TEST(TimeTables, WhatIsNoTimeIsDamage) {
    const Bytes zeroOffset = region("DEU", 2, {0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0});
    Bytes badChecksum = tot(kExampleTime, descriptor(0x58, zeroOffset));
    badChecksum.back() ^= 1;
    Bytes longForm = sections::section(0x70, 0, kExampleTime);
    for (const Bytes& bad :
         {tdt({0xC0, 0x79, 0x24, 0x00, 0x00}), tdt({0xC0, 0x79, 0x1A, 0x00, 0x00}),
          tdt({0xC0, 0x79, 0x12, 0x45}), tdt({0xC0, 0x79, 0x12, 0x45, 0, 0}), badChecksum, longForm,
          tot({0xC0, 0x79, 0x99, 0x45, 0x00}, descriptor(0x58, zeroOffset)),
          tot(kExampleTime, {0x58, 13, 1})}) {
        const ParsedMultiplex read = readTime({bad});
        EXPECT_EQ(read.damagedSections, 1u) << testing::PrintToString(bad);
        EXPECT_FALSE(read.time.hasTime());
    }
    // A change that is no time is none; an offset that is none leaves the time alone.
    const BroadcastTime unchanging =
            readTime({tot(kExampleTime, descriptor(0x58, zeroOffset))}).time;
    EXPECT_TRUE(unchanging.tot);
    EXPECT_EQ(unchanging.nextChange, 0);
    const BroadcastTime odd =
            readTime({tot(kExampleTime,
                          descriptor(0x58, region("DEU", 2, {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0})))})
                    .time;
    EXPECT_FALSE(odd.tot);
    EXPECT_EQ(odd.utc, kExample);
}

// The generator's guide.

TEST(GeneratedGuide, EveryEventComesThrough) {
    size_t services = 0;
    size_t events = 0;
    for (const MultiplexPlan& plan : demoPlans()) {
        const ParsedMultiplex read = parse(buildStream(plan, demoPlans()));
        EXPECT_EQ(read.damagedSections, 0u);
        for (const ServicePlan& service : plan.services) {
            const auto wanted = eventPlans(service, kUsualTime, kUsualGuideHours);
            const auto got = eventsOf(read, service.serviceId);
            ASSERT_EQ(got.size(), wanted.size()) << service.name;
            EXPECT_EQ(wanted.empty(), service.guide == GuideKind::kNone);
            services += wanted.empty() ? 0 : 1;
            for (size_t i = 0; i < wanted.size(); ++i, ++events) {
                EXPECT_EQ(got[i].eventId, wanted[i].eventId);
                EXPECT_EQ(got[i].start, wanted[i].start);
                EXPECT_EQ(got[i].duration, wanted[i].duration);
                EXPECT_EQ(got[i].title, wanted[i].title);
                EXPECT_EQ(got[i].text, wanted[i].text);
                EXPECT_EQ(got[i].language, wanted[i].language);
                EXPECT_EQ(got[i].minimumAge(), wanted[i].age);
                EXPECT_EQ(got[i].contents, std::vector<uint8_t>{wanted[i].genre});
                EXPECT_EQ(got[i].scrambled, service.scrambled);
                EXPECT_TRUE(got[i].schedule);
                EXPECT_EQ(got[i].presentFollowing, i < 2);
                EXPECT_EQ(got[i].audio.size(), service.audioLanguages.size());
                std::string extended;
                for (const auto& [name, value] : wanted[i].items) {
                    extended += name + ": " + value + "\n";
                }
                EXPECT_EQ(got[i].extended, extended + wanted[i].details);
                EXPECT_EQ(got[i].identifiers.size(), wanted[i].programmeId.empty() ? 0u : 2u);
            }
        }
    }
    EXPECT_GT(services, 30u);
    EXPECT_GT(events, services * 15);
}

TEST(GeneratedGuide, EventsFollowEachOtherWithoutGaps) {
    const MultiplexPlan plan = demoPlans().front();
    for (const ServicePlan& service : plan.services) {
        const auto events = eventPlans(service, kUsualTime, 100);
        ASSERT_FALSE(events.empty());
        EXPECT_LE(events.front().start, kUsualTime);
        int64_t next = events.front().start;
        for (const EventPlan& got : events) {
            EXPECT_EQ(got.start, next);
            next = got.start + got.duration;
        }
        EXPECT_GE(next, kUsualTime + 100 * 3600);
        // Made an hour later it is the same programme.
        const auto later = eventPlans(service, kUsualTime + 3600, 99);
        EXPECT_EQ(later.back().eventId, events.back().eventId);
        EXPECT_EQ(later.back().title, events.back().title);
    }
}

TEST(GeneratedGuide, AWeekNeedsASecondTable) {
    const auto plans = demoPlans(kUsualTime, kMostGuideHours);
    const ParsedMultiplex read = parse(buildStream(plans.front(), plans));
    const ServicePlan& service = plans.front().services.front();
    EXPECT_EQ(eventsOf(read, service.serviceId).size(),
              eventPlans(service, kUsualTime, kMostGuideHours).size());
    MultiplexPlan plan = plans.front();
    plan.guideHours = kMostGuideHours + 1;
    EXPECT_THROW(buildStream(plan), std::invalid_argument);
}

TEST(GeneratedGuide, EventsOfTheNetworksOtherStreamsComeToo) {
    const ParsedMultiplex read = parse(buildStream(demoPlans()[0], demoPlans()));
    size_t others = 0;
    for (const ServiceEvents& service : *read.events) {
        if (service.actual) continue;
        ++others;
        EXPECT_EQ(service.events.size(), 2u);
        EXPECT_NE(service.service.transportStreamId, demoPlans()[0].transportStreamId);
    }
    EXPECT_EQ(others, 8u);
}

TEST(GeneratedGuide, TimeAndItsOffset) {
    struct Moment {
        int64_t time;
        int32_t offset;
        int64_t change;
        int32_t next;
    };
    for (const Moment& moment :
         {Moment{kUsualTime, 7200, 1729990800, 3600},
          Moment{1729990800 - 1, 7200, 1729990800, 3600},
          Moment{1729990800, 3600, 1743296400, 7200}, Moment{1704067200, 3600, 1711846800, 7200}}) {
        const auto plans = demoPlans(moment.time, 0);
        const ParsedMultiplex read = parse(buildStream(plans.front(), plans));
        EXPECT_TRUE(read.time.tdt && read.time.tot);
        EXPECT_EQ(read.time.utc, moment.time);
        EXPECT_EQ(read.time.offset, moment.offset);
        EXPECT_EQ(read.time.nextChange, moment.change);
        EXPECT_EQ(read.time.nextOffset, moment.next);
        EXPECT_EQ(read.events, nullptr) << "no hours, no guide";
    }
    MultiplexPlan plan = demoPlans().front();
    for (const int64_t time : {int64_t{-1}, int64_t{1} << 32, INT64_MAX, INT64_MIN}) {
        plan.time = time;
        EXPECT_THROW(buildStream(plan), std::invalid_argument);
    }
}

/** A stream whose tables are complete at once but for the guide, which comes after `megabytes`.
 * `announced`: the SDT announces present and following events. */
Bytes lateGuide(size_t megabytes, bool announced) {
    const auto flags = static_cast<uint8_t>(announced ? 0xFD : 0xFC);  // present and following
    stream_generator::Packetizer packets;
    const auto add = [&](uint16_t pid, const Bytes& bytes) {
        packets.section(pid, bytes.data(), bytes.size());
    };
    add(0, sections::pat(kStream, {{0, 0x10}}));
    add(0x11, sections::section(0x42, kStream, {0, kNetwork, 0xFF, 0, 1, flags, 0x80, 0x00}));
    add(0x10, sections::section(0x40, 3, {0xF0, 0x00, 0xF0, 0x00}));
    add(0x14, tdt(kExampleTime));
    packets.stuffing(static_cast<unsigned>(megabytes * 1024 * 1024 / 188));
    add(0x12, eit(0x4E, 1, event(5, shortEvent("Late"))));
    packets.stuffing(10);
    return packets.take();
}

TEST(EventTables, AnAnnouncedGuideIsWaitedForWithinReason) {
    EXPECT_EQ(eventsOf(parse(lateGuide(3, true))).size(), 1u);
    EXPECT_EQ(eventsOf(parse(lateGuide(3, false))).size(), 0u) << "was read on to the end";
    EXPECT_EQ(eventsOf(parse(lateGuide(40, true))).size(), 0u) << "was waited for too long";
}

}  // namespace
