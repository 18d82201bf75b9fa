// State machines: upgrades and downloads with their progress; requests to applications.
#include <fstream>
#include <future>

#include "middleware/highlevel.h"
#include "middleware/mheg5.h"
#include "middleware/oad.h"
#include "middleware/upgrade.h"
#include "middleware/wakelock.h"
#include "support/notification_log.h"
#include "support/television_test.h"

namespace {

void upgrade(int32_t type, int32_t state, int32_t percent, void*) {
    NotificationLog::instance().add("upgrade", state,
                                    {static_cast<uint64_t>(type), static_cast<uint64_t>(percent)});
}
void download(int32_t code, void*, const char* info, int32_t percent, uint8_t automatic, int32_t) {
    NotificationLog::instance().add(info, code, {static_cast<uint64_t>(percent), automatic});
}

/**
 * Holds the television's thread in the next notification that the log sees, until it is let go:
 * what goes on in steps stands still meanwhile, however long the test takes.
 */
class Hold {
  public:
    explicit Hold(NotificationLog& log) : mLog(log) {
        log.hook([released = mRelease.get_future().share()](const SeenNotification&) {
            released.wait();
        });
    }
    ~Hold() {
        mLog.hook(nullptr);
        mRelease.set_value();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

  private:
    NotificationLog& mLog;
    std::promise<void> mRelease;
};

class TelevisionMachines : public TelevisionTest {
  protected:
    TelevisionMachines() { log.clear(); }
    ~TelevisionMachines() override {
        log.hook(nullptr);
        tv.reset();
        log.clear();
    }
    void SetUp() override { start(); }

    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionMachines, UpgradeRunsThroughItsStates) {
    a_qortvapi_upgrade_register_callback(upgrade, nullptr);
    EXPECT_EQ(a_qortvapi_upgrade_check_update(UPGRADE_DELIVERY_FILE_SYS), 1);
    EXPECT_EQ(a_qortvapi_upgrade_start_reboot_upgrade(UPGRADE_DELIVERY_FILE_SYS), TV_BUSY);
    EXPECT_EQ(a_qortvapi_upgrade_query_upgrade_result(UPGRADE_DELIVERY_FILE_SYS),
              UPGRADE_RESULT_NONE);
    {
        const Hold hold(log);
        ASSERT_EQ(a_qortvapi_upgrade_start_download_firmware(UPGRADE_DELIVERY_FILE_SYS, "u", "p"),
                  TV_OK);
        EXPECT_EQ(a_qortvapi_upgrade_start(UPGRADE_DELIVERY_INTERNET, true), TV_BUSY);
    }
    const auto seen = log.wait("upgrade", 12);
    for (size_t i = 0; i <= 10; ++i) {
        EXPECT_EQ(seen[i], (SeenNotification{"upgrade",
                                             UPGRADE_STATE_DOWNLOADING,
                                             {UPGRADE_DELIVERY_FILE_SYS, i * 10}}));
    }
    EXPECT_EQ(seen[11],
              (SeenNotification{
                      "upgrade", UPGRADE_STATE_DOWNLOADED, {UPGRADE_DELIVERY_FILE_SYS, 100}}));
    EXPECT_EQ(a_qortvapi_upgrade_query_upgrade_result(UPGRADE_DELIVERY_FILE_SYS),
              UPGRADE_RESULT_DOWNLOADED);
    EXPECT_EQ(a_qortvapi_upgrade_check_update(UPGRADE_DELIVERY_FILE_SYS), 0);
    EXPECT_EQ(a_qortvapi_upgrade_query_upgrade_result(UPGRADE_DELIVERY_INTERNET),
              UPGRADE_RESULT_NONE);
    EXPECT_EQ(a_qortvapi_upgrade_start_reboot_upgrade(UPGRADE_DELIVERY_INTERNET), TV_BUSY);
    EXPECT_EQ(a_qortvapi_upgrade_start_reboot_upgrade(UPGRADE_DELIVERY_FILE_SYS), TV_OK);
    EXPECT_EQ(log.wait("upgrade", 13)[12].code, UPGRADE_STATE_REBOOT_REQUESTED);
}

TEST_F(TelevisionMachines, UpgradeIsCancelledInTheMiddle) {
    a_qortvapi_upgrade_register_callback(upgrade, nullptr);
    // The handler itself cancels, as a client may.
    log.hook([](const SeenNotification& event) {
        if (event.code == UPGRADE_STATE_DOWNLOADING && event.values[1] == 30) {
            EXPECT_EQ(a_qortvapi_upgrade_cancel_download_firmware(UPGRADE_DELIVERY_FILE_SYS),
                      TV_BUSY);
            EXPECT_EQ(a_qortvapi_upgrade_cancel_download_firmware(UPGRADE_DELIVERY_INTERNET),
                      TV_OK);
        }
    });
    ASSERT_EQ(a_qortvapi_upgrade_trigger(UPGRADE_DELIVERY_INTERNET), TV_OK);
    const auto seen = log.wait("upgrade", 5);
    EXPECT_EQ(seen[4],
              (SeenNotification{
                      "upgrade", UPGRADE_STATE_CANCELLED, {UPGRADE_DELIVERY_INTERNET, 30}}));
    EXPECT_EQ(a_qortvapi_upgrade_query_upgrade_result(UPGRADE_DELIVERY_INTERNET),
              UPGRADE_RESULT_CANCELLED);
    EXPECT_EQ(a_qortvapi_upgrade_cancel_download_firmware(UPGRADE_DELIVERY_INTERNET), TV_BUSY);
    // A new download starts at 0 per cent; the old one sends no notification in between.
    log.hook(nullptr);
    ASSERT_EQ(a_qortvapi_upgrade_start(UPGRADE_DELIVERY_INTERNET, false), TV_OK);
    const auto all = log.wait("upgrade", 17);
    for (size_t i = 0; i <= 10; ++i) EXPECT_EQ(all[5 + i].values[1], i * 10);
}

TEST_F(TelevisionMachines, UpgradeRefusesWhatThereIsNot) {
    EXPECT_EQ(a_qortvapi_upgrade_start(UPGRADE_DELIVERY_BROADCAST, true), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_upgrade_check_update(UINT32_MAX), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_upgrade_start_download_firmware(UPGRADE_DELIVERY_FILE_SYS, nullptr, "p"),
              TV_INVALID_ARGUMENT);
    uint8_t supported = 1;
    EXPECT_EQ(a_qortvapi_upgrade_is_supported(UPGRADE_DELIVERY_BROADCAST, &supported), TV_OK);
    EXPECT_FALSE(supported);
    EXPECT_EQ(a_qortvapi_upgrade_is_supported(0, nullptr), TV_INVALID_ARGUMENT);
    QORTVAPI_UPGRADE_FW_INFO_T info = {};
    EXPECT_EQ(a_qortvapi_upgrade_get_firmware_info(&info), TV_OK);
    QORTVAPI_UPGRADE_ITEM_T item = {};
    EXPECT_EQ(a_qortvapi_upgrade_get_item_info(info.ui4_item_count - 1, &item), TV_OK);
    EXPECT_EQ(a_qortvapi_upgrade_get_item_info(info.ui4_item_count, &item), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_upgrade_set(1, nullptr, UINT32_MAX, nullptr), TV_NOT_SUPPORTED);
}

TEST_F(TelevisionMachines, StopsWhileAnUpgradeRuns) {
    a_qortvapi_upgrade_register_callback(upgrade, nullptr);
    ASSERT_EQ(a_qortvapi_upgrade_start(UPGRADE_DELIVERY_FILE_SYS, true), TV_OK);
    log.wait("upgrade", 1);
    tv.reset();
    const size_t seen = log.seen("upgrade").size();
    start();
    EXPECT_EQ(a_qortvapi_upgrade_query_upgrade_result(UPGRADE_DELIVERY_FILE_SYS),
              UPGRADE_RESULT_NONE);
    EXPECT_EQ(log.seen("upgrade").size(), seen);
}

TEST_F(TelevisionMachines, DownloadGoesStepByStep) {
    a_qortvapi_oad_register_callback(download, nullptr);
    EXPECT_EQ(a_qortvapi_oad_start_download(), TV_BUSY);
    {
        const Hold hold(log);
        EXPECT_EQ(a_qortvapi_oad_start_manual_detect(), TV_OK);
        EXPECT_EQ(a_qortvapi_oad_start_manual_detect(), TV_BUSY);
    }
    EXPECT_EQ(log.wait("not detected", 1)[0].code, OAD_STATE_NOT_DETECTED);
    EXPECT_EQ(log.seen("detecting").size(), 11u);

    std::ofstream(folder() / "package") << "firmware";
    EXPECT_EQ(a_qortvapi_set_pkg_pathname((folder() / "package").c_str()), TV_OK);
    EXPECT_EQ(a_qortvapi_set_pkg_pathname(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_oad_start_manual_detect(), TV_OK);
    log.wait("detected", 1);
    EXPECT_EQ(a_qortvapi_oad_remind_me_later(), TV_OK);
    EXPECT_EQ(a_qortvapi_oad_get_power_on_status(), OAD_STATE_POSTPONED);
    {
        const Hold hold(log);
        EXPECT_EQ(a_qortvapi_oad_start_download(), TV_OK);
        EXPECT_EQ(a_qortvapi_set_pkg_pathname("other"), TV_BUSY);
    }
    log.wait("downloaded", 1);
    {
        const Hold hold(log);
        EXPECT_EQ(a_qortvapi_oad_start_flash(), TV_OK);
        EXPECT_EQ(a_qortvapi_oad_accept_restart(), TV_BUSY);
    }
    log.wait("flashed", 1);
    EXPECT_EQ(a_qortvapi_oad_accept_restart(), TV_OK);
    EXPECT_EQ(log.wait("restart accepted", 1).size(), 1u);
    char text[200];
    EXPECT_EQ(a_qortvapi_oad_get_datainfo(OAD_INFO_PACKAGE, text, sizeof text), TV_OK);
    EXPECT_EQ(text, folder() / "package");
    EXPECT_EQ(a_qortvapi_oad_get_datainfo(OAD_INFO_STATE, text, sizeof text), TV_OK);
    EXPECT_STREQ(text, "restart accepted");
    EXPECT_EQ(a_qortvapi_oad_get_datainfo(9, text, sizeof text), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_oad_get_datainfo(0, nullptr, sizeof text), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_oad_get_scheduleinfo(text, sizeof text), TV_NOT_FOUND);
}

TEST_F(TelevisionMachines, DownloadIsStoppedAndGoesOnByItself) {
    a_qortvapi_oad_register_callback(download, nullptr);
    std::ofstream(folder() / "package") << "firmware";
    EXPECT_EQ(a_qortvapi_set_pkg_pathname((folder() / "package").c_str()), TV_OK);
    {
        const Hold hold(log);
        EXPECT_EQ(a_qortvapi_oad_start_manual_detect(), TV_OK);
        EXPECT_EQ(a_qortvapi_oad_stop_download(), TV_BUSY);
        EXPECT_EQ(a_qortvapi_oad_stop_manual_detect(), TV_OK);
    }
    EXPECT_EQ(log.wait("idle", 1)[0].code, OAD_STATE_IDLE);
    EXPECT_EQ(a_qortvapi_oad_set_auto_download(true), TV_OK);
    EXPECT_EQ(a_qortvapi_oad_start_manual_detect(), TV_OK);
    EXPECT_EQ(log.wait("downloaded", 1)[0].values, (std::vector<uint64_t>{100, 1}));
}

TEST_F(TelevisionMachines, ModesAreNotified) {
    a_qortvapi_highlevel_register_callback(
            [](int32_t code, void*, void* mode, void*, void*, void*) {
                NotificationLog::instance().add("mode", code, {reinterpret_cast<uintptr_t>(mode)});
            },
            nullptr);
    EXPECT_EQ(a_qortvapi_highlevel_get_current_tv_mode(), HIGHLEVEL_TV_MODE_TV);
    EXPECT_EQ(a_qortvapi_highlevel_launch_3rd_party(0, true, 5), TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_is_in_3rd_party_mode(), 1);
    EXPECT_EQ(a_qortvapi_highlevel_launch_3rd_party(2, true, 5), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_highlevel_stop_tv(), TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_stop_all(), TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_start_tv(), TV_OK);
    EXPECT_EQ(log.wait("mode", 3),
              (std::vector<SeenNotification>{
                      {"mode", HIGHLEVEL_NFY_MODE_CHANGED, {HIGHLEVEL_TV_MODE_3RD_PARTY}},
                      {"mode", HIGHLEVEL_NFY_MODE_CHANGED, {HIGHLEVEL_TV_MODE_STOPPED}},
                      {"mode", HIGHLEVEL_NFY_MODE_CHANGED, {HIGHLEVEL_TV_MODE_TV}}}));
    uint8_t region = 0;
    EXPECT_EQ(a_qortvapi_highlevel_get_market_region(&region), TV_OK);
    EXPECT_EQ(region, HIGHLEVEL_MARKET_REGION_EUROPE);
    EXPECT_EQ(a_qortvapi_highlevel_set_viewport(true, 0, 0, 0, 5), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_highlevel_set_displayregion(2, 0, 0, 1, 1), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionMachines, ApplicationsAreAsked) {
    uint32_t count = 9;
    uint32_t result = 9;
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_ASK_APPLICATIONS, 21, 22),
              TV_NOT_FOUND)
            << "nobody to ask";
    a_qortvapi_highlevel_register_android_responser(
            [](uint32_t code, void* tag, uint32_t attribute, uint32_t* answer, void* buffer,
               uint32_t length) {
                EXPECT_EQ(length, uint32_t{HIGHLEVEL_ANSWER_MAX});
                *answer = 5;
                // More than `length`: a handler may write a whole transaction.
                std::memset(buffer, 'd', 1 << 19);
                NotificationLog::instance().add("question", static_cast<int32_t>(code),
                                                {reinterpret_cast<uintptr_t>(tag), attribute});
            },
            reinterpret_cast<void*>(2222));
    ASSERT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_ASK_APPLICATIONS, 21, 22),
              TV_OK);
    EXPECT_EQ(log.wait("question", 1)[0], (SeenNotification{"question", 21, {2222, 22}}));
    std::vector<uint8_t> data(HIGHLEVEL_ANSWER_MAX + 1, 'x');
    // The answer is kept only after the handler has returned.
    do {
        EXPECT_EQ(a_qortvapi_highlevel_generic_function_ex(HIGHLEVEL_GENERIC_READ_ANSWER, &count,
                                                           &result, data.data(), UINT32_MAX),
                  TV_OK);
    } while (count == 0);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(result, 5u);
    EXPECT_EQ(data[HIGHLEVEL_ANSWER_MAX - 1], 'd');
    EXPECT_EQ(data[HIGHLEVEL_ANSWER_MAX], 'x');
    EXPECT_EQ(a_qortvapi_highlevel_generic_function_ex(HIGHLEVEL_GENERIC_READ_ANSWER, &count,
                                                       &result, nullptr, 5),
              TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function_ex(HIGHLEVEL_GENERIC_READ_ANSWER, nullptr,
                                                       &result, nullptr, 5),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(1, 2, 3), TV_NOT_SUPPORTED);
}

TEST_F(TelevisionMachines, OtherQuestionsReachTheirHandlers) {
    a_qortvapi_mheg5_reg_is_mime_type_support_fct(
            0,
            [](const char* type, uint8_t* supported, void*, int32_t) {
                *supported = 1;
                NotificationLog::instance().add("mime", 0, {std::strlen(type)});
            },
            nullptr);
    a_qortvapi_mheg5_reg_launch_hbbtv_nfy(
            0,
            [](const char* location, void*, int32_t argument) {
                NotificationLog::instance().add(location, argument, {});
            },
            nullptr);
    a_qortvapi_wakelock_reg_callback(
            [](void*, uint8_t acquire, const char* name) {
                NotificationLog::instance().add(name, acquire, {});
            },
            nullptr);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_ASK_MIME_TYPE, 1, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_ASK_MIME_TYPE, 2, 0),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_ACQUIRE_WAKE_LOCK, 0, 0),
              TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_RELEASE_WAKE_LOCK, 0, 0),
              TV_OK);
    EXPECT_EQ(a_qortvapi_highlevel_generic_function(HIGHLEVEL_GENERIC_LAUNCH_HBBTV, 77, 0), TV_OK);
    EXPECT_EQ(log.wait(HIGHLEVEL_WAKE_LOCK, 2),
              (std::vector<SeenNotification>{{HIGHLEVEL_WAKE_LOCK, 1, {}},
                                             {HIGHLEVEL_WAKE_LOCK, 0, {}}}));
    EXPECT_EQ(log.wait("http://127.0.0.1/", 1)[0].code, 77);
    uint32_t count = 0;
    uint32_t supported = 0;
    EXPECT_EQ(a_qortvapi_highlevel_generic_function_ex(HIGHLEVEL_GENERIC_READ_MIME_ANSWER, &count,
                                                       &supported, nullptr, 0),
              TV_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(supported, 1u);
}

}  // namespace
