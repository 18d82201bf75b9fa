/** The core object's constructor: waiting for the middleware, connecting, registering the handlers.
 */
#include <time.h>

#include <cerrno>
#include <functional>
#include <utility>

#include "hhandler/hh_svctx.h"
#include "middleware/3dmode.h"
#include "middleware/apptv.h"
#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/bml.h"
#include "middleware/bringup.h"
#include "middleware/broadcast.h"
#include "middleware/channellist.h"
#include "middleware/config.h"
#include "middleware/dfmngr.h"
#include "middleware/eas.h"
#include "middleware/event.h"
#include "middleware/event_atsc.h"
#include "middleware/ews.h"
#include "middleware/ewspa.h"
#include "middleware/ginga.h"
#include "middleware/hbbtv.h"
#include "middleware/highlevel.h"
#include "middleware/html_agent.h"
#include "middleware/mds.h"
#include "middleware/mheg5.h"
#include "middleware/oad.h"
#include "middleware/pcl.h"
#include "middleware/pwddlg.h"
#include "middleware/rating.h"
#include "middleware/record.h"
#include "middleware/scan.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/svctx.h"
#include "middleware/teletext.h"
#include "middleware/time.h"
#include "middleware/timeshift.h"
#include "middleware/tts.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/videoinfo.h"
#include "middleware/wakelock.h"
#include "middleware/warningmsg.h"
#include "support/service_fixture.h"

namespace {

// While set, nobody sleeps. Returns whether the sleep is interrupted.
std::function<bool(const timespec&)> gOnSleep;

}  // namespace

// Replaces the function of the C library, so that a test of ninety seconds of waiting does not
// wait.
extern "C" int nanosleep(const timespec* period, timespec* remaining) {
    if (gOnSleep) {
        if (!gOnSleep(*period)) return 0;
        if (remaining != nullptr) *remaining = {0, 10'000'000};
        errno = EINTR;
        return -1;
    }
    return clock_nanosleep(CLOCK_MONOTONIC, 0, period, remaining);
}

namespace {

constexpr char kTag[] = "QorTvApiImpl(service)";

class ServiceBringUp : public ServiceTest {
  protected:
    ServiceBringUp() {
        gOnSleep = [this](const timespec& period) {
            periods.push_back(period);
            return false;
        };
        gMainSvctx = 0;
        gSubSvctx = 0;
    }
    ~ServiceBringUp() override {
        gOnSleep = nullptr;
        gMainSvctx = 0;
        gSubSvctx = 0;
    }

    /** Constructs the core object; returns what it logged under its own tag. */
    std::vector<LogLine> bringUp() {
        const sp<QorTvApiImpl> impl = new QorTvApiImpl();
        std::vector<LogLine> own;
        for (LogLine& line : log.take()) {
            if (line.tag == kTag) own.push_back(std::move(line));
        }
        return own;
    }

    std::vector<timespec> periods;
};

LogLine rpcLine(const std::string& text) {
    return debugLine(kTag, "initRPC", text);
}

const LogLine kConstructorLine = debugLine(kTag, "QorTvApiImpl", ".");

TEST_F(ServiceBringUp, connectsAtOnceWhenBothFilesAreThere) {
    int memory_of_handles = 0;
    tv.on<&x_rtos_init>([](const void* parameter) {
        EXPECT_EQ(parameter, nullptr);
        return 0;
    });
    tv.on<&handle_init>([&](uint32_t handles, void** memory, uint32_t* size) {
        EXPECT_EQ(handles, 4096u);
        EXPECT_EQ(*memory, nullptr);
        EXPECT_EQ(*size, 0xC00000u);
        *memory = &memory_of_handles;
        *size = 77;
        return 0;
    });
    tv.on<&os_init>([&](void* memory, uint32_t size) {
        EXPECT_EQ(memory, &memory_of_handles);
        EXPECT_EQ(size, 77u);
        return 0;
    });
    tv.on<&c_svctx_prepare_process_env>([](uint32_t flags) {
        EXPECT_EQ(flags, 0u);
        return -1;  // the service ignores it
    });
    EXPECT_EQ(bringUp(),
              (std::vector<LogLine>{kConstructorLine, rpcLine("."),
                                    rpcLine("dtv_svc rpc server confirmed ready."),
                                    rpcLine("x_rtos_init ret=0\n"), rpcLine("handle_init ret=0\n"),
                                    rpcLine("os_init ret=0\n")}));
    EXPECT_TRUE(periods.empty());
}

TEST_F(ServiceBringUp, logsEachFailedStepAndGoesOn) {
    tv.on<&x_rtos_init>([](const void*) { return -3; });
    tv.on<&handle_init>([](uint32_t, void**, uint32_t*) { return -4; });
    tv.on<&os_init>([](void* memory, uint32_t size) {
        EXPECT_EQ(memory, nullptr);
        EXPECT_EQ(size, 0xC00000u);
        return 5;
    });
    const uint64_t prepared = switchboard::slot<&c_svctx_prepare_process_env>.calls();
    EXPECT_EQ(bringUp(),
              (std::vector<LogLine>{kConstructorLine, rpcLine("."),
                                    rpcLine("dtv_svc rpc server confirmed ready."),
                                    rpcLine("x_rtos_init failed."), rpcLine("x_rtos_init ret=-3\n"),
                                    rpcLine("handle_init failed."), rpcLine("handle_init ret=-4\n"),
                                    rpcLine("os_init failed."), rpcLine("os_init ret=5\n")}));
    EXPECT_EQ(switchboard::slot<&c_svctx_prepare_process_env>.calls(), prepared + 1);

    mTvApiDebug = 0;
    EXPECT_EQ(bringUp(),
              (std::vector<LogLine>{rpcLine("x_rtos_init failed."), rpcLine("handle_init failed."),
                                    rpcLine("os_init failed.")}));
}

TEST_F(ServiceBringUp, waitsWhileEitherFileIsMissing) {
    for (const char* missing : {"dtv_svc_is_ready", "tv_api_is_init"}) {
        SCOPED_TRACE(missing);
        periods.clear();
        folder.remove(missing);
        gOnSleep = [&](const timespec& period) {
            periods.push_back(period);
            if (periods.size() == 3) folder.create(missing);
            return false;
        };
        const std::vector<LogLine> lines = bringUp();
        ASSERT_EQ(lines.size(), 9u);
        EXPECT_EQ(lines[2], rpcLine("waiting dtv_svc count:0"));
        EXPECT_EQ(lines[3], rpcLine("waiting dtv_svc count:1"));
        EXPECT_EQ(lines[4], rpcLine("waiting dtv_svc count:2"));
        EXPECT_EQ(lines[5], rpcLine("dtv_svc rpc server confirmed ready."));
        ASSERT_EQ(periods.size(), 3u);
        EXPECT_EQ(periods[0].tv_sec, 0);
        EXPECT_EQ(periods[0].tv_nsec, 30'000'000);
    }
}

TEST_F(ServiceBringUp, givesUpAfterThreeThousandChecksAndStillRegistersTheHandlers) {
    folder.remove("tv_api_is_init");
    const uint64_t connected = switchboard::slot<&x_rtos_init>.calls();
    const uint64_t registered = switchboard::slot<&a_qortvapi_ews_reg_msg_callback>.calls();
    const std::vector<LogLine> lines = bringUp();
    ASSERT_EQ(lines.size(), 2 + 3000 + 1u);
    for (int count = 0; count < 3000; ++count) {
        ASSERT_EQ(lines[2 + count], rpcLine("waiting dtv_svc count:" + std::to_string(count)));
    }
    EXPECT_EQ(lines.back(), rpcLine("dtv_svc rpc server failed."));
    EXPECT_EQ(periods.size(), 3000u);
    EXPECT_EQ(switchboard::slot<&x_rtos_init>.calls(), connected);
    EXPECT_EQ(switchboard::slot<&a_qortvapi_ews_reg_msg_callback>.calls(), registered + 1);

    mTvApiDebug = 0;
    EXPECT_EQ(bringUp(), (std::vector<LogLine>{rpcLine("dtv_svc rpc server failed.")}));
}

TEST_F(ServiceBringUp, doesNotResumeAnInterruptedSleep) {
    folder.remove("tv_api_is_init");
    gOnSleep = [this](const timespec& period) {
        periods.push_back(period);
        return periods.size() <= 3000;
    };
    EXPECT_EQ(bringUp().size(), 2 + 3000 + 1u);
    EXPECT_EQ(periods.size(), 3000u);
}

using Registration = std::pair<std::string, uint64_t>;  // function, tag

/** Records each call of a registration function that takes (handler, tag). */
template <auto... Functions>
void captureRegistrations(switchboard::Switchboard& tv, std::vector<Registration>& registrations,
                          std::initializer_list<const char*> names) {
    auto name = names.begin();
    (tv.on<Functions>([&registrations, name = *name++](auto handler, void* tag) {
        EXPECT_NE(handler, nullptr) << name;
        registrations.emplace_back(name, reinterpret_cast<uintptr_t>(tag));
        return -1;  // the service ignores it
    }),
     ...);
}

#define CAPTURE(function) captureRegistrations<&function>(tv, registrations, {#function})

TEST_F(ServiceBringUp, registersTheHandlersInOrderWithTheirTags) {
    std::vector<Registration> registrations;
    tv.on<&c_svctx_open>([&](const char* name, uint32_t* handle) {
        *handle = std::string(name) == "main_svctx" ? 0x80000001u : 0x80000002u;
        registrations.emplace_back(name, *handle);
        return 0;
    });
    tv.on<&c_svctx_set_listener>([&](uint32_t handle, c_svctx_nfy_fct listener, void* tag) {
        EXPECT_NE(listener, nullptr);
        registrations.emplace_back("listener of " + std::to_string(handle),
                                   reinterpret_cast<uintptr_t>(tag));
        return 0;
    });
    tv.on<&c_pcl_reg_nfy_fct>([&](void* tag, c_pcl_nfy_fct handler, uint32_t* handle) {
        EXPECT_NE(handler, nullptr);
        EXPECT_EQ(*handle, 0u);
        registrations.emplace_back("c_pcl_reg_nfy_fct", reinterpret_cast<uintptr_t>(tag));
        return 0;
    });
    tv.on<&a_qortvapi_mheg5_reg_launch_hbbtv_nfy>([&](int32_t index, auto handler, void* tag) {
        EXPECT_NE(handler, nullptr);
        EXPECT_EQ(index, 0);
        registrations.emplace_back("a_qortvapi_mheg5_reg_launch_hbbtv_nfy",
                                   reinterpret_cast<uintptr_t>(tag));
        return 0;
    });
    tv.on<&a_qortvapi_mheg5_reg_is_mime_type_support_fct>(
            [&](int32_t index, auto handler, void* tag) {
                EXPECT_NE(handler, nullptr);
                EXPECT_EQ(index, 0);
                registrations.emplace_back("a_qortvapi_mheg5_reg_is_mime_type_support_fct",
                                           reinterpret_cast<uintptr_t>(tag));
                return 0;
            });
    CAPTURE(a_qortvapi_highlevel_register_callback);
    CAPTURE(a_qortvapi_highlevel_register_android_responser);
    CAPTURE(a_qortvapi_3dmode_register_callback);
    CAPTURE(a_qortvapi_util_register_nousedkey_callback);
    CAPTURE(a_qortvapi_eas_reg_callback);
    CAPTURE(a_qortvapi_ginga_register_callback);
    CAPTURE(a_qortvapi_ginga_volume_register_callback);
    CAPTURE(a_qortvapi_ginga_update_register_callback);
    CAPTURE(a_qortvapi_scan_reg_callback);
    CAPTURE(a_qortvapi_broadcast_register_callback);
    CAPTURE(a_qortvapi_screensaver_register_msg_callback);
    CAPTURE(a_qortvapi_rating_op_vchip_reg_callback);
    CAPTURE(a_qortvapi_ch_logo_reg_callback);
    CAPTURE(a_qortvapi_banner_register_callback);
    CAPTURE(a_qortvapi_warning_register_msg_callback);
    CAPTURE(a_qortvapi_subtitle_reg_callback);
    CAPTURE(a_qortvapi_pwddlg_register_msg_callback);
    CAPTURE(a_qortvapi_event_register_callback);
    CAPTURE(a_qortvapi_timeshift_register_callback);
    CAPTURE(a_qortvapi_time_register_dt_event_callback);
    CAPTURE(a_qortvapi_time_register_sleep_timer_callback);
    CAPTURE(a_qortvapi_time_register_sync_source_callback);
    CAPTURE(a_qortvapi_event_atsc_register_callback);
    CAPTURE(a_qortvapi_config_reg_callback);
    CAPTURE(a_qortvapi_apptv_register_callback);
    CAPTURE(a_qortvapi_oad_register_callback);
    CAPTURE(a_qortvapi_hbbtv_reg_msg_callback);
    CAPTURE(a_qortvapi_mheg5_register_msg_callback);
    CAPTURE(a_qortvapi_record_pvr_register_callback);
    CAPTURE(a_qortvapi_audio_info_register_callback);
    CAPTURE(a_qortvapi_upgrade_register_callback);
    CAPTURE(a_qortvapi_upgrade_unregister_callback);
    CAPTURE(a_qortvapi_channellist_register_callback);
    CAPTURE(a_qortvapi_tvprovider_channellist_register_callback);
    CAPTURE(a_qortvapi_svlid_update_register_callback);
    CAPTURE(a_qortvapi_tslid_update_register_callback);
    CAPTURE(a_qortvapi_listMode_update_register_callback);
    CAPTURE(a_qortvapi_ocl_scanInfo_register_callback);
    CAPTURE(a_qortvapi_bisskey_register_callback);
    CAPTURE(a_qortvapi_concerncolumn_channellist_register_callback);
    CAPTURE(a_qortvapi_nwl_update_register_callback);
    CAPTURE(a_qortvapi_ewspa_reg_msg_callback);
    CAPTURE(a_qortvapi_teletext_register_msg_callback);
    CAPTURE(a_qortvapi_bml_reg_msg_callback);
    CAPTURE(a_qortvapi_html_agent_reg_callback);
    CAPTURE(a_qortvapi_videoinfo_reg_common_nfy);
    CAPTURE(a_qortvapi_wakelock_reg_callback);
    CAPTURE(a_qortvapi_tts_reg_msg_callback);
    CAPTURE(a_qortvapi_mds_reg_msg_callback);
    CAPTURE(a_qortvapi_ews_reg_msg_callback);
    bringUp();

    const std::vector<Registration> expected = {
            {"main_svctx", 0x80000001u},
            {"sub_svctx", 0x80000002u},
            {"listener of 2147483649", 12345678},
            {"listener of 2147483650", 87654321},
            {"a_qortvapi_highlevel_register_callback", 1111},
            {"a_qortvapi_highlevel_register_android_responser", 2222},
            {"a_qortvapi_3dmode_register_callback", 66666},
            {"a_qortvapi_util_register_nousedkey_callback", 1234},
            {"a_qortvapi_eas_reg_callback", 11111},
            {"a_qortvapi_ginga_register_callback", 1111},
            {"a_qortvapi_ginga_volume_register_callback", 2222},
            {"a_qortvapi_ginga_update_register_callback", 3333},
            {"a_qortvapi_scan_reg_callback", 11111},
            {"a_qortvapi_broadcast_register_callback", 1111},
            {"a_qortvapi_screensaver_register_msg_callback", 1111},
            {"a_qortvapi_rating_op_vchip_reg_callback", 1111},
            {"a_qortvapi_ch_logo_reg_callback", 1111},
            {"a_qortvapi_banner_register_callback", 6666},
            {"a_qortvapi_warning_register_msg_callback", 6666},
            {"a_qortvapi_subtitle_reg_callback", 6666},
            {"a_qortvapi_pwddlg_register_msg_callback", 1111},
            {"a_qortvapi_event_register_callback", 1111},
            {"a_qortvapi_timeshift_register_callback", 11111},
            {"a_qortvapi_time_register_dt_event_callback", 1111},
            {"a_qortvapi_time_register_sleep_timer_callback", 1111},
            {"a_qortvapi_time_register_sync_source_callback", 1111},
            {"c_pcl_reg_nfy_fct", 1111},
            {"a_qortvapi_event_atsc_register_callback", 6666},
            {"a_qortvapi_config_reg_callback", 1111},
            {"a_qortvapi_apptv_register_callback", 2222},
            {"a_qortvapi_oad_register_callback", 0},
            {"a_qortvapi_hbbtv_reg_msg_callback", 12345},
            {"a_qortvapi_mheg5_register_msg_callback", 9000},
            {"a_qortvapi_mheg5_reg_launch_hbbtv_nfy", 9001},
            {"a_qortvapi_mheg5_reg_is_mime_type_support_fct", 9002},
            {"a_qortvapi_record_pvr_register_callback", 11111},
            {"a_qortvapi_audio_info_register_callback", 11111},
            {"a_qortvapi_upgrade_register_callback", 1111},
            {"a_qortvapi_upgrade_unregister_callback", 2222},
            {"a_qortvapi_channellist_register_callback", 1111},
            {"a_qortvapi_tvprovider_channellist_register_callback", 2222},
            {"a_qortvapi_svlid_update_register_callback", 3333},
            {"a_qortvapi_tslid_update_register_callback", 4444},
            {"a_qortvapi_listMode_update_register_callback", 5555},
            {"a_qortvapi_ocl_scanInfo_register_callback", 6666},
            {"a_qortvapi_bisskey_register_callback", 7777},
            {"a_qortvapi_bisskey_register_callback", 8888},
            {"a_qortvapi_concerncolumn_channellist_register_callback", 9999},
            {"a_qortvapi_nwl_update_register_callback", 1234},
            {"a_qortvapi_ewspa_reg_msg_callback", 11111},
            {"a_qortvapi_teletext_register_msg_callback", 11111},
            {"a_qortvapi_bml_reg_msg_callback", 12345},
            {"a_qortvapi_html_agent_reg_callback", 12345},
            {"a_qortvapi_videoinfo_reg_common_nfy", 12121},
            {"a_qortvapi_wakelock_reg_callback", 1111},
            {"a_qortvapi_tts_reg_msg_callback", 12345},
            {"a_qortvapi_mds_reg_msg_callback", 10085},
            {"a_qortvapi_ews_reg_msg_callback", 6666},
    };
    EXPECT_EQ(registrations, expected);
}

TEST_F(ServiceBringUp, callsTheMiddlewareOnlyAsListed) {
    switchboard::Switchboard::startRecording();
    bringUp();
    const std::vector<std::string> called = switchboard::Switchboard::stopRecording();
    // Four calls of the connection, fifty-eight of the registrations; the two empty places of the
    // CI module add none.
    EXPECT_EQ(called.size(), 4 + 58u);
    EXPECT_EQ(std::vector<std::string>(called.begin(), called.begin() + 5),
              (std::vector<std::string>{"x_rtos_init", "handle_init", "os_init",
                                        "c_svctx_prepare_process_env", "c_svctx_open"}));
}

TEST_F(ServiceBringUp, opensEachServiceContextOnlyOnce) {
    int opened = 0;
    tv.on<&c_svctx_open>([&](const char* name, uint32_t* handle) {
        ++opened;
        if (std::string(name) == "sub_svctx") return -1;  // stays 0, to be tried again
        *handle = 17;
        return 0;
    });
    std::vector<uint32_t> listened;
    tv.on<&c_svctx_set_listener>([&](uint32_t handle, c_svctx_nfy_fct, void*) {
        listened.push_back(handle);
        return 0;
    });
    bringUp();
    EXPECT_EQ(opened, 2);
    bringUp();
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(gMainSvctx, 17u);
    EXPECT_EQ(gSubSvctx, 0u);
    EXPECT_EQ(listened, (std::vector<uint32_t>{17, 0, 17, 0}));
}

class ServiceRegistrationLog : public ServiceBringUp {
  protected:
    /** The log lines of the registrations: those with other tags than the core object's. */
    std::vector<LogLine> registrationLines() {
        const sp<QorTvApiImpl> impl = new QorTvApiImpl();
        std::vector<LogLine> others;
        for (LogLine& line : log.take()) {
            if (line.tag != kTag) others.push_back(std::move(line));
        }
        return others;
    }
};

const LogLine kVideoLine = debugLine("hh_qortvapi_videoinfo", "hh_a_qortvapi_video_info_init", "");
const LogLine kEwsLine = debugLine("hh_qortvapi_ews", "hh_a_qortvapi_ews_init", "");

TEST_F(ServiceRegistrationLog, showsResultsWhileDebuggingIsOn) {
    int listeners = 0;
    tv.on<&c_svctx_set_listener>([&](uint32_t, c_svctx_nfy_fct, void*) { return ++listeners; });
    tv.on<&a_qortvapi_time_register_dt_event_callback>([](auto, void*) { return 3; });
    tv.on<&a_qortvapi_time_register_sleep_timer_callback>([](auto, void*) { return 4; });
    tv.on<&a_qortvapi_time_register_sync_source_callback>([](auto, void*) { return -5; });
    tv.on<&a_qortvapi_mheg5_register_msg_callback>([](auto, void*) { return 6; });
    tv.on<&a_qortvapi_mheg5_reg_launch_hbbtv_nfy>([](int32_t, auto, void*) { return 0; });
    tv.on<&a_qortvapi_mheg5_reg_is_mime_type_support_fct>([](int32_t, auto, void*) { return -8; });
    tv.on<&a_qortvapi_wakelock_reg_callback>([](auto, void*) { return 9; });
    const std::string time = "hh_qortvapi_timea_qortvapi_time_register_";
    EXPECT_EQ(registrationLines(),
              (std::vector<LogLine>{
                      debugLine("hh_svctx", "hh_c_svctx_init", "c_svctx_set_listener i4_ret = 1\n"),
                      debugLine("hh_svctx", "hh_c_svctx_init", "c_svctx_set_listener i4_ret = 2\n"),
                      debugLine("hh_qortvapi_banner", "hh_a_qortvapi_banner_init",
                                "{banner}hh_a_qortvapi_banner_init\n"),
                      debugLine("hh_qortvapi_time", "hh_a_qortvapi_time_init",
                                time + "dt_event_callback ret= 3\n"),
                      debugLine("hh_qortvapi_time", "hh_a_qortvapi_time_init",
                                time + "sleep_timer_callback ret= 4\n"),
                      debugLine("hh_qortvapi_time", "hh_a_qortvapi_time_init",
                                time + "sync_source_callback ret= -5\n"),
                      debugLine("hh_qortvapi_mheg5", "hh_a_qortvapi_mheg5_init",
                                "{MHEG5} ret = 6.\n"),
                      debugLine("hh_qortvapi_mheg5", "hh_a_qortvapi_mheg5_init",
                                "{MHEG5} ret = -8.\n"),
                      kVideoLine,
                      debugLine("hh_pcl", "hh_a_qortvapi_wakelock_init",
                                "registering wakelock callback"),
                      debugLine("hh_pcl", "hh_a_qortvapi_wakelock_init", "register returned 9"),
                      debugLine("hh_qortvapi_ews", "hh_a_qortvapi_ews_init",
                                "{EWS}hh_a_qortvapi_ews_init\n"),
                      kEwsLine,
              }));
}

TEST_F(ServiceRegistrationLog, keepsTwoEmptyLinesWhileDebuggingIsOff) {
    mTvApiDebug = 0;
    tv.on<&a_qortvapi_mheg5_register_msg_callback>([](auto, void*) { return 6; });
    EXPECT_EQ(registrationLines(), (std::vector<LogLine>{kVideoLine, kEwsLine}));
}

}  // namespace
