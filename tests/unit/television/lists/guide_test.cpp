// The guide: which events a channel has, which are present and following, and when these change.
#include "television/lists/guide.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace television;

namespace {

constexpr uint32_t kOne = 0x101;
constexpr uint32_t kTwo = 0x102;
constexpr uint32_t kOther = 0x201;

GuideEvent event(uint16_t id, int64_t start, uint32_t duration, const std::string& title = "x") {
    GuideEvent event;
    event.eventId = id;
    event.start = start;
    event.duration = duration;
    event.title = title;
    return event;
}

ServiceEvents service(uint16_t stream, uint16_t id, bool actual, std::vector<GuideEvent> events) {
    return {{9, stream, id}, actual, std::move(events)};
}

ParsedMultiplex multiplex(const std::string& source, std::vector<ServiceEvents> services) {
    ParsedMultiplex result;
    result.source = source;
    result.events = std::make_shared<const std::vector<ServiceEvents>>(std::move(services));
    return result;
}

ScanResult scanOf(std::vector<ParsedMultiplex> multiplexes) {
    ScanResult scan;
    scan.multiplexes = std::move(multiplexes);
    scan.folderRead = true;
    return scan;
}

/** Services 1 and 2 of stream 1, and service 1 of stream 2. */
ChannelLists channels() {
    ChannelLists lists;
    const auto add = [&](uint32_t channel, uint16_t stream, uint16_t id) {
        Service added;
        added.record.ui4_channel_id = channel;
        added.record.ui2_original_network_id = 9;
        added.record.ui2_transport_stream_id = stream;
        added.record.ui2_service_id = id;
        lists.lists[0].services.push_back(added);
    };
    add(kOne, 1, 1);
    add(kTwo, 1, 2);
    add(kOther, 2, 1);
    return lists;
}

std::vector<uint16_t> ids(const std::vector<Guide::EventPointer>& events) {
    std::vector<uint16_t> result;
    for (const auto& found : events) result.push_back(found->eventId);
    return result;
}

using Ids = std::vector<uint16_t>;

TEST(Guide, PresentAndFollowingByTheClock) {
    Guide guide;
    EXPECT_EQ(guide.presentEvent(kOne, 0), nullptr);
    EXPECT_TRUE(guide.load(channels(),
                           scanOf({multiplex("a.ts", {service(1, 1, true,
                                                              {event(1, 100, 50), event(2, 150, 50),
                                                               event(3, 300, 10)})})})));
    EXPECT_EQ(guide.presentEvent(kOne, 99), nullptr);
    EXPECT_EQ(guide.followingEvent(kOne, 99)->eventId, 1);
    EXPECT_EQ(guide.presentEvent(kOne, 100)->eventId, 1);
    EXPECT_EQ(guide.presentEvent(kOne, 149)->eventId, 1);
    EXPECT_EQ(guide.followingEvent(kOne, 149)->eventId, 2);
    EXPECT_EQ(guide.presentEvent(kOne, 150)->eventId, 2);
    EXPECT_EQ(guide.presentEvent(kOne, 200), nullptr) << "a gap";
    EXPECT_EQ(guide.followingEvent(kOne, 200)->eventId, 3);
    EXPECT_EQ(guide.followingEvent(kOne, 300), nullptr);
    EXPECT_FALSE(guide.present(kTwo, 100));
    EXPECT_FALSE(guide.present(0, 100));
    EXPECT_EQ(guide.event(kOne, 3)->start, 300);
    EXPECT_EQ(guide.event(kOne, 4), nullptr);
    EXPECT_EQ(guide.event(kOne, 0x10003), nullptr) << "event ids have sixteen bits";
}

TEST(Guide, AnEventInsideALongerOneIsPresentWhileItLasts) {
    Guide guide;
    guide.load(channels(),
               scanOf({multiplex("a.ts", {service(1, 1, true,
                                                  {event(1, 100, 100), event(2, 120, 10),
                                                   event(3, 130, 0)})})}));
    EXPECT_EQ(guide.presentEvent(kOne, 125)->eventId, 2);
    EXPECT_EQ(guide.presentEvent(kOne, 131)->eventId, 1);
}

TEST(Guide, Ranges) {
    Guide guide;
    guide.load(channels(), scanOf({multiplex("a.ts", {service(1, 1, true,
                                                              {event(1, 100, 50), event(2, 150, 50),
                                                               event(3, 200, 50)})})}));
    EXPECT_EQ(ids(guide.events(kOne, 0, 100)), Ids{});
    EXPECT_EQ(ids(guide.events(kOne, 0, 101)), Ids{1});
    EXPECT_EQ(ids(guide.events(kOne, 149, 150)), Ids{1});
    EXPECT_EQ(ids(guide.events(kOne, 149, 151)), (Ids{1, 2}));
    EXPECT_EQ(ids(guide.events(kOne, 150, 150)), Ids{2});
    EXPECT_EQ(ids(guide.events(kOne, 250, 900)), Ids{});
    EXPECT_EQ(ids(guide.events(kOne, 300, 0)), Ids{});
    EXPECT_EQ(guide.events(kOne, INT64_MIN, INT64_MAX).size(), 3u);
    EXPECT_TRUE(guide.events(kTwo, 0, 900).empty());
}

TEST(Guide, TheScheduleInAServicesOwnStreamWins) {
    Guide guide;
    guide.load(channels(),
               scanOf({multiplex("a.ts", {service(2, 1, false,
                                                  {event(1, 100, 50, "hearsay"),
                                                   event(2, 50, 50, "only there")})}),
                       multiplex("b.ts", {service(2, 1, true, {event(1, 100, 60, "own")})})}));
    EXPECT_EQ(guide.event(kOther, 1)->title, "own");
    EXPECT_EQ(ids(guide.events(kOther, 0, 900)), (Ids{2, 1})) << "in order of their start";
}

TEST(Guide, UnreadableFilesKeepTheirEvents) {
    Guide guide;
    const ParsedMultiplex a = multiplex("a.ts", {service(1, 1, true, {event(1, 100, 50)})});
    const ParsedMultiplex b = multiplex("b.ts", {service(2, 1, true, {event(2, 100, 50)})});
    EXPECT_TRUE(guide.load(channels(), scanOf({a, b})));
    EXPECT_FALSE(guide.load(channels(), scanOf({a, b}))) << "nothing is new";
    ScanResult scan = scanOf({b});
    scan.unreadable = {"a.ts"};
    EXPECT_FALSE(guide.load(channels(), scan));
    EXPECT_NE(guide.event(kOne, 1), nullptr);
    EXPECT_FALSE(guide.load(channels(), ScanResult())) << "the folder could not be read";
    EXPECT_NE(guide.event(kOther, 2), nullptr);
    EXPECT_TRUE(guide.load(channels(), scanOf({b})));
    EXPECT_EQ(guide.event(kOne, 1), nullptr);
    EXPECT_TRUE(guide.load(ChannelLists(), scanOf({b}))) << "channels that are gone have no guide";
    EXPECT_EQ(guide.event(kOther, 2), nullptr);
}

TEST(Guide, AdvanceReturnsTheChannelsThatHaveAnotherEvent) {
    Guide guide;
    EXPECT_EQ(guide.advance(0), std::vector<uint32_t>{});
    guide.load(
            channels(),
            scanOf({multiplex("a.ts", {service(1, 1, true, {event(1, 100, 50), event(2, 150, 50)}),
                                       service(1, 2, true, {event(1, 100, 80)})})}));
    EXPECT_EQ(guide.advance(100), std::vector<uint32_t>{})
            << "the load itself is notified in another way";
    EXPECT_EQ(guide.advance(149), std::vector<uint32_t>{});
    EXPECT_EQ(guide.advance(150), std::vector<uint32_t>{kOne});
    EXPECT_EQ(guide.advance(151), std::vector<uint32_t>{});
    EXPECT_EQ(guide.advance(500), (std::vector<uint32_t>{kOne, kTwo}));
    EXPECT_EQ(guide.advance(100), (std::vector<uint32_t>{kOne, kTwo})) << "the clock was set back";
    EXPECT_EQ(guide.advance(0), (std::vector<uint32_t>{kOne, kTwo}));
    EXPECT_EQ(guide.advance(0), std::vector<uint32_t>{});
}

TEST(Guide, Records) {
    GuideEvent full = event(77, 1000, 60, std::string(300, 't'));
    full.text = "short";
    full.extended = "long";
    full.language = "deu";
    full.contents = {0x43, 0x10};
    full.ratings = {{"DEU", 12}, {"FRA", 16}};
    full.scrambled = true;
    full.runningStatus = 4;
    full.tableVersion = 3;
    EVENT_GENERAL_INFO_T record = Guide::record(kOne, full, 1000);
    EXPECT_EQ(record.ui4_channel_id, kOne);
    EXPECT_EQ(record.ui2_event_id, 77);
    EXPECT_EQ(record.ui1_running_status, 4);
    EXPECT_EQ(record.ui1_free_ca_mode, 1);
    EXPECT_EQ(record.i8_start_time, 1000);
    EXPECT_EQ(record.ui4_duration, 60u);
    EXPECT_EQ(record.ui1_content, 0x43);
    EXPECT_EQ(record.ui1_minimum_age, 16);
    EXPECT_EQ(record.ui1_has_details, 1);
    EXPECT_EQ(record.ui1_table_version, 3);
    EXPECT_STREQ(record.s_language, "deu");
    EXPECT_EQ(strlen(record.s_title), sizeof record.s_title - 1);
    EXPECT_STREQ(record.s_text, "short");
    EXPECT_EQ(Guide::record(kOne, full, 1060).ui1_running_status, 1) << "it is over";
    EXPECT_EQ(Guide::record(kOne, full, 999).ui1_running_status, 1);
    full.runningStatus = 3;
    EXPECT_EQ(Guide::record(kOne, full, 1000).ui1_running_status, 3) << "pausing";
    full.runningStatus = 0;
    EXPECT_EQ(Guide::record(kOne, full, 1000).ui1_running_status, 4);
    full.text.clear();
    EXPECT_STREQ(Guide::record(kOne, full, 0).s_text, "long");
}

TEST(Guide, IsReadWhileItIsLoaded) {
    Guide guide;
    const ChannelLists lists = channels();
    std::atomic<bool> done{false};
    std::thread reader([&] {
        while (!done) {
            const auto found = guide.presentEvent(kOne, 100);
            if (found != nullptr) {
                EXPECT_EQ(found->title.size(), found->eventId);
            }
            for (const auto& each : guide.events(kOne, 0, 900)) EXPECT_LE(each->start, 900);
            guide.advance(100);
        }
    });
    for (uint16_t i = 1; i < 100; ++i) {
        guide.load(
                lists,
                scanOf({multiplex(
                        "a.ts", {service(1, 1, true, {event(i, 100, 50, std::string(i, 't'))})})}));
    }
    done = true;
    reader.join();
    EXPECT_EQ(guide.presentEvent(kOne, 100)->eventId, 99);
}

}  // namespace
