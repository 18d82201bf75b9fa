// Parental ratings as an application sees them.
#include "middleware/rating.h"

#include <atomic>
#include <thread>

#include "middleware/broadcast.h"
#include "middleware/config.h"
#include "middleware/inputsource.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/core/core.h"
#include "television/generator/event_plan.h"

namespace {

using stream_generator::EventPlan;
using stream_generator::kUsualTime;

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void rated(int32_t code, void*, void* system, void* number, void*, void*) {
    NotificationLog::instance().add(code == RATING_NFY_SETTING_CHANGED ? "setting" : "block", code,
                                    {value(system), value(number)});
}
SeenNotification setting(uint64_t system, uint64_t number) {
    return {"setting", RATING_NFY_SETTING_CHANGED, {system, number}};
}
SeenNotification block(bool blocked) {
    return {"block", RATING_NFY_BLOCK_CHANGED, {blocked ? 1u : 0u, 0}};
}

/** The two functions of a setting of one byte. */
struct Setting {
    int32_t (*get)(uint8_t*);
    int32_t (*set)(uint8_t);
    uint8_t most;
    uint8_t delivered;
    uint32_t system;

    uint8_t read() const {
        uint8_t number = 0xEE;
        EXPECT_EQ(get(&number), TV_OK);
        return number;
    }
};
int32_t setUnrated(uint8_t blocked) {
    return a_qortvapi_rating_set_block_unrated(blocked != 0);
}
constexpr Setting kSettings[] = {
        {a_qortvapi_rating_get_us_movie_setting_info, a_qortvapi_rating_set_us_movie_setting_info,
         RATING_US_MOVIE_MAX, 0, RATING_SYSTEM_US_MOVIE},
        {a_qortvapi_rating_get_can_eng_setting_info, a_qortvapi_rating_set_can_eng_setting_info,
         RATING_CAN_ENG_MAX, 0, RATING_SYSTEM_CAN_ENG},
        {a_qortvapi_rating_get_can_fre_setting_info, a_qortvapi_rating_set_can_fre_setting_info,
         RATING_CAN_FRE_MAX, 0, RATING_SYSTEM_CAN_FRE},
        {a_qortvapi_rating_get_isdb_content_setting_info,
         a_qortvapi_rating_set_isdb_content_setting_info, RATING_ISDB_CONTENT_MAX, 0,
         RATING_SYSTEM_ISDB},
        {a_qortvapi_rating_get_isdb_age_setting_info, a_qortvapi_rating_set_isdb_age_setting_info,
         RATING_AGE_MAX, 0, RATING_SYSTEM_ISDB},
        {a_qortvapi_rating_get_dvb_age_setting_info, a_qortvapi_rating_set_dvb_age_setting_info,
         RATING_AGE_MAX, 0, RATING_SYSTEM_DVB},
        {a_qortvapi_rating_get_enable, a_qortvapi_rating_set_enable, 1, 1, RATING_SYSTEM_ALL},
        {a_qortvapi_rating_get_block_unrated, setUnrated, 1, 0, RATING_SYSTEM_ALL}};

class TelevisionRating : public TelevisionTest {
  protected:
    TelevisionRating() {
        log.clear();
        options.time = [this] { return machine.load(); };
    }
    ~TelevisionRating() override {
        tv.reset();
        log.clear();
    }

    static void listen() { a_qortvapi_rating_op_vchip_reg_callback(rated, nullptr); }
    static std::vector<EventPlan> planned(const std::string& name) {
        for (const auto& plan : stream_generator::demoPlans()) {
            for (const auto& service : plan.services) {
                if (service.name == name) {
                    return stream_generator::eventPlans(service, plan.time, plan.guideHours);
                }
            }
        }
        ADD_FAILURE() << name;
        return {};
    }
    static void select(const std::string& name) {
        EXPECT_EQ(a_qortvapi_channellist_set_current_channel(channel(SVL_ID_TERRESTRIAL, name)),
                  TV_OK);
    }
    /** The clock stands in the middle of an event. */
    void goTo(const EventPlan& event) {
        machine = kBegin + (event.start + event.duration / 2 - kUsualTime) * 1000;
    }
    /** The first event of a service that begins at `from` or later and is `rated`, or is not. */
    static EventPlan find(const std::string& name, bool rated, int64_t from = 0) {
        for (const EventPlan& event : planned(name)) {
            if ((event.age != 0) == rated && event.start >= from) return event;
        }
        ADD_FAILURE() << name;
        return {};
    }
    static std::string map(int32_t expected = TV_OK) {
        RATING_MAP_T map = {};
        EXPECT_EQ(a_qortvapi_rating_get_crnt_rating_info(&map), expected);
        return std::string(map.s_region) + "/" + map.s_dimension + "/" + map.s_rating;
    }

    static constexpr int64_t kBegin = 1'800'000'000'000;
    std::atomic<int64_t> machine{kBegin};
    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionRating, SettingsAreKeptCheckedAndNotified) {
    start();
    listen();
    for (const Setting& one : kSettings) {
        EXPECT_EQ(one.read(), one.delivered);
        EXPECT_EQ(one.set(one.delivered), TV_OK) << "no change";
        EXPECT_EQ(one.set(one.most), TV_OK);
        EXPECT_EQ(one.set(one.most), TV_OK) << "no change";
        EXPECT_EQ(one.read(), one.most);
        EXPECT_EQ(one.get(nullptr), TV_INVALID_ARGUMENT);
        EXPECT_EQ(one.get(badPointer<uint8_t>()), TV_INVALID_ARGUMENT);
        if (one.set == setUnrated) continue;
        EXPECT_EQ(one.set(static_cast<uint8_t>(one.most + 1)), TV_INVALID_ARGUMENT);
        EXPECT_EQ(one.set(UINT8_MAX), TV_INVALID_ARGUMENT);
        EXPECT_EQ(one.read(), one.most);
    }
    EXPECT_EQ(a_qortvapi_rating_set_enable(0), TV_OK);
    EXPECT_EQ(log.wait("setting", 8),
              (std::vector<SeenNotification>{
                      setting(RATING_SYSTEM_US_MOVIE, RATING_US_MOVIE_MAX),
                      setting(RATING_SYSTEM_CAN_ENG, RATING_CAN_ENG_MAX),
                      setting(RATING_SYSTEM_CAN_FRE, RATING_CAN_FRE_MAX),
                      setting(RATING_SYSTEM_ISDB, RATING_ISDB_CONTENT_MAX << 8),
                      setting(RATING_SYSTEM_ISDB, RATING_ISDB_CONTENT_MAX << 8 | RATING_AGE_MAX),
                      setting(RATING_SYSTEM_DVB, RATING_AGE_MAX), setting(RATING_SYSTEM_ALL, 3),
                      setting(RATING_SYSTEM_ALL, 2)}));
    restart();
    for (const Setting& one : kSettings) {
        EXPECT_EQ(one.read(), one.set == a_qortvapi_rating_set_enable ? 0 : one.most);
    }
}

TEST_F(TelevisionRating, UnitedStatesTelevision) {
    start();
    listen();
    US_TV_RATING_BLOCK_T set = {};
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(&set), TV_OK) << "no change";
    set.ab_rating[1] = 255;
    set.ab_rating[15] = 1;
    set.ab_all[3] = 2;
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(&set), TV_OK);
    log.wait("setting", 1);
    restart();
    listen();
    US_TV_RATING_BLOCK_T got;
    std::memset(&got, 0xEE, sizeof got);
    EXPECT_EQ(a_qortvapi_rating_get_us_tv_setting_info(&got), TV_OK);
    for (size_t i = 0; i < 16; ++i) EXPECT_EQ(got.ab_rating[i], i == 1 || i == 15 ? 1 : 0) << i;
    for (size_t i = 0; i < 4; ++i) EXPECT_EQ(got.ab_all[i], i == 3 ? 1 : 0) << i;
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(&got), TV_OK) << "no change";
    set = {};
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(&set), TV_OK);
    EXPECT_EQ(
            log.wait("setting", 2),
            (std::vector<SeenNotification>{setting(RATING_SYSTEM_US_TV, 1 << 1 | 1 << 15 | 1 << 19),
                                           setting(RATING_SYSTEM_US_TV, 0)}));
    EXPECT_EQ(a_qortvapi_rating_get_us_tv_setting_info(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_set_us_tv_setting_info(badPointer<const US_TV_RATING_BLOCK_T>()),
              TV_INVALID_ARGUMENT);
    uint8_t grouped = 9;
    EXPECT_EQ(a_qortvapi_rating_get_us_tv_group_by_child(&grouped), TV_OK);
    EXPECT_EQ(grouped, 0);
    EXPECT_EQ(a_qortvapi_rating_get_us_tv_group_by_child(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_atsc_storage(true), TV_OK);
}

TEST_F(TelevisionRating, TablesAreWhatApplicationsSet) {
    start();
    listen();
    uint8_t available = 9;
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_avail(&available), TV_OK);
    EXPECT_EQ(available, 0);
    OPEN_VCHIP_BLOCK_DATA_T levels = {5, 2, 4, {0, 0, 1, 7, 1}};
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&levels), TV_OK);
    OPEN_VCHIP_BLOCK_DATA_T longest = {255, 255, 255, {}};
    longest.aui1_blocked[254] = 1;
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&longest), TV_OK);
    log.wait("setting", 2);
    restart();
    listen();
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_avail(&available), TV_OK);
    EXPECT_EQ(available, 1);
    OPEN_VCHIP_BLOCK_DATA_T got = {5, 2, 99, {9, 9, 9, 9, 9}};
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_setting_info(&got), TV_OK);
    EXPECT_EQ(got.ui1_level_count, 4);
    EXPECT_EQ(std::vector<int>(got.aui1_blocked, got.aui1_blocked + 6),
              (std::vector<int>{0, 0, 1, 1, 0, 0}));
    got = {255, 255, 0, {}};
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_setting_info(&got), TV_OK);
    EXPECT_EQ(got.ui1_level_count, 255);
    EXPECT_EQ(got.aui1_blocked[254], 1);
    got = {2, 5, 77, {9}};
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_setting_info(&got), TV_NOT_FOUND);
    EXPECT_EQ(got.ui1_level_count, 77);
    EXPECT_EQ(got.aui1_blocked[0], 9);

    std::vector<uint8_t> info(65, 0xEE);
    OPEN_VCHIP_KEY_PARAM_T key = {5, 2, 3};
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_info(&key, info.data()), TV_OK);
    EXPECT_EQ(std::vector<int>(info.begin(), info.begin() + 4), (std::vector<int>{5, 2, 4, 1}));
    EXPECT_STREQ(reinterpret_cast<char*>(info.data() + 4), "Region 5, dimension 2, level 3");
    EXPECT_EQ(info[64], 0xEE);
    for (const OPEN_VCHIP_KEY_PARAM_T unknown :
         {OPEN_VCHIP_KEY_PARAM_T{5, 2, 4}, OPEN_VCHIP_KEY_PARAM_T{5 + 256, 2, 3},
          OPEN_VCHIP_KEY_PARAM_T{5, 2 + 256, 3}, OPEN_VCHIP_KEY_PARAM_T{4, 2 + 256, 3},
          OPEN_VCHIP_KEY_PARAM_T{UINT32_MAX, UINT16_MAX, 255}}) {
        EXPECT_EQ(a_qortvapi_rating_get_op_vchip_info(&unknown, info.data()), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_info(nullptr, info.data()), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_info(&key, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_setting_info(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_avail(nullptr), TV_INVALID_ARGUMENT);

    for (int i = 2; i < RATING_OPEN_VCHIP_COUNT; ++i) {
        OPEN_VCHIP_BLOCK_DATA_T more = {9, static_cast<uint8_t>(i), 1, {}};
        ASSERT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&more), TV_OK) << i;
    }
    OPEN_VCHIP_BLOCK_DATA_T more = {9, 200, 1, {}};
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&more), TV_FULL);
    levels.ui1_level_count = 0;
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&levels), TV_OK) << "forgotten";
    EXPECT_EQ(a_qortvapi_rating_set_op_vchip_setting_info(&more), TV_OK);
    got = {5, 2, 0, {}};
    EXPECT_EQ(a_qortvapi_rating_get_op_vchip_setting_info(&got), TV_NOT_FOUND);
    const auto seen = log.wait("setting", 2 + RATING_OPEN_VCHIP_COUNT);
    EXPECT_EQ(seen[0], setting(RATING_SYSTEM_OPEN, 5 * 256 + 2));
    EXPECT_EQ(seen[1], setting(RATING_SYSTEM_OPEN, 255 * 256 + 255));
    EXPECT_EQ(seen.back(), setting(RATING_SYSTEM_OPEN, 9 * 256 + 200));
}

TEST_F(TelevisionRating, TheProgrammeThatIsOn) {
    startWithDemo();
    select("Première");
    const EventPlan event = find("Première", true);
    goTo(event);
    const std::string age = "/DVB/age " + std::to_string(event.age);
    EXPECT_EQ(map().substr(3), age);
    RATING_MAP_T ofEvent = {};
    EXPECT_EQ(a_qortvapi_event_get_rating_map(channel(SVL_ID_TERRESTRIAL, "Première"),
                                              event.eventId, &ofEvent),
              TV_OK);
    EXPECT_EQ(map().substr(0, 3), ofEvent.s_region);
    goTo(find("Première", false));
    EXPECT_EQ(map(TV_NOT_FOUND), "//");
    select("Engineering Test");
    EXPECT_EQ(map(TV_NOT_FOUND), "//") << "no guide";
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop("main", true), TV_OK);
    EXPECT_EQ(map(TV_NOT_FOUND), "//") << "nothing plays";
    EXPECT_EQ(a_qortvapi_rating_get_crnt_rating_info(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_rating_get_crnt_rating_info(badPointer<RATING_MAP_T>()),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionRating, BlocksBySettingAndByChannel) {
    startWithDemo();
    select("Première");
    const EventPlan event = find("Première", true);
    goTo(event);
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto blocked = [&] { return a_qortvapi_event_check_block(one, event.eventId); };
    listen();
    EXPECT_EQ(blocked(), 0);
    EXPECT_EQ(a_qortvapi_rating_set_dvb_age_setting_info(event.age), TV_OK);
    EXPECT_EQ(blocked(), 0) << "up to that age";
    EXPECT_EQ(a_qortvapi_rating_set_dvb_age_setting_info(event.age - 1), TV_OK);
    EXPECT_EQ(blocked(), 1);
    EXPECT_EQ(a_qortvapi_rating_set_dvb_age_setting_info(event.age - 2), TV_OK) << "as before";
    EXPECT_EQ(a_qortvapi_rating_set_enable(0), TV_OK);
    EXPECT_EQ(blocked(), 0);
    EXPECT_EQ(a_qortvapi_rating_set_enable(1), TV_OK);
    EXPECT_EQ(blocked(), 1);
    select("Engineering Test");
    select("Première");
    EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceid(INPUT_SOURCE_HDMI_1), TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceid(INPUT_SOURCE_TV), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_value(CONFIG_GROUP_LOCK, "lock.age", 18, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_rating_set_block_unrated(true), TV_OK) << "another kind";
    EXPECT_EQ(log.wait("block", 8), (std::vector<SeenNotification>{
                                            block(true), block(false), block(true), block(false),
                                            block(true), block(false), block(true), block(false)}));
    // The change of a setting is notified before the block that it causes.
    const auto all = log.seen("");
    EXPECT_EQ(all[0], setting(RATING_SYSTEM_DVB, event.age));
    EXPECT_EQ(all[1], setting(RATING_SYSTEM_DVB, event.age - 1u));
    EXPECT_EQ(all[2], block(true));
}

TEST_F(TelevisionRating, UnratedProgrammesAreBlockedWhereTheyAreToBe) {
    startWithDemo();
    select("Première");
    goTo(find("Première", false));
    listen();
    EXPECT_EQ(a_qortvapi_rating_set_dvb_age_setting_info(1), TV_OK);
    EXPECT_EQ(a_qortvapi_rating_set_block_unrated(true), TV_OK);
    select("Engineering Test");
    EXPECT_EQ(log.wait("block", 2), (std::vector<SeenNotification>{block(true), block(false)}));
}

TEST_F(TelevisionRating, BlocksWithTheNextProgramme) {
    options.tick = std::chrono::milliseconds(2);
    startWithDemo();
    select("Première");
    const EventPlan harmless = find("Première", false);
    goTo(harmless);
    EXPECT_EQ(a_qortvapi_rating_set_dvb_age_setting_info(1), TV_OK);
    listen();
    goTo(find("Première", true, harmless.start));
    EXPECT_EQ(log.wait("block", 1), std::vector<SeenNotification>{block(true)});
    goTo(harmless);
    EXPECT_EQ(log.wait("block", 2), (std::vector<SeenNotification>{block(true), block(false)}));
}

/** A rating list that owns its nodes and entries. */
struct RatingList {
    std::vector<RatingListNode> nodes;
    std::vector<RatingListEntry> entries;

    explicit RatingList(size_t count) : nodes(count) {
        for (size_t i = 0; i < count; ++i) {
            nodes[i] = {};
            nodes[i].pt_next = i + 1 < count ? &nodes[i + 1] : nullptr;
        }
    }
    int32_t convert(std::string& text) const {
        RATING_MAP_T map;
        std::memset(&map, 0, sizeof map);
        const int32_t result = a_qortvapi_rating_convert_rating_info(nodes.data(), &map);
        EXPECT_LT(strnlen(map.s_region, sizeof map.s_region), sizeof map.s_region);
        EXPECT_LT(strnlen(map.s_dimension, sizeof map.s_dimension), sizeof map.s_dimension);
        EXPECT_LT(strnlen(map.s_rating, sizeof map.s_rating), sizeof map.s_rating);
        text = std::string(map.s_region) + "|" + map.s_dimension + "|" + map.s_rating;
        return result;
    }
};

TEST_F(TelevisionRating, ListsBecomeTexts) {
    start();
    std::string text;
    RatingList list(4);
    const RatingListEntry first[] = {{0, 3}, {1, 5}};
    const RatingListEntry second[] = {{7, 9}};
    list.nodes[0] = {1, 2, "US", first, list.nodes[0].pt_next};
    list.nodes[1] = {5, 1, nullptr, second, list.nodes[1].pt_next};
    list.nodes[2] = {1, 1, "again", second, list.nodes[2].pt_next};
    list.nodes[3] = {6, 0, "", nullptr, nullptr};
    EXPECT_EQ(list.convert(text), TV_OK);
    EXPECT_EQ(text, "US, region 5, region 6|0, 1, 7|3, 5, 9");

    const std::string longName(1'000'000, 'n');
    const std::vector<RatingListEntry> many(UINT16_MAX, RatingListEntry{65535, 65535});
    list.nodes[0] = {1, UINT16_MAX, longName.c_str(), many.data(), nullptr};
    EXPECT_EQ(list.convert(text), TV_OK);
    EXPECT_EQ(text.substr(0, 65), std::string(64, 'n') + "|") << "cut";

    RATING_MAP_T map = {"kept", "", ""};
    EXPECT_EQ(a_qortvapi_rating_convert_rating_info(nullptr, &map), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_rating_convert_rating_info(list.nodes.data(), nullptr),
              TV_INVALID_ARGUMENT);
    list.nodes[0] = {1, 1, "US", nullptr, nullptr};
    EXPECT_EQ(a_qortvapi_rating_convert_rating_info(list.nodes.data(), &map), TV_INVALID_ARGUMENT);
    EXPECT_STREQ(map.s_region, "kept");
}

TEST_F(TelevisionRating, LongListsAreWalked) {
    start();
    std::string text;
    RatingList list(300'000);
    const RatingListEntry entry = {1, 2};
    for (size_t i = 0; i < list.nodes.size(); ++i) {
        list.nodes[i].ui2_region = static_cast<uint16_t>(i / 65'536);
    }
    list.nodes.front().s_name = "first";
    list.nodes.front().ui2_count = 1;
    list.nodes.front().at_entry = &entry;
    EXPECT_EQ(list.convert(text), TV_OK);
    EXPECT_EQ(text, "first, region 1, region 2, region 3, region 4|1|2");
    list.nodes.back().pt_next = &list.nodes.front();
    EXPECT_EQ(list.convert(text), TV_INVALID_ARGUMENT) << "one that never ends";
    EXPECT_EQ(text, "||");
}

TEST_F(TelevisionRating, SettingsAndChannelsFromManyThreads) {
    options.tick = std::chrono::milliseconds(1);
    startWithDemo();
    listen();
    goTo(find("Première", true));
    const uint32_t channels[] = {channel(SVL_ID_TERRESTRIAL, "Première"),
                                 channel(SVL_ID_TERRESTRIAL, "Engineering Test")};
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i) a_qortvapi_rating_set_dvb_age_setting_info(i % 19);
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i) {
            a_qortvapi_channellist_set_current_channel(channels[i % 2]);
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i) a_qortvapi_rating_set_enable(i % 2);
    });
    for (std::thread& thread : threads) thread.join();
    // Whatever the threads caused, these leave the programme not blocked, then blocked.
    a_qortvapi_rating_set_enable(1);
    a_qortvapi_rating_set_dvb_age_setting_info(0);
    select("Première");
    a_qortvapi_rating_set_dvb_age_setting_info(1);
    a_qortvapi_rating_set_us_movie_setting_info(5);
    std::vector<SeenNotification> seen;
    const SeenNotification last = setting(RATING_SYSTEM_US_MOVIE, 5);
    for (size_t count = 1; std::find(seen.begin(), seen.end(), last) == seen.end(); ++count) {
        seen = log.wait("setting", count);
        ASSERT_GE(seen.size(), count);
    }
    const std::vector<SeenNotification> blocks = log.seen("block");
    ASSERT_FALSE(blocks.empty());
    EXPECT_EQ(blocks.back(), block(true));
    for (size_t i = 1; i < blocks.size(); ++i) {
        EXPECT_FALSE(blocks[i] == blocks[i - 1]) << "only changes are notified";
    }
}

}  // namespace
