// Input sources and picture-and-picture as an application sees them.
#include "middleware/inputsource.h"

#include <sqlite3.h>

#include <thread>

#include "middleware/broadcast.h"
#include "middleware/config.h"
#include "middleware/multiview.h"
#include "middleware/pcl.h"
#include "middleware/scc.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "support/notification_log.h"
#include "support/television_test.h"

namespace {

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
int32_t detection(uint32_t, int32_t condition, void* tag, int32_t width, int32_t height) {
    NotificationLog::instance().add(value(tag) == 0 ? "main" : "sub", condition,
                                    {static_cast<uint64_t>(width), static_cast<uint64_t>(height)});
    return 0;
}
void broadcast(int32_t code, void*, void* channel, void* window, void*, void*) {
    if (code != BROADCAST_NFY_CHANNEL_CHANGED) return;
    NotificationLog::instance().add("channel", code, {value(channel), value(window)});
}
void screenSaver(int32_t message, void*, int32_t, int32_t, int32_t) {
    NotificationLog::instance().add("message", message, {});
}

constexpr const char* kMain = "main";
constexpr const char* kSub = "sub";

class TelevisionInputs : public TelevisionTest {
  protected:
    TelevisionInputs() { log.clear(); }
    ~TelevisionInputs() override {
        tv.reset();
        log.clear();
    }

    static int32_t change(int32_t id, const char* path = kMain, uint16_t priority = 0) {
        return a_qortvapi_inputsource_cs_bysourceidandpathandpriority(id, path, priority);
    }
    static std::string current(const char* path = kMain) {
        char name[256] = {};
        EXPECT_EQ(a_qortvapi_inputsource_get_currentsourcename_bypath(name, sizeof name, path),
                  TV_OK);
        return name;
    }
    static std::string name(int32_t id) {
        char name[256] = {};
        EXPECT_EQ(a_qortvapi_inputsource_get_sourcename_bysourceid(id, name, sizeof name), TV_OK);
        return name;
    }
    /** Returns the flag that a function writes through its last argument. */
    template <typename Function, typename... Arguments>
    static int flag(Function function, Arguments... arguments) {
        uint8_t flag = 0xEE;
        EXPECT_EQ(function(arguments..., &flag), TV_OK);
        return flag;
    }
    static int available(int32_t id, const char* path) {
        return flag(a_qortvapi_inputsource_is_source_available_bysourceidandpath, id, path);
    }
    static int conflict(int32_t a, int32_t b) {
        return flag(a_qortvapi_inputsource_query_conflict, a, b);
    }
    static int picture(const char* path = kMain) {
        return flag(a_qortvapi_inputsource_isVideoSignalAvailable, path);
    }
    static int sound(const char* path = kMain) {
        return flag(a_qortvapi_inputsource_isAudioSignalAvailable, path);
    }
    static void connect(const char* key, bool on = true) {
        EXPECT_EQ(a_qortvapi_config_set_value(CONFIG_GROUP_GENERAL, key, on ? 1 : 0, 0), TV_OK);
    }
    static int playing(const char* path = kMain) {
        return a_qortvapi_multiview_get_video_state(path);
    }
    static uint32_t currentChannel(uint8_t window = 0) {
        SVL_REC_T service = {};
        const int32_t result = a_qortvapi_channellist_get_current_channel_from_nav(
                window, nullptr, &service, nullptr);
        return result == TV_OK ? service.ui4_channel_id : 0;
    }
    static void watchPicture(const char* sink, uintptr_t tag) {
        const SCC_CMD_T commands[] = {{SCC_CMD_COMP_TYPE, SCC_COMP_VIDEO},
                                      {SCC_CMD_SINK_NAME, reinterpret_cast<uintptr_t>(sink)},
                                      {SCC_CMD_END, 0}};
        uint32_t component = 0;
        EXPECT_EQ(c_scc_comp_open(commands, &component), TV_OK);
        EXPECT_EQ(c_scc_vid_set_src_detect_nfy(component, detection, reinterpret_cast<void*>(tag)),
                  TV_OK);
    }

    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionInputs, TheSetsSources) {
    start();
    connect("input.vga.connected");
    ASSERT_EQ(a_qortvapi_inputsource_get_sourcetotalnum(), INPUT_SOURCE_COUNT);
    static const char* const names[] = {"TV",     "AV",     "SCART 1", "Component", "VGA",
                                        "HDMI 1", "HDMI 2", "HDMI 3",  "HDMI 4"};
    static const int types[] = {0, 1, 2, 3, 4, 5, 5, 5, 5};
    static const int places[] = {0, 0, 0, 0, 0, 0, 1, 2, 3};
    for (int i = 0; i < INPUT_SOURCE_COUNT; ++i) {
        QORTVAPI_INPUT_SOURCE_RECORD_T record;
        std::memset(&record, 0xEE, sizeof record);
        ASSERT_EQ(a_qortvapi_inputsource_get_sourcerec_byidx(i, &record), TV_OK);
        EXPECT_EQ(record.ui1_source_id, i);
        EXPECT_EQ(record.ui1_device_type, types[i]);
        EXPECT_EQ(record.ui1_internal_index, places[i]);
        EXPECT_STREQ(record.s_name, names[i]);
        EXPECT_EQ(record.ui4_flags & INPUT_SOURCE_HAS_TUNER, i == 0 ? 1u : 0u);
        EXPECT_EQ(record.ui4_flags & INPUT_SOURCE_DIGITAL,
                  i == 0 || i >= INPUT_SOURCE_HDMI_1 ? uint32_t{INPUT_SOURCE_DIGITAL} : 0);
        EXPECT_EQ(record.ui1_connected, i == 0 || i == INPUT_SOURCE_VGA ? 1 : 0);
        EXPECT_EQ(name(i), names[i]);
    }
    QORTVAPI_INPUT_SHARE_PIN_RECORD_T pair = {9, 9};
    EXPECT_EQ(a_qortvapi_inputsource_get_sharepinrec_byidx(0, &pair), TV_OK);
    EXPECT_EQ(pair.ui1_source_id, INPUT_SOURCE_AV);
    EXPECT_EQ(pair.ui1_other_source_id, INPUT_SOURCE_COMPONENT);
    EXPECT_EQ(a_qortvapi_inputsource_get_hybrid_video_internal_id(), INPUT_SOURCE_AV);
    EXPECT_EQ(a_qortvapi_inputsource_get_hybrid_comp_internal_id(), INPUT_SOURCE_COMPONENT);
    for (const int32_t index : {1, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_inputsource_get_sharepinrec_byidx(index, &pair), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_inputsource_get_sharepinrec_byidx(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(pair.ui1_source_id, INPUT_SOURCE_AV);
    uint32_t line = 0;
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(INPUT_GPIO_SCART_1, &line), TV_OK);
    PCL_GPIO_STATUS_T status = 9;
    EXPECT_EQ(c_pcl_get_gpio(line, 0, &status), TV_OK) << "one of power control's";
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(INPUT_GPIO_HDMI_HPD, &line), TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(INPUT_GPIO_SCART_2, &line), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(INPUT_GPIO_COUNT, &line), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(UINT32_MAX, &line), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_inputsource_get_gpioid_byidx(0, nullptr), TV_INVALID_ARGUMENT);
    uint8_t ports = 9;
    EXPECT_EQ(a_qortvapi_inputsource_get_mhl_port_num(&ports), TV_OK);
    EXPECT_EQ(ports, 0);
}

TEST_F(TelevisionInputs, UnknownSourcesAndPaths) {
    start();
    uint8_t flag = 0xEE;
    char name[8] = "kept";
    QORTVAPI_INPUT_SOURCE_RECORD_T record = {};
    for (const int32_t id : {-1, int32_t{INPUT_SOURCE_COUNT}, 256, 261, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_inputsource_get_sourcerec_byidx(id, &record), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_get_sourcename_bysourceid(id, name, 8), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_get_userdefname_bysourceid(id, name, 8), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(id, "x"), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceid(id), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceidandpath(id, kSub), TV_NOT_FOUND);
        EXPECT_EQ(change(id), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_is_source_available_bysourceidandpath(id, kMain, &flag),
                  TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_is_block_bysourceid(id, &flag), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_is_source_block_bysourceid(id, &flag), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_is_source_autodetect_bysourceid(id, &flag), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_set_source_blockstatus_bysourceid(id, true), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(id, true),
                  TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid(id, &flag),
                  TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(id, 1), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_query_conflict(id, 0, &flag), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_query_conflict(0, id, &flag), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_inputsource_get_external_device_has_signal(INPUT_DEVICE_TYPE_TV, id,
                                                                        &flag),
                  TV_NOT_FOUND);
    }
    for (const uint32_t type : {6u, 255u, UINT32_MAX}) {
        EXPECT_EQ(a_qortvapi_inputsource_get_external_device_has_signal(type, 0, &flag),
                  TV_NOT_FOUND);
    }
    for (const char* path : {static_cast<const char*>(nullptr), "", "third", "mainn", "MAIN"}) {
        EXPECT_EQ(a_qortvapi_inputsource_isVideoSignalAvailable(path, &flag), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_inputsource_isAudioSignalAvailable(path, &flag), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_inputsource_get_currentsourcename_bypath(name, 8, path),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceidandpath(0, path),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(change(0, path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_inputsource_is_source_available_bysourceidandpath(0, path, &flag),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_inputsource_sync_stop(path, true), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_inputsource_isVideoSignalAvailable(kMain, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_is_block_bysourceid(0, badPointer<uint8_t>()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_get_sourcerec_byidx(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_query_conflict(0, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_get_mhl_port_num(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_check_menu_tv_block(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(flag, 0xEE);
    EXPECT_STREQ(name, "kept");
}

TEST_F(TelevisionInputs, NamesStayWithinTheirBuffers) {
    start();
    const std::string own(INPUT_USER_NAME_MAX, 'n');
    EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(0, own.c_str()), TV_OK);
    const auto all = [](char* to, uint32_t length) {
        return std::vector<int32_t>{
                a_qortvapi_inputsource_get_currentsourcename(to, length),
                a_qortvapi_inputsource_get_currentsourcename_bypath(to, length, kMain),
                a_qortvapi_inputsource_get_sourcename_bysourceid(0, to, length),
                a_qortvapi_inputsource_get_userdefname_bysourceid(0, to, length)};
    };
    std::vector<char> buffer(256, '#');
    for (const uint32_t length : {256u, 257u, 100'000u, UINT32_MAX}) {
        for (const int32_t result : all(buffer.data(), length)) EXPECT_EQ(result, TV_OK);
        EXPECT_EQ(std::string(buffer.data()), own);
    }
    for (const uint32_t length : {1u, 2u, 33u}) {
        std::fill(buffer.begin(), buffer.end(), '#');
        for (const int32_t result : all(buffer.data(), length)) EXPECT_EQ(result, TV_OK);
        EXPECT_EQ(std::string(buffer.data()), own.substr(0, length - 1));
        EXPECT_EQ(buffer[length], '#');
    }
    std::fill(buffer.begin(), buffer.end(), '#');
    for (const int32_t result : all(buffer.data(), 0)) EXPECT_EQ(result, TV_INVALID_ARGUMENT);
    EXPECT_EQ(buffer[0], '#');
    for (const int32_t result : all(nullptr, 256)) EXPECT_EQ(result, TV_INVALID_ARGUMENT);
    for (const int32_t result : all(badPointer<char>(), 256)) {
        EXPECT_EQ(result, TV_INVALID_ARGUMENT);
    }
}

TEST_F(TelevisionInputs, NamesLabelsAndFlagsOutliveARestart) {
    start();
    constexpr int32_t id = INPUT_SOURCE_HDMI_3;
    const auto label = [&] {
        return flag(a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid, id);
    };
    EXPECT_EQ(label(), 0);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(id, 1), TV_OK);
    EXPECT_EQ(name(id), "Game");
    EXPECT_EQ(a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(id, INPUT_LABEL_COUNT - 1),
              TV_OK);
    EXPECT_EQ(name(id), "Music");
    EXPECT_EQ(a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(id, INPUT_LABEL_COUNT),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(id, "Küche"), TV_OK);
    for (const std::string& wrong : {std::string(INPUT_USER_NAME_MAX + 1, 'n'),
                                     std::string(100'000, 'n'), std::string("a\tb")}) {
        EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(id, wrong.c_str()),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(id, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(id, true), TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_blockstatus_bysourceid(id, true), TV_OK);
    restart();
    EXPECT_EQ(name(id), "Küche");
    EXPECT_EQ(label(), INPUT_LABEL_COUNT - 1);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_autodetect_bysourceid, id), 1);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_block_bysourceid, id), 1);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_block_bysourceid, id - 1), 0);
    EXPECT_EQ(a_qortvapi_inputsource_set_userdefname_bysourceid(id, ""), TV_OK);
    EXPECT_EQ(name(id), "Music");
    EXPECT_EQ(a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid(id, 0), TV_OK);
    EXPECT_EQ(name(id), "HDMI 3");
    EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(id, false), TV_OK);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_autodetect_bysourceid, id), 0);
    EXPECT_EQ(a_qortvapi_inputsource_set_scart_auto_jump(true), TV_OK);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_autodetect_bysourceid, INPUT_SOURCE_SCART_1),
              1);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_autodetect_bysourceid, INPUT_SOURCE_AV), 0);
}

TEST_F(TelevisionInputs, ChangeEndsWhatPlaysAndTelevisionComesBack) {
    startWithDemo();
    a_qortvapi_broadcast_register_callback(broadcast, nullptr);
    const uint32_t one = channel(SVL_ID_CABLE, "Cable One");
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(one), TV_OK);
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceid(INPUT_SOURCE_HDMI_2), TV_OK);
    EXPECT_EQ(current(), "HDMI 2");
    EXPECT_EQ(current(kSub), "TV");
    EXPECT_EQ(currentChannel(), 0u);
    EXPECT_EQ(a_qortvapi_inputsource_changesource_bysourceidandpath(INPUT_SOURCE_VGA, "main_svctx"),
              TV_OK);
    EXPECT_EQ(current(), "VGA");
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop(kMain, true), TV_OK) << "no service plays";
    EXPECT_EQ(playing(), 1);
    tv->reload();
    EXPECT_EQ(current(), "VGA");
    EXPECT_EQ(currentChannel(), 0u) << "streams that are loaded anew select nothing";
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_OK);
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(currentChannel(), one);
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_OK) << "it plays already";
    EXPECT_EQ(change(INPUT_SOURCE_AV), TV_OK);
    const uint32_t other = channel(SVL_ID_TERRESTRIAL, "Première");
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(other), TV_OK);
    EXPECT_EQ(current(), "TV") << "a channel that is selected brings it back";
    EXPECT_EQ(change(INPUT_SOURCE_AV), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_switch_input_to_tv(), TV_OK);
    EXPECT_EQ(currentChannel(), other);
    EXPECT_EQ(log.wait("channel", 7),
              (std::vector<SeenNotification>{
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {one, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {one, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {other, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0}},
                      {"channel", BROADCAST_NFY_CHANNEL_CHANGED, {other, 0}}}));
}

TEST_F(TelevisionInputs, TheMainSourceOutlivesARestart) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_CABLE, "Cable One");
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(one), TV_OK);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_4), TV_OK);
    EXPECT_EQ(change(INPUT_SOURCE_VGA, kSub), TV_OK);
    restart();
    EXPECT_EQ(current(), "HDMI 4");
    EXPECT_EQ(playing(), 1);
    EXPECT_EQ(current(kSub), "TV");
    EXPECT_EQ(playing(kSub), 0);
    EXPECT_EQ(currentChannel(), 0u);
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_OK);
    EXPECT_EQ(currentChannel(), one);
    restart();
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(currentChannel(), one);
}

TEST_F(TelevisionInputs, ASourceThatThereIsNotIsTheTelevision) {
    startWithDemo();
    const uint32_t one = currentChannel();
    EXPECT_NE(one, 0u);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_4), TV_OK);
    tv.reset();
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open((options.state + "/qortv.db").c_str(), &database), SQLITE_OK);
    const std::string damage =
            "UPDATE settings SET value=200 WHERE value=" + std::to_string(INPUT_SOURCE_HDMI_4);
    EXPECT_EQ(sqlite3_exec(database, damage.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(sqlite3_changes(database), 1);
    sqlite3_close(database);
    start();
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(currentChannel(), one);
}

TEST_F(TelevisionInputs, SourcesWithoutStreams) {
    start();
    a_qortvapi_broadcast_register_callback(broadcast, nullptr);
    EXPECT_EQ(change(INPUT_SOURCE_AV), TV_OK);
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_OK);
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(playing(), 0);
    EXPECT_EQ(picture(), 0);
    EXPECT_EQ(a_qortvapi_screensaver_get_msgID(), SCREENSAVER_MSG_NO_SIGNAL);
    EXPECT_EQ(log.wait("channel", 1),
              (std::vector<SeenNotification>{{"channel", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0}}}));
}

TEST_F(TelevisionInputs, ConflictsAndPriorities) {
    startWithDemo();
    for (int a = 0; a < INPUT_SOURCE_COUNT; ++a) {
        for (int b = 0; b < INPUT_SOURCE_COUNT; ++b) {
            const bool hdmi = a >= INPUT_SOURCE_HDMI_1 && b >= INPUT_SOURCE_HDMI_1;
            const bool plug = (a == INPUT_SOURCE_AV && b == INPUT_SOURCE_COMPONENT) ||
                              (b == INPUT_SOURCE_AV && a == INPUT_SOURCE_COMPONENT);
            EXPECT_EQ(conflict(a, b), hdmi || plug || (a == b && a != INPUT_SOURCE_TV) ? 1 : 0)
                    << a << " " << b;
        }
    }
    EXPECT_EQ(available(INPUT_SOURCE_TV, kSub), 1);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_1), TV_OK);
    EXPECT_EQ(available(INPUT_SOURCE_HDMI_2, kSub), 0);
    EXPECT_EQ(available(INPUT_SOURCE_HDMI_2, kMain), 1);
    EXPECT_EQ(available(INPUT_SOURCE_VGA, kSub), 1);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_2, kSub), TV_BUSY);
    EXPECT_EQ(current(kSub), "TV");
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_2, kSub, 5), TV_OK) << "a higher priority";
    EXPECT_EQ(current(kSub), "HDMI 2");
    EXPECT_EQ(current(), "HDMI 1");
    EXPECT_EQ(playing(), 0) << "stopped";
    EXPECT_EQ(playing(kSub), 1);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_3, kMain, 5), TV_BUSY) << "the same";
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_3, kMain, 6), TV_OK);
    EXPECT_EQ(playing(kSub), 0);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_4, kSub, 6), TV_BUSY);
    EXPECT_EQ(a_qortvapi_inputsource_sync_stop(kMain, false), TV_OK);
    EXPECT_EQ(playing(), 0);
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_4, kSub), TV_OK) << "what is stopped does not conflict";
}

TEST_F(TelevisionInputs, BlockedSourcesAreRefused) {
    startWithDemo();
    const auto block = [](int32_t id, bool on) {
        EXPECT_EQ(a_qortvapi_inputsource_set_source_blockstatus_bysourceid(id, on), TV_OK);
    };
    block(INPUT_SOURCE_AV, true);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_block_bysourceid, INPUT_SOURCE_AV), 1);
    EXPECT_EQ(change(INPUT_SOURCE_AV, kMain, UINT16_MAX), TV_BUSY);
    EXPECT_EQ(available(INPUT_SOURCE_AV, kMain), 0);
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(a_qortvapi_config_set_value(CONFIG_GROUP_LOCK, "lock.inputs", 0, 0), TV_OK);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_block_bysourceid, INPUT_SOURCE_AV), 0);
    EXPECT_EQ(flag(a_qortvapi_inputsource_is_source_block_bysourceid, INPUT_SOURCE_AV), 1);
    EXPECT_EQ(change(INPUT_SOURCE_AV), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_value(CONFIG_GROUP_LOCK, "lock.inputs", 1, 0), TV_OK);
    EXPECT_EQ(playing(), 1) << "what is shown stays";
    EXPECT_EQ(flag(a_qortvapi_inputsource_check_menu_tv_block), 0);
    block(INPUT_SOURCE_TV, true);
    EXPECT_EQ(flag(a_qortvapi_inputsource_check_menu_tv_block), 1);
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_BUSY);
    block(INPUT_SOURCE_TV, false);
    EXPECT_EQ(change(INPUT_SOURCE_TV), TV_OK);
}

TEST_F(TelevisionInputs, Signals) {
    startWithDemo();
    const auto device = [](uint32_t type, int32_t index) {
        return flag(a_qortvapi_inputsource_get_external_device_has_signal, type, index);
    };
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(channel(SVL_ID_CABLE, "Cable One")),
              TV_OK);
    EXPECT_EQ(picture(), 1);
    EXPECT_EQ(sound(), 1);
    EXPECT_EQ(device(INPUT_DEVICE_TYPE_TV, 0), 1);
    EXPECT_EQ(picture(kSub), 0) << "nothing plays";
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(channel(SVL_ID_CABLE, "Jazz Radio")),
              TV_OK);
    EXPECT_EQ(picture(), 0);
    EXPECT_EQ(sound(), 1);
    std::filesystem::remove(streams() + "/dvb-c-1.ts");
    EXPECT_EQ(sound(), 0) << "the multiplex is gone";
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_3), TV_OK);
    EXPECT_EQ(picture(), 0);
    EXPECT_EQ(device(INPUT_DEVICE_TYPE_HDMI, 2), 0);
    connect("input.hdmi3.connected");
    EXPECT_EQ(picture(), 1);
    EXPECT_EQ(sound(), 1);
    EXPECT_EQ(device(INPUT_DEVICE_TYPE_HDMI, 2), 1);
    EXPECT_EQ(device(INPUT_DEVICE_TYPE_HDMI, 1), 0);
    EXPECT_EQ(a_qortvapi_zoom_is_enable(), 1);
    CONFIG_VIDEO_RESOLUTION_T resolution = {};
    EXPECT_EQ(a_qortvapi_config_get_video_resolution(&resolution), TV_OK);
    EXPECT_STREQ(resolution.s_text, "1920x1080p");
    EXPECT_EQ(a_qortvapi_inputsource_sync_stop(kMain, true), TV_OK);
    EXPECT_EQ(picture(), 0);
    EXPECT_EQ(a_qortvapi_zoom_is_enable(), 0);
    connect("input.vga.connected");
    EXPECT_EQ(change(INPUT_SOURCE_VGA), TV_OK);
    EXPECT_EQ(picture(), 1);
    EXPECT_EQ(sound(), 0) << "it has none";
}

TEST_F(TelevisionInputs, PicturesThatComeAndGoAreNotified) {
    startWithDemo();
    a_qortvapi_screensaver_register_msg_callback(screenSaver, nullptr);
    watchPicture(SCC_SINK_MAIN, 0);
    watchPicture(SCC_SINK_SUB, 1);
    log.wait("sub", 1);
    EXPECT_EQ(change(INPUT_SOURCE_COMPONENT), TV_OK);
    connect("input.component.connected");
    connect("input.hdmi1.connected");
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_1), TV_OK);
    connect("input.component.connected", false);
    connect("input.hdmi1.connected", false);
    EXPECT_EQ(a_qortvapi_screensaver_get_msgID(), SCREENSAVER_MSG_NO_SIGNAL);
    connect("input.hdmi1.connected");
    EXPECT_EQ(a_qortvapi_screensaver_get_msgID(), SCREENSAVER_MSG_NONE);
    EXPECT_EQ(a_qortvapi_inputsource_sync_stop(kMain, true), TV_OK);
    EXPECT_EQ(change(INPUT_SOURCE_VGA, kSub), TV_OK);
    connect("input.vga.connected");
    const SeenNotification none = {"main", SCC_DETECT_NO_SIGNAL, {0, 0}};
    const SeenNotification full = {"main", SCC_DETECT_SIGNAL, {1920, 1080}};
    EXPECT_EQ(log.wait("sub", 3),
              (std::vector<SeenNotification>{{"sub", SCC_DETECT_NO_SIGNAL, {0, 0}},
                                             {"sub", SCC_DETECT_NO_SIGNAL, {0, 0}},
                                             {"sub", SCC_DETECT_SIGNAL, {1024, 768}}}));
    auto seen = log.seen("main");
    // The end of the channel and the new source without a signal may be notified as one: they are
    // equal.
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    EXPECT_EQ(
            seen,
            (std::vector<SeenNotification>{
                    full, none, {"main", SCC_DETECT_SIGNAL, {1280, 720}}, full, none, full, none}));
    EXPECT_EQ(log.seen("message").back(),
              (SeenNotification{"message", SCREENSAVER_MSG_NO_SIGNAL, {}}));
    EXPECT_EQ(a_qortvapi_inputsource_sync_stop(kSub, true), TV_OK);
    watchPicture(SCC_SINK_SUB, 1);
    EXPECT_EQ(log.wait("sub", 4).back(), (SeenNotification{"sub", SCC_DETECT_NO_SIGNAL, {0, 0}}));
}

TEST_F(TelevisionInputs, DetectedDevicesAreShown) {
    startWithDemo();
    watchPicture(SCC_SINK_MAIN, 0);
    EXPECT_EQ(a_qortvapi_inputsource_set_scart_auto_jump(true), TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(INPUT_SOURCE_HDMI_1,
                                                                            true),
              TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(INPUT_SOURCE_HDMI_2,
                                                                            true),
              TV_OK);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_blockstatus_bysourceid(INPUT_SOURCE_HDMI_1, true),
              TV_OK);
    const auto until = [&](int width) {
        for (size_t count = 1;; ++count) {
            const auto seen = log.wait("main", count);
            if (seen.size() < count) return false;
            if (seen.back().values[0] == static_cast<uint64_t>(width)) return true;
            count = std::max(count, seen.size());
        }
    };
    connect("input.scart1.connected");
    ASSERT_TRUE(until(720));
    EXPECT_EQ(current(), "SCART 1");
    connect("input.hdmi1.connected");  // blocked
    connect("input.vga.connected");    // not looked for
    connect("input.hdmi2.connected");
    ASSERT_TRUE(until(1920));
    EXPECT_EQ(current(), "HDMI 2");
}

TEST_F(TelevisionInputs, Multiview) {
    startWithDemo();
    const QORTVAPI_MULTIVIEW_REGION_T whole = {0, 0, MULTIVIEW_SCREEN_WIDTH,
                                               MULTIVIEW_SCREEN_HEIGHT};
    const QORTVAPI_MULTIVIEW_REGION_T corner = {1439, 809, 481, 271};
    EXPECT_EQ(a_qortvapi_multiview_startSubVideo(INPUT_SOURCE_TV, &corner), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_startVideoWithoutVideoPath(INPUT_SOURCE_TV, kSub), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_set_video_state(kSub, true), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocus(kSub), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_only_chg_focus(kSub), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(3), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(UINT8_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_POP), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_startMainVideo(INPUT_SOURCE_HDMI_1, &whole), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_startSubVideo(INPUT_SOURCE_HDMI_2, &corner), TV_BUSY);
    EXPECT_EQ(flag(a_qortvapi_multiview_is_source_available_bysourceidandpath,
                   uint8_t{INPUT_SOURCE_HDMI_2}, kSub),
              0);
    EXPECT_EQ(a_qortvapi_multiview_getVideoResource(kSub), MULTIVIEW_RESOURCE_NONE);
    EXPECT_EQ(a_qortvapi_multiview_startSubVideo(INPUT_SOURCE_TV, &corner), TV_OK);
    EXPECT_NE(currentChannel(1), 0u);
    EXPECT_EQ(a_qortvapi_multiview_getVideoResource(kMain), MULTIVIEW_RESOURCE_DIGITAL);
    EXPECT_EQ(a_qortvapi_multiview_getVideoResource(kSub), MULTIVIEW_RESOURCE_TUNER);
    EXPECT_EQ(a_qortvapi_multiview_only_chg_focus(kSub), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getPOPTunerFocus(), MULTIVIEW_FOCUS_SUB);
    EXPECT_EQ(a_qortvapi_multiview_getAudioFocus(), MULTIVIEW_FOCUS_MAIN);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocusbySourceid(INPUT_SOURCE_TV), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getAudioFocus(), MULTIVIEW_FOCUS_SUB);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocusbySourceid(INPUT_SOURCE_HDMI_1), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getPOPTunerFocus(), MULTIVIEW_FOCUS_MAIN);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocusbySourceid(INPUT_SOURCE_VGA), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocus(kSub), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getAudioFocus(), MULTIVIEW_FOCUS_SUB);
    EXPECT_EQ(a_qortvapi_multiview_set_video_state(kSub, false), TV_OK);
    EXPECT_EQ(playing(kSub), 0);
    EXPECT_EQ(currentChannel(1), 0u);
    EXPECT_EQ(a_qortvapi_multiview_set_video_state(kSub, true), TV_OK);
    EXPECT_EQ(playing(kSub), 1);
    EXPECT_EQ(a_qortvapi_multiview_startVideoWithoutVideoPath(INPUT_SOURCE_SCART_1, kSub), TV_OK);
    EXPECT_EQ(current(kSub), "SCART 1");
    EXPECT_EQ(a_qortvapi_multiview_getVideoResource(kSub), MULTIVIEW_RESOURCE_ANALOGUE);
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_NORMAL), TV_OK);
    EXPECT_EQ(playing(kSub), 0);
    EXPECT_EQ(playing(kMain), 1);
    EXPECT_EQ(a_qortvapi_multiview_getAudioFocus(), MULTIVIEW_FOCUS_MAIN);
    EXPECT_EQ(a_qortvapi_multiview_getPOPTunerFocus(), MULTIVIEW_FOCUS_MAIN);
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_PIP), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_set_video_state(kSub, true), TV_OK);
    EXPECT_EQ(current(kSub), "SCART 1");
    EXPECT_EQ(a_qortvapi_multiview_stopSubVideo(), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_stopSubVideo(), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_stopMainVideo(), TV_OK);
    EXPECT_EQ(playing(kMain), 0);
    EXPECT_EQ(a_qortvapi_multiview_startVideoWithoutVideoPath(INPUT_SOURCE_TV, kMain), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_stopVideoWithoutVideoPath(kMain), TV_OK);
    EXPECT_EQ(currentChannel(), 0u);
}

TEST_F(TelevisionInputs, MultiviewRefusesWhatMakesNoSense) {
    startWithDemo();
    EXPECT_EQ(a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_PIP), TV_OK);
    const QORTVAPI_MULTIVIEW_REGION_T wrong[] = {
            {0, 0, 0, 0},           {0, 0, 0, 10},         {0, 0, 10, 0},
            {0, 0, 1921, 1080},     {0, 0, 1920, 1081},    {1440, 0, 481, 270},
            {0, 810, 480, 271},     {UINT32_MAX, 0, 1, 1}, {1, 1, UINT32_MAX, UINT32_MAX},
            {0, UINT32_MAX, 10, 10}};
    for (const auto& region : wrong) {
        EXPECT_EQ(a_qortvapi_multiview_startMainVideo(INPUT_SOURCE_AV, &region),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_startSubVideo(INPUT_SOURCE_AV, &region),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_multiview_startMainVideo(INPUT_SOURCE_AV, nullptr), TV_INVALID_ARGUMENT);
    const QORTVAPI_MULTIVIEW_REGION_T good = {0, 0, 1, 1};
    EXPECT_EQ(a_qortvapi_multiview_startMainVideo(INPUT_SOURCE_COUNT, &good), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_startSubVideo(255, &good), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_setAudioFocusbySourceid(255), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_startVideoWithoutVideoPath(255, kMain), TV_NOT_FOUND);
    uint8_t flag = 0xEE;
    EXPECT_EQ(a_qortvapi_multiview_is_source_available_bysourceidandpath(255, kMain, &flag),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_multiview_is_source_available_bysourceidandpath(0, kMain, nullptr),
              TV_INVALID_ARGUMENT);
    for (const char* path : {static_cast<const char*>(nullptr), "", "third"}) {
        EXPECT_EQ(a_qortvapi_multiview_setAudioFocus(path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_only_chg_focus(path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_getVideoResource(path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_get_video_state(path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_set_video_state(path, true), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_startVideoWithoutVideoPath(0, path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_stopVideoWithoutVideoPath(path), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_multiview_is_source_available_bysourceidandpath(0, path, &flag),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(flag, 0xEE);
    EXPECT_EQ(current(), "TV");
    EXPECT_EQ(a_qortvapi_multiview_getChgSource(), 0);
    EXPECT_EQ(a_qortvapi_multiview_setChgSource(true), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getChgSource(), 1);
    EXPECT_EQ(a_qortvapi_multiview_setChgSource(false), TV_OK);
    EXPECT_EQ(a_qortvapi_multiview_getChgSource(), 0);
}

TEST_F(TelevisionInputs, ManyThreadsNeverPlayWhatConflicts) {
    options.tick = std::chrono::milliseconds(1);
    startWithDemo();
    watchPicture(SCC_SINK_MAIN, 0);
    EXPECT_EQ(a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid(INPUT_SOURCE_HDMI_4,
                                                                            true),
              TV_OK);
    constexpr int kRounds = 15;
    const uint32_t one = channel(SVL_ID_CABLE, "Cable One");
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < kRounds; ++i) change(INPUT_SOURCE_HDMI_1 + i % 3, kMain, 0);
    });
    threads.emplace_back([&] {
        for (int i = 0; i < kRounds; ++i) change(INPUT_SOURCE_HDMI_1 + i % 3, kSub, 1);
    });
    threads.emplace_back([&] {
        for (int i = 0; i < kRounds; ++i) {
            a_qortvapi_multiview_setNewTvMode(static_cast<uint8_t>(i % 3));
            a_qortvapi_multiview_setAudioFocus(kSub);
            a_qortvapi_multiview_set_video_state(kSub, true);
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < kRounds; ++i) {
            connect("input.hdmi4.connected", i % 2 == 0);
            a_qortvapi_channellist_set_current_channel(one);
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < kRounds; ++i) {
            picture();
            a_qortvapi_multiview_getAudioFocus();
            a_qortvapi_inputsource_sync_stop(kSub, false);
        }
    });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(change(INPUT_SOURCE_HDMI_1, kMain, UINT16_MAX), TV_OK);
    EXPECT_FALSE(playing(kSub) == 1 && current(kSub).rfind("HDMI", 0) == 0);
    EXPECT_EQ(current(), "HDMI 1");
    a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_NORMAL);
    EXPECT_EQ(a_qortvapi_multiview_getAudioFocus(), MULTIVIEW_FOCUS_MAIN);
}

}  // namespace
