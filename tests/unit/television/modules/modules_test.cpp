// The modules that mostly keep settings: volume, modes, captions, values, power control, engines.
#include <limits>

#include "middleware/apptv.h"
#include "middleware/av_mode.h"
#include "middleware/bml.h"
#include "middleware/cc.h"
#include "middleware/eas.h"
#include "middleware/ewspa.h"
#include "middleware/ginga.h"
#include "middleware/hbbtv.h"
#include "middleware/html_agent.h"
#include "middleware/mds.h"
#include "middleware/mheg5.h"
#include "middleware/network.h"
#include "middleware/pcl.h"
#include "middleware/pwddlg.h"
#include "middleware/screenmode.h"
#include "middleware/util.h"
#include "middleware/volctrl.h"
#include "support/log_capture.h"
#include "support/notification_log.h"
#include "support/television_test.h"

namespace {

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

class TelevisionModules : public TelevisionTest {
  protected:
    TelevisionModules() { log.clear(); }
    ~TelevisionModules() override {
        tv.reset();
        log.clear();
    }

    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionModules, VolumeOfEachOutput) {
    start();
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), 20);
    EXPECT_EQ(a_qortvapi_volctrl_incrVolume(), 21);
    EXPECT_EQ(a_qortvapi_volctrl_decrVolume(), 20);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume(VOLCTRL_MAX), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_incrVolume(), VOLCTRL_MAX);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume_by_type(VOLCTRL_TYPE_HEADPHONE, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_decrVolume_by_type(VOLCTRL_TYPE_HEADPHONE), 0);
    EXPECT_EQ(a_qortvapi_volctrl_incrVolume_by_type(VOLCTRL_TYPE_HEADPHONE), VOLCTRL_STEP);
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), VOLCTRL_MAX);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume(VOLCTRL_MAX + 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_volctrl_setVolume(-1), TV_INVALID_ARGUMENT);
    for (const int32_t type : {-1, int32_t{VOLCTRL_TYPE_COUNT}, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_volctrl_setVolume_by_type(type, 1), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_volctrl_getVolume_by_type(type), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_volctrl_incrVolume_by_type(type), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_volctrl_setMute_by_type(type, true), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_volctrl_getMute_by_type(type), TV_INVALID_ARGUMENT);
    }
}

TEST_F(TelevisionModules, VolumeAndMuteOutliveARestart) {
    start();
    EXPECT_EQ(a_qortvapi_volctrl_setVolume_by_type(VOLCTRL_TYPE_LINE_OUT, 33), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_setMute(true), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), 20) << "mute leaves the volume alone";
    restart();
    EXPECT_EQ(a_qortvapi_volctrl_getVolume_by_type(VOLCTRL_TYPE_LINE_OUT), 33);
    EXPECT_EQ(a_qortvapi_volctrl_getMute_by_type(VOLCTRL_TYPE_SPEAKER), 1);
    EXPECT_EQ(a_qortvapi_volctrl_getMute_by_type(VOLCTRL_TYPE_LINE_OUT), 0);
    EXPECT_EQ(a_qortvapi_volctrl_setMute(false), TV_OK);
    restart();
    EXPECT_EQ(a_qortvapi_volctrl_getMute_by_type(VOLCTRL_TYPE_SPEAKER), 0);
}

TEST_F(TelevisionModules, ScreenModes) {
    start();
    uint32_t count = 0;
    EXPECT_EQ(a_qortvapi_screenmode_get_number_screen_mode(&count), TV_OK);
    EXPECT_EQ(count, uint32_t{SCREEN_MODE_COUNT});
    std::vector<uint16_t> modes(count + 1, 0xBEEF);
    count = 2;
    EXPECT_EQ(a_qortvapi_screenmode_get_all_screen_mode(modes.data(), &count), TV_OK);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(modes[2], 0xBEEF) << "no more than there is room for";
    count = UINT32_MAX;
    EXPECT_EQ(a_qortvapi_screenmode_get_all_screen_mode(modes.data(), &count), TV_OK);
    EXPECT_EQ(count, uint32_t{SCREEN_MODE_COUNT});
    EXPECT_EQ(modes[count], 0xBEEF);
    count = 0;
    EXPECT_EQ(a_qortvapi_screenmode_get_all_screen_mode(nullptr, &count), TV_OK);
    EXPECT_EQ(count, uint32_t{SCREEN_MODE_COUNT});
    EXPECT_EQ(a_qortvapi_screenmode_get_all_screen_mode(modes.data(), nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_screenmode_get_number_screen_mode(badPointer<uint32_t>()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_screenmode_set_screen_mode(SCREEN_MODE_ZOOM), TV_OK);
    EXPECT_EQ(a_qortvapi_screenmode_set_screen_mode(SCREEN_MODE_COUNT), TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(a_qortvapi_screenmode_get_screen_mode(), SCREEN_MODE_ZOOM);
    EXPECT_EQ(a_qortvapi_zoom_is_enable(), 0) << "nothing plays";
}

TEST_F(TelevisionModules, OverscanLastsOnceItIsSaved) {
    start();
    const auto overscan = [] {
        std::vector<uint32_t> edges(4, 99);
        EXPECT_EQ(
                a_qortvapi_screenmode_get_crnt_overscan(&edges[0], &edges[1], &edges[2], &edges[3]),
                TV_OK);
        return edges;
    };
    EXPECT_EQ(a_qortvapi_screenmode_set_crnt_overscan(1, 2, 3, 4), TV_OK);
    EXPECT_EQ(a_qortvapi_screenmode_set_crnt_overscan(1, 2, 3, OVERSCAN_MAX + 1),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(overscan(), (std::vector<uint32_t>{1, 2, 3, 4}));
    restart();
    EXPECT_EQ(overscan(), (std::vector<uint32_t>{0, 0, 0, 0}));
    EXPECT_EQ(a_qortvapi_screenmode_set_crnt_overscan(5, 6, 7, 8), TV_OK);
    EXPECT_EQ(a_qortvapi_screenmode_update_overscan_ini(), TV_OK);
    restart();
    EXPECT_EQ(overscan(), (std::vector<uint32_t>{5, 6, 7, 8}));
    EXPECT_EQ(a_qortvapi_screenmode_get_crnt_overscan(nullptr, nullptr, nullptr, nullptr), TV_OK);
}

TEST_F(TelevisionModules, PictureAndSoundModes) {
    start();
    uint32_t count = 0;
    EXPECT_EQ(a_qortvapi_av_mode_get_number_picture_mode(&count), TV_OK);
    EXPECT_EQ(count, uint32_t{PICTURE_MODE_COUNT});
    std::vector<uint16_t> modes(16, 0xBEEF);
    EXPECT_EQ(a_qortvapi_av_mode_get_all_picture_mode(modes.data(), 3), TV_OK);
    EXPECT_EQ(modes[2], 2);
    EXPECT_EQ(modes[3], 0xBEEF);
    EXPECT_EQ(a_qortvapi_av_mode_get_all_sound_effect(modes.data(), UINT32_MAX), TV_OK);
    EXPECT_EQ(modes[SOUND_EFFECT_COUNT - 1], SOUND_EFFECT_COUNT - 1);
    EXPECT_EQ(modes[SOUND_EFFECT_COUNT], 0xBEEF);
    EXPECT_EQ(a_qortvapi_av_mode_get_all_picture_mode(nullptr, 3), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_av_mode_set_picture_mode(PICTURE_MODE_GAME), TV_OK);
    EXPECT_EQ(a_qortvapi_av_mode_set_picture_mode(PICTURE_MODE_COUNT), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_av_mode_set_sound_effect(SOUND_EFFECT_SPEECH), TV_OK);
    EXPECT_EQ(a_qortvapi_av_mode_set_sound_effect(SOUND_EFFECT_COUNT), TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(a_qortvapi_av_mode_get_picture_mode(), PICTURE_MODE_GAME);
    EXPECT_EQ(a_qortvapi_av_mode_get_sound_effect(), SOUND_EFFECT_SPEECH);
}

TEST_F(TelevisionModules, FreezeOfEachWindow) {
    start();
    EXPECT_EQ(a_qortvapi_freeze_is_freeze("main"), 0);
    EXPECT_EQ(a_qortvapi_freeze_set_freeze("main", true), TV_OK);
    EXPECT_EQ(a_qortvapi_freeze_is_freeze("main_svctx"), 1);
    EXPECT_EQ(a_qortvapi_freeze_is_freeze("sub"), 0);
    EXPECT_EQ(a_qortvapi_freeze_set_freeze("third", true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_freeze_set_freeze(nullptr, true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_freeze_is_freeze(""), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionModules, CaptionsOfEachFamily) {
    start();
    EXPECT_EQ(a_qortvapi_isdbcc_next_stream(), TV_BUSY);
    EXPECT_EQ(a_qortvapi_isdbcc_get_CCString(), 0);
    EXPECT_EQ(a_qortvapi_isdbcc_enable(true), TV_OK);
    EXPECT_EQ(a_qortvapi_isdbcc_get_CCString(), 1);
    EXPECT_EQ(a_qortvapi_isdbcc_next_stream(), TV_OK);
    EXPECT_EQ(a_qortvapi_isdbcc_get_CCString(), 2);
    EXPECT_EQ(a_qortvapi_isdbcc_next_stream(), TV_OK);
    EXPECT_EQ(a_qortvapi_isdbcc_get_CCString(), 1) << "round";
    EXPECT_EQ(a_qortvapi_atsccc_get_CCString(), 0) << "families stand apart";
    EXPECT_EQ(a_qortvapi_atsccc_set_visible(true), TV_OK);
    EXPECT_EQ(a_qortvapi_atsccc_get_CCString(), 1);
    EXPECT_EQ(a_qortvapi_atsccc_demo_set(1, 2), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_analogcc_enable(true), TV_OK);
    EXPECT_EQ(a_qortvapi_analogcc_enable(false), TV_OK);
    EXPECT_EQ(a_qortvapi_analogcc_get_CCString(), 0);
    restart();
    EXPECT_EQ(a_qortvapi_isdbcc_get_CCString(), 1);
}

TEST_F(TelevisionModules, NamedValues) {
    start();
    const char data[] = {'a', 0, 'b'};
    EXPECT_EQ(a_qortvapi_util_set("name", 3, data, sizeof data), TV_OK);
    restart();
    char read[4] = {'x', 'x', 'x', 'x'};
    uint32_t size = 2;
    EXPECT_EQ(a_qortvapi_util_get("name", 3, read, &size), TV_OK);
    EXPECT_EQ(size, 3u) << "the whole size";
    EXPECT_EQ(std::string(read, 4), std::string("a\0xx", 4)) << "but no more than fits";
    size = 4;
    EXPECT_EQ(a_qortvapi_util_get("name", 4, read, &size), TV_NOT_FOUND) << "another kind";
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(a_qortvapi_util_set("name", 3, nullptr, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_util_get("name", 3, read, &size), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_util_set(nullptr, 3, data, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_set("", 3, data, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_set(std::string(UTIL_NAME_MAX + 1, 'n').c_str(), 3, data, 1),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_set("name", 3, nullptr, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_set("name", 3, data, UINT64_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_get("name", 3, read, nullptr), TV_INVALID_ARGUMENT);
    for (int i = 0; i < UTIL_VALUE_COUNT; ++i) {
        ASSERT_EQ(a_qortvapi_util_set(("n" + std::to_string(i)).c_str(), 0, data, 1), TV_OK);
    }
    EXPECT_EQ(a_qortvapi_util_set("more", 0, data, 1), TV_FULL);
    EXPECT_EQ(a_qortvapi_util_set("n1", 0, data, 2), TV_OK) << "one that is there";
}

TEST_F(TelevisionModules, VersionsAreTexts) {
    start();
    char text[100];
    for (const int32_t kind : {SYS_VERSION_SOFTWARE, SYS_VERSION_MIDDLEWARE, SYS_VERSION_MODEL}) {
        std::memset(text, 0, sizeof text);
        EXPECT_EQ(a_qortvapi_util_get_sys_version(kind, text), TV_OK);
        EXPECT_NE(std::strlen(text), 0u);
    }
    EXPECT_EQ(a_qortvapi_util_get_sys_version(3, text), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_get_sys_version(0, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionModules, TunerDiagnosis) {
    startWithDemo();
    char names[3][UTIL_DIAG_ENTRY_SIZE] = {};
    char values[3][UTIL_DIAG_ENTRY_SIZE] = {};
    EXPECT_EQ(a_qortvapi_util_tuner_fac_query_diag(true, 1, names, values), TV_BUSY);
    uint8_t tuner = 9;
    uint16_t version = 0;
    EXPECT_EQ(a_qortvapi_util_tuner_fac_open_diag(true, &tuner, &version), TV_OK);
    EXPECT_EQ(version, 1);
    EXPECT_EQ(a_qortvapi_util_tuner_fac_query_diag(true, 2, names, values), TV_OK);
    EXPECT_STREQ(names[0], "frequency kHz");
    EXPECT_STREQ(values[0], "482000");
    EXPECT_STRNE(names[1], "");
    EXPECT_STREQ(names[2], "") << "only as many as asked for";
    EXPECT_EQ(a_qortvapi_util_tuner_fac_query_diag(true, 0, nullptr, nullptr), TV_OK);
    EXPECT_EQ(a_qortvapi_util_tuner_fac_query_diag(true, 1, nullptr, values), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_tuner_fac_close_diag(true), TV_OK);
    EXPECT_EQ(a_qortvapi_util_tuner_fac_close_diag(true), TV_BUSY);
}

TEST_F(TelevisionModules, Password) {
    start();
    a_qortvapi_pwddlg_register_msg_callback(
            [](int32_t message, void*, void* wrong, void*, void*, void*) {
                NotificationLog::instance().add("password", message,
                                                {reinterpret_cast<uintptr_t>(wrong)});
            },
            nullptr);
    EXPECT_EQ(a_qortvapi_PWDDLG_show(), TV_OK);
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD("1235"), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD(PWDDLG_DEFAULT_PASSWORD), TV_OK);
    EXPECT_EQ(log.wait("password", 4),
              (std::vector<SeenNotification>{{"password", PWDDLG_MSG_SHOW, {0}},
                                             {"password", PWDDLG_MSG_WRONG, {1}},
                                             {"password", PWDDLG_MSG_WRONG, {2}},
                                             {"password", PWDDLG_MSG_ACCEPTED, {0}}}));
    EXPECT_EQ(a_qortvapi_util_set(PWDDLG_UTIL_NAME, 0, "9876", 5), TV_OK);
    restart();
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD(PWDDLG_DEFAULT_PASSWORD), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD("9876"), TV_OK);
    char read[8] = {};
    uint32_t size = sizeof read;
    EXPECT_EQ(a_qortvapi_util_get(PWDDLG_UTIL_NAME, 0, read, &size), TV_NOT_SUPPORTED);
    EXPECT_STREQ(read, "");
    EXPECT_EQ(a_qortvapi_util_set(PWDDLG_UTIL_NAME, 0, nullptr, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_PWDDLG_checkPWD(PWDDLG_DEFAULT_PASSWORD), TV_OK);
}

TEST_F(TelevisionModules, WakeOnNetwork) {
    start();
    int32_t control = 7;
    EXPECT_EQ(a_qortvapi_network_get_eth_wol_ctrl(&control), TV_OK);
    EXPECT_EQ(control, NETWORK_WOL_OFF);
    EXPECT_EQ(a_qortvapi_network_set_eth_wol_ctrl(NETWORK_WOL_ON), TV_OK);
    EXPECT_EQ(a_qortvapi_network_set_eth_wol_ctrl(2), TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(a_qortvapi_network_get_eth_wol_ctrl(&control), TV_OK);
    EXPECT_EQ(control, NETWORK_WOL_ON);
    EXPECT_EQ(a_qortvapi_network_get_wifi_wol_ctrl(&control), TV_OK);
    EXPECT_EQ(control, NETWORK_WOL_OFF);
    EXPECT_EQ(a_qortvapi_network_get_wifi_wol_ctrl(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionModules, PowerControlKeepsAndNotifies) {
    start();
    uint32_t handle = 0;
    c_pcl_reg_nfy_fct(
            nullptr,
            [](uint32_t from, void*, uint32_t condition, uint32_t data) {
                NotificationLog::instance().add("power", static_cast<int32_t>(condition),
                                                {from, data});
            },
            &handle);
    uint32_t reason = 0;
    uint32_t data = 0;
    EXPECT_EQ(c_pcl_get_wakeup_reason(&reason, nullptr), TV_OK);
    EXPECT_EQ(reason, uint32_t{PCL_WAKE_UP_REASON_REMOTE_CONTROL});
    const uint32_t word = 0xFEDCBA98;
    EXPECT_EQ(c_pcl_set_wakeup_reason(50, &word), TV_OK);
    EXPECT_EQ(c_pcl_set_power_down_reason(0xFFFFFFFE, nullptr), TV_OK);
    EXPECT_EQ(c_pcl_set_wakeup_setup(0x80000001), TV_OK);
    restart();
    EXPECT_EQ(a_qortvapi_pcl_get_wakeup_reason(&reason, &data), TV_OK);
    EXPECT_EQ(reason, 50u);
    EXPECT_EQ(data, word);
    EXPECT_EQ(c_pcl_get_power_down_reason(&reason, &data), TV_OK);
    EXPECT_EQ(reason, 0xFFFFFFFE);
    EXPECT_EQ(data, 0u);
    EXPECT_EQ(a_qortvapi_pcl_get_wakeup_setup(&reason), TV_OK);
    EXPECT_EQ(reason, 0x80000001);
    EXPECT_EQ(c_pcl_get_wakeup_reason(nullptr, nullptr), TV_INVALID_ARGUMENT);
    PCL_WAKEUP_KEY_T key = {1, 2};
    EXPECT_EQ(c_pcl_get_wakeup_irkey(&key), TV_NOT_FOUND);
    EXPECT_EQ(key.ui4_key_code, 1u) << "nothing is written on failure";

    c_pcl_reg_nfy_fct(
            nullptr,
            [](uint32_t, void*, uint32_t condition, uint32_t changed) {
                NotificationLog::instance().add("power", static_cast<int32_t>(condition),
                                                {changed});
            },
            &handle);
    const LogCapture lines;
    EXPECT_EQ(c_pcl_set_power_down(), TV_OK);
    EXPECT_EQ(c_pcl_set_request_suspend(), TV_OK);
    EXPECT_EQ(c_pcl_set_request_powerdown_envent(), TV_OK);
    EXPECT_TRUE(lines.has("power down", "stays on"));
    PCL_GPIO_MONITOR_CTRL_EX_T monitor = {7, 1, {}};
    EXPECT_EQ(c_pcl_set_gpio(7, PCL_GPIO_HIGH), TV_OK);
    EXPECT_EQ(c_pcl_set_gpio_monitor_ctrl_ex(&monitor), TV_OK);
    EXPECT_EQ(c_pcl_set_gpio(7, PCL_GPIO_HIGH), TV_OK) << "no change";
    EXPECT_EQ(c_pcl_set_gpio(7, PCL_GPIO_LOW), TV_OK);
    EXPECT_EQ(log.wait("power", 4),
              (std::vector<SeenNotification>{{"power", PCL_COND_POWER_DOWN, {0}},
                                             {"power", PCL_COND_SUSPEND, {0}},
                                             {"power", PCL_COND_POWER_DOWN_EVENT, {0}},
                                             {"power", PCL_COND_GPIO_CHANGED, {7 << 16}}}));
    uint32_t status = 9;
    EXPECT_EQ(c_pcl_get_gpio(PCL_GPIO_COUNT, 0, &status), TV_NOT_FOUND);
    EXPECT_EQ(c_pcl_set_gpio(UINT32_MAX, 1), TV_NOT_FOUND);
    EXPECT_EQ(c_pcl_set_gpio(1, 2), TV_INVALID_ARGUMENT);
    EXPECT_EQ(status, 9u);
    monitor.ui4_id = UINT32_MAX;
    EXPECT_EQ(c_pcl_set_gpio_monitor_ctrl_ex(&monitor), TV_NOT_FOUND);
    EXPECT_EQ(c_pcl_set_gpio_monitor_ctrl_ex(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionModules, EnginesRunWithoutApplications) {
    start();
    a_qortvapi_ginga_register_callback(
            [](int32_t type, void*, void*, void*, void*) {
                NotificationLog::instance().add("ginga", type, {});
            },
            nullptr);
    a_qortvapi_mheg5_register_msg_callback(
            [](int32_t type, void*, int32_t on, int32_t, int32_t) {
                NotificationLog::instance().add("mheg5", type, {static_cast<uint64_t>(on)});
            },
            nullptr);
    EXPECT_EQ(a_qortvapi_ginga_startApplication("1"), TV_BUSY);
    EXPECT_EQ(a_qortvapi_ginga_startGinga(), TV_OK);
    EXPECT_EQ(a_qortvapi_ginga_startGinga(), TV_OK);
    EXPECT_EQ(a_qortvapi_ginga_startApplication("1"), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_ginga_startApplication(nullptr), TV_INVALID_ARGUMENT);
    uint32_t count = 5;
    EXPECT_EQ(a_qortvapi_ginga_getApplicationInfo_ex(nullptr, &count), TV_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(a_qortvapi_ginga_stopGinga(), TV_OK);
    EXPECT_EQ(a_qortvapi_mheg5_enabled(), TV_OK);
    EXPECT_EQ(a_qortvapi_mheg5_enabled(), TV_OK);
    EXPECT_EQ(a_qortvapi_mheg5_disabled(), TV_OK);
    EXPECT_EQ(log.wait("mheg5", 2),
              (std::vector<SeenNotification>{{"mheg5", MHEG5_NFY_ENABLED, {1}},
                                             {"mheg5", MHEG5_NFY_ENABLED, {0}}}));
    EXPECT_EQ(log.seen("ginga"), (std::vector<SeenNotification>{{"ginga", GINGA_NFY_STARTED, {}},
                                                                {"ginga", GINGA_NFY_STOPPED, {}}}));
    EXPECT_EQ(a_qortvapi_bml_get_current_state(), BML_STATE_STOPPED);
    uint32_t words[2] = {1, 2};
    EXPECT_EQ(a_qortvapi_html_agent_exchange_data(words, 2), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_hbbtv_exchange_data(words, 2), TV_NOT_SUPPORTED);
    EXPECT_EQ(words[1], 2u);
    char value[5120] = "kept";
    EXPECT_EQ(a_qortvapi_mds_getValue("m", 1, value), TV_NOT_SUPPORTED);
    EXPECT_STREQ(value, "kept");
    int32_t status[4] = {9, 9, 9, 9};
    EXPECT_EQ(a_qortvapi_eas_get_status(&status[0], &status[1], &status[2], &status[3]), TV_OK);
    EXPECT_EQ(status[0], EAS_STATUS_IDLE);
    EXPECT_EQ(status[3], 0);
    EXPECT_EQ(a_qortvapi_eas_set_android_launch_status(true), TV_OK);
    EXPECT_EQ(a_qortvapi_eas_get_android_launch_status(), 1);
}

TEST_F(TelevisionModules, WarningMonitors) {
    start();
    int32_t values[3] = {1, -2, 3};
    EXPECT_EQ(a_qortvapi_ewspa_set(1, 5, values, 3), TV_NOT_FOUND) << "no monitor";
    EXPECT_EQ(a_qortvapi_ewspa_create_monitor_inst(1), TV_OK);
    EXPECT_EQ(a_qortvapi_ewspa_create_monitor_inst(1), TV_BUSY);
    EXPECT_EQ(a_qortvapi_ewspa_create_monitor_inst(EWSPA_TYPE_COUNT), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_ewspa_set(1, 5, values, 2), TV_OK);
    int32_t read[3] = {9, 9, 9};
    EXPECT_EQ(a_qortvapi_ewspa_get(1, 5, read, 3), TV_OK);
    EXPECT_EQ(std::vector<int32_t>(read, read + 3), (std::vector<int32_t>{1, -2, 0}));
    EXPECT_EQ(a_qortvapi_ewspa_get(1, 6, read, 1), TV_OK);
    EXPECT_EQ(read[0], 0);
    EXPECT_EQ(a_qortvapi_ewspa_set(1, 5, values, UINT32_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ewspa_get(1, 5, nullptr, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ewspa_delete_monitor_inst(1), TV_OK);
    EXPECT_EQ(a_qortvapi_ewspa_delete_monitor_inst(1), TV_NOT_FOUND);
}

TEST_F(TelevisionModules, ApplicationOfEachWindow) {
    startWithDemo();
    a_qortvapi_apptv_register_callback(
            [](int32_t type, void*, void* value, void* window, void*, void*) {
                NotificationLog::instance().add(
                        "application", type,
                        {reinterpret_cast<uintptr_t>(value), reinterpret_cast<uintptr_t>(window)});
            },
            nullptr);
    EXPECT_EQ(a_qortvapi_apptv_nav_update_sys_status_by_win("sub", 4), TV_OK);
    EXPECT_EQ(a_qortvapi_apptv_nav_update_sys_status_by_win("other", 4), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_apptv_set_video_mute("main", true), TV_OK);
    EXPECT_EQ(a_qortvapi_apptv_get_video_mute("main"), 1);
    EXPECT_EQ(a_qortvapi_apptv_get_video_mute("sub"), 0);
    EXPECT_EQ(a_qortvapi_apptv_get_video_mute(nullptr), 0);
    EXPECT_EQ(log.wait("application", 2),
              (std::vector<SeenNotification>{{"application", APPTV_NFY_SYS_STATUS, {4, 1}},
                                             {"application", APPTV_NFY_VIDEO_MUTE, {1, 0}}}));
    EXPECT_EQ(
            static_cast<uint32_t>(a_qortvapi_apptv_get_matched_channel(SVL_ID_CABLE, true, 101, 0)),
            channel(SVL_ID_CABLE, "Cable One"));
    EXPECT_EQ(a_qortvapi_apptv_get_matched_channel(SVL_ID_CABLE, false, 101, 1), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_apptv_get_matched_channel(SVL_ID_CABLE, true, INT32_MAX, 0), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_apptv_get_matched_channel(-1, true, 101, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_apptv_get_current_channel_svc_text(nullptr, 0), TV_OK);
}

}  // namespace
