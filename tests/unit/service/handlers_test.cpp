/** The notification handlers: the calls that each makes to the clients, and its log lines. */
#include <thread>

#include "hhandler/hh_iom.h"
#include "hhandler/hh_scc.h"
#include "hhandler/hh_svctx.h"
#include "hhandler/registration.h"
#include "middleware/3dmode.h"
#include "middleware/apptv.h"
#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/bml.h"
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
#include "middleware/warningmsg.h"
#include "support/fan_out_check.h"

namespace {

constexpr int32_t kCode = -559038737;  // 0xdeadbeef: negative, and every byte differs

// Returns opaquePointer(1), opaquePointer(2) and so on as the numbers that clients receive.
std::string opaqueNumbers(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(0xfedcba9876543201u + i);
    }
    return text;
}

// Handlers that take a 32-bit code and then pointers only.

using Pointers1 = void (*)(int32_t, void*);
using Pointers2 = void (*)(int32_t, void*, void*);
using Pointers3 = void (*)(int32_t, void*, void*, void*);
using Pointers4 = void (*)(int32_t, void*, void*, void*, void*);
using Pointers5 = void (*)(int32_t, void*, void*, void*, void*, void*);

template <typename... Pointers, size_t... I>
void notifyWithPointers(void (*handler)(int32_t, Pointers...), std::index_sequence<I...>) {
    handler(kCode, opaquePointer(I + 1)...);
}

template <typename... Pointers>
void notifyWithPointers(void (*handler)(int32_t, Pointers...)) {
    notifyWithPointers(handler, std::index_sequence_for<Pointers...>{});
}

template <typename... Pointers>
constexpr int pointerCount(void (*)(int32_t, Pointers...)) {
    return sizeof...(Pointers);
}

struct UniformRow {
    const char* handler;
    const char* tag;
    const char* method;
    const char* entry;  // name of the code in the entry line; null for a handler without that line
    std::function<void(const UniformRow&, LogCapture&)> check;
};

template <auto Register, typename Handler>
std::function<void(const UniformRow&, LogCapture&)> uniform(int32_t (*init)(), uintptr_t tag) {
    return [=](const UniformRow& row, LogCapture& log) {
        const Handler handler = registeredHandler<Register, Handler>(init, tag);
        ASSERT_NE(handler, nullptr);
        ExpectedFanOut expected{row.handler, row.tag, row.method, {}, {}};
        expected.call += "(" + std::to_string(kCode) + ", " +
                         opaqueNumbers(pointerCount(static_cast<Handler>(nullptr))) + ")";
        if (row.entry != nullptr) {
            expected.debug_lines.push_back(std::string(row.entry) + " = " + std::to_string(kCode) +
                                           ", " + pointerText(opaquePointer(1)) + "\n");
        }
        checkFanOut(expected, log, [&] { notifyWithPointers(handler); });
    };
}

// clang-format off
const UniformRow kUniformRows[] = {
    {"_highlevel_nfy_fct", "hh_qortvapi_highlevel", "notifyHighlevel", "e_code",
     uniform<&a_qortvapi_highlevel_register_callback, Pointers5>(hh_a_qortvapi_highlevel_init, 1111)},
    {"_qortvapi_3dmode_callback_fct", "hh_qortvapi_3dmode", "notify3dMode", "i4_callback_type",
     uniform<&a_qortvapi_3dmode_register_callback, Pointers5>(hh_a_qortvapi_3dmode_init, 66666)},
    {"_noused_key_nfy_fct", "hh_qortvapi_util", "notifyNoUsedKey", "i4_keycode",
     uniform<&a_qortvapi_util_register_nousedkey_callback, Pointers5>(hh_a_qortvapi_util_init, 1234)},
    {"_eas_callback_fct", "hh_qortvapi_eas", "notifyEas", "e_code",
     uniform<&a_qortvapi_eas_reg_callback, Pointers5>(hh_a_qortvapi_eas_init, 11111)},
    {"_ginga_nfy_fct", "hh_qortvapi_ginga", "notifyGinga", "i4_update_type",
     uniform<&a_qortvapi_ginga_register_callback, Pointers4>(hh_a_qortvapi_ginga_init, 1111)},
    {"_ginga_volume_nfy_fct", "hh_qortvapi_ginga", "notifyGingaVolume", "i4_volume_type",
     uniform<&a_qortvapi_ginga_volume_register_callback, Pointers4>(hh_a_qortvapi_ginga_init, 2222)},
    {"_ginga_update_nfy_fct", "hh_qortvapi_ginga", "notifyGingaUpdate", "i4_update_type",
     uniform<&a_qortvapi_ginga_update_register_callback, Pointers4>(hh_a_qortvapi_ginga_init, 3333)},
    {"_scan_callback_fct", "hh_qortvapi_scan", "notifyScan", "e_code",
     uniform<&a_qortvapi_scan_reg_callback, Pointers5>(hh_a_qortvapi_scan_init, 11111)},
    {"_broadcast_nfy_fct", "hh_qortvapi_broadcast", "notifyBroadcast", "e_code",
     uniform<&a_qortvapi_broadcast_register_callback, Pointers5>(hh_a_qortvapi_broadcast_init, 1111)},
    {"_warning_msg_callback_fct", "hh_qortvapi_warningmsg", "notifyWarningMsg", "e_code",
     uniform<&a_qortvapi_warning_register_msg_callback, Pointers5>(hh_a_qortvapi_warningmsg_init, 6666)},
    {"_banner_callback_fct", "hh_qortvapi_banner", "notifyBanner", "e_code",
     uniform<&a_qortvapi_banner_register_callback, Pointers5>(hh_a_qortvapi_banner_init, 6666)},
    {"_rating_nfy_fct", "hh_qortvapi_rating", "notifyRating", "e_code",
     uniform<&a_qortvapi_rating_op_vchip_reg_callback, Pointers5>(hh_a_qortvapi_rating_init, 1111)},
    {"_subtitle_callback_fct", "hh_qortvapi_subtitle", "notifySubtitle", "e_code",
     uniform<&a_qortvapi_subtitle_reg_callback, Pointers5>(hh_a_qortvapi_subtitle_init, 6666)},
    {"_pwddlg_msg_nfy_fct", "hh_qortvapi_pwddlg", "notifyPwdDlgMsg", "i4_msg_type",
     uniform<&a_qortvapi_pwddlg_register_msg_callback, Pointers5>(hh_a_qortvapi_pwddlg_init, 1111)},
    {"_event_update_nfy_fct", "hh_qortvapi_event", "notifyEventUpdate", "e_code",
     uniform<&a_qortvapi_event_register_callback, Pointers5>(hh_a_qortvapi_event_init, 1111)},
    {"_timeshift_callback_fct", "hh_qortvapi_timeshift", "notifyTimeshift", "e_code",
     uniform<&a_qortvapi_timeshift_register_callback, Pointers3>(hh_a_qortvapi_timeshift_init, 11111)},
    {"_dt_nfy_fct", "hh_qortvapi_time", "notifyDateTime", "e_code",
     uniform<&a_qortvapi_time_register_dt_event_callback, Pointers2>(hh_a_qortvapi_time_init, 1111)},
    {"_sleep_timer_nfy_fct", "hh_qortvapi_time", "notifySleepTimer", "e_code",
     uniform<&a_qortvapi_time_register_sleep_timer_callback, Pointers2>(hh_a_qortvapi_time_init, 1111)},
    {"_sync_source_nfy_fct", "hh_qortvapi_time", "notifySyncSource", "e_code",
     uniform<&a_qortvapi_time_register_sync_source_callback, Pointers2>(hh_a_qortvapi_time_init, 1111)},
    {"_event_atsc_callback_fct", "hh_qortvapi_event_atsc", "notifyEventAtsc", "e_code",
     uniform<&a_qortvapi_event_atsc_register_callback, Pointers5>(hh_a_qortvapi_event_atsc_init, 6666)},
    {"_config_callback_fct", "hh_qortvapi_config", "notifyConfig", "e_code",
     uniform<&a_qortvapi_config_reg_callback, Pointers5>(hh_a_qortvapi_config_init, 1111)},
    {"_apptv_reg_nfy_fct", "hh_qortvapi_apptv", "notifyApptv", "e_callback_type",
     uniform<&a_qortvapi_apptv_register_callback, Pointers5>(hh_a_qortvapi_apptv_init, 2222)},
    {"_record_callback_fct", "hh_qortvapi_record", "notifyRecord", "e_code",
     uniform<&a_qortvapi_record_pvr_register_callback, Pointers3>(hh_a_qortvapi_record_init, 11111)},
    {"_audio_info_callback_fct", "hh_qortvapi_audioinfo", "notifyAudioInfo", "e_code",
     uniform<&a_qortvapi_audio_info_register_callback, Pointers5>(hh_a_qortvapi_audio_info_init, 11111)},
    {"_channellist_update_callback_fct", "hh_channellist", "notifyChannelListUpdate", "e_code",
     uniform<&a_qortvapi_channellist_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 1111)},
    {"_tvprovider_update_callback_fct", "hh_channellist", "notifyTvProviderUpdate", "e_code",
     uniform<&a_qortvapi_tvprovider_channellist_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 2222)},
    {"_svlid_update_callback_fct", "hh_channellist", "notifySvlIdUpdate", "e_code",
     uniform<&a_qortvapi_svlid_update_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 3333)},
    {"_tslid_update_callback_fct", "hh_channellist", "notifyTslIdUpdate", "e_code",
     uniform<&a_qortvapi_tslid_update_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 4444)},
    {"_listmode_update_callback_fct", "hh_channellist", "notifyListModeUpdate", "e_code",
     uniform<&a_qortvapi_listMode_update_register_callback, Pointers3>(hh_a_qortvapi_channellist_init, 5555)},
    {"_ocl_scaninfo_callback_fct", "hh_channellist", "notifyOclScanInfo", "e_code",
     uniform<&a_qortvapi_ocl_scanInfo_register_callback, Pointers3>(hh_a_qortvapi_channellist_init, 6666)},
    {"_bisskey_update_callback_fct", "hh_channellist", "notifyBisskeyUpdate", "e_code",
     uniform<&a_qortvapi_bisskey_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 7777)},
    {"_satllist_update_callback_fct", "hh_channellist", "notifySatlListUpdate", "e_code",
     uniform<&a_qortvapi_bisskey_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 8888)},
    {"_concern_column_callback_fct", "hh_channellist", "notifyConcernColumn", "e_code",
     uniform<&a_qortvapi_concerncolumn_channellist_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 9999)},
    {"_nwl_update_callback_fct", "hh_channellist", "notifyNwlUpdate", "e_code",
     uniform<&a_qortvapi_nwl_update_register_callback, Pointers5>(hh_a_qortvapi_channellist_init, 1234)},
    {"_ewspa_callback_fct", "hh_qortvapi_ews_pa", "notifyEwspa", "i4_callback_type",
     uniform<&a_qortvapi_ewspa_reg_msg_callback, Pointers1>(hh_a_qortvapi_ewspa_init, 11111)},
    {"_teletext_callback_fct", "hh_qortvapi_teletext", "notifyTeletext", nullptr,
     uniform<&a_qortvapi_teletext_register_msg_callback, Pointers4>(hh_a_qortvapi_tt_init, 11111)},
};
// clang-format on

class ServiceUniformHandler : public ServiceTest, public testing::WithParamInterface<UniformRow> {};

TEST_P(ServiceUniformHandler, passesTheCodeAndItsPointersOn) {
    GetParam().check(GetParam(), log);
}

INSTANTIATE_TEST_SUITE_P(, ServiceUniformHandler, testing::ValuesIn(kUniformRows),
                         [](const auto& row) { return std::string(row.param.method); });

// Handlers whose arguments, calls or log lines are different.

class ServiceHandler : public ServiceTest {};

std::string entryLine(const char* name, int32_t value, const void* tag) {
    return std::string(name) + " = " + std::to_string(value) + ", " + pointerText(tag) + "\n";
}

void checkSvctxHandler(c_svctx_nfy_fct handler, const ExpectedFanOut& expected, LogCapture& log) {
    checkFanOut(expected, log, [&] {
        handler(0xf0000001u, 0xabcd9001u, 0x1234f002u, 0x5678e003u, opaquePointer(4));
    });
}

TEST_F(ServiceHandler, svctxListenerKeepsSixteenBits) {
    std::vector<c_svctx_nfy_fct> listeners;
    tv.on<&c_svctx_set_listener>([&](uint32_t, c_svctx_nfy_fct listener, void*) {
        listeners.push_back(listener);
        return 0;
    });
    hh_c_svctx_init();
    ASSERT_EQ(listeners.size(), 2u);
    EXPECT_EQ(listeners[0], listeners[1]);
    // 0x1234f002 is 305459202. The line has a second blank before its text.
    checkSvctxHandler(listeners[0],
                      {"_svctx_listener_nfy_fct",
                       "hh_svctx",
                       "notifySvctxListener(4026531841, 36865, 61442, 57347, "
                       "18364758544493064708)",
                       {" e_code = 305459202, " + pointerText(opaquePointer(4)) + "\n"},
                       {}},
                      log);
}

TEST_F(ServiceHandler, svctxSelectKeepsSixteenBits) {
    checkSvctxHandler(_svctx_select_nfy_fct,
                      {"_svctx_select_nfy_fct",
                       "hh_svctx",
                       "notifySvctxSelect(4026531841, 36865, 61442, 57347, 18364758544493064708)",
                       {entryLine("e_code", 305459202, opaquePointer(4))},
                       {}},
                      log);
}

TEST_F(ServiceHandler, inputSourceDetection) {
    checkFanOut({"_inps_detect_cb",
                 "hh_sm",
                 "notifyInputSourceDetect(4026531841, -2, 18364758544493064704, -3, -4)",
                 {entryLine("_inps_detect_cb e_code", static_cast<int32_t>(0xf0000001),
                            reinterpret_cast<void*>(static_cast<uintptr_t>(-2)))},
                 {}},
                log,
                [] { EXPECT_EQ(_inps_detect_cb(0xf0000001u, -2, opaquePointer(0), -3, -4), 0); });
}

TEST_F(ServiceHandler, screensaverWidensItsIntegersWithTheirSign) {
    const auto handler = registeredHandler<&a_qortvapi_screensaver_register_msg_callback,
                                           a_qortvapi_screensaver_msg_nfy_fct>(
            hh_a_qortvapi_screensaver_init, 1111);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_screensaver_msg_nfy_fct",
                 "hh_qortvapi_screensaver",
                 "notifyScreensaverMsg(-1, 18364758544493064704, -2, 2147483647, -2147483648)",
                 {entryLine("i4_msg_id", -1, opaquePointer(0))},
                 {}},
                log, [&] { handler(-1, opaquePointer(0), -2, INT32_MAX, INT32_MIN); });
}

TEST_F(ServiceHandler, channelLogo) {
    const auto handler =
            registeredHandler<&a_qortvapi_ch_logo_reg_callback, a_qortvapi_ch_logo_nfy_fct>(
                    hh_a_qortvapi_dfmngr_init, 1111);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_ch_logo_reg_nfy_fct",
                 "hh_qortvapi_dfmngr",
                 "notifyChannelLogo(-1, 18364758544493064704, -2, 3, -4, 5)",
                 {entryLine("i4_callback_type", -1, opaquePointer(0))},
                 {}},
                log, [&] { handler(-1, opaquePointer(0), -2, 3, -4, 5); });
}

TEST_F(ServiceHandler, powerControlHasNoEntryLine) {
    c_pcl_nfy_fct handler = nullptr;
    tv.on<&c_pcl_reg_nfy_fct>([&](void*, c_pcl_nfy_fct its_handler, uint32_t*) {
        handler = its_handler;
        return 0;
    });
    hh_c_pcl_init();
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_pcl_nfy_fct",
                 "hh_pcl",
                 "notifyPcl(4026531841, 18364758544493064704, 4026531842, 4026531843)",
                 {},
                 {}},
                log, [&] { handler(0xf0000001u, opaquePointer(0), 0xf0000002u, 0xf0000003u); });
}

TEST_F(ServiceHandler, upgradeHasNoEntryLine) {
    const auto handler =
            registeredHandler<&a_qortvapi_upgrade_register_callback, a_qortvapi_upgrade_nfy_fct>(
                    hh_a_qortvapi_update_init, 1111);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_qortvapi_upgrade_callback_fct",
                 "hh_qortvapi_upgrade",
                 "notifyUpgrade(-1, -2, 3, 18364758544493064704)",
                 {},
                 {}},
                log, [&] { handler(-1, -2, 3, opaquePointer(0)); });
}

TEST_F(ServiceHandler, upgradeIsRegisteredAndTakenBack) {
    a_qortvapi_upgrade_nfy_fct registered = nullptr;
    a_qortvapi_upgrade_nfy_fct taken_back = nullptr;
    tv.on<&a_qortvapi_upgrade_register_callback>([&](auto handler, void*) {
        registered = handler;
        return 0;
    });
    tv.on<&a_qortvapi_upgrade_unregister_callback>([&](auto handler, void*) {
        EXPECT_NE(registered, nullptr);
        taken_back = handler;
        return 0;
    });
    hh_a_qortvapi_update_init();
    EXPECT_EQ(registered, taken_back);
}

TEST_F(ServiceHandler, videoInfoWritesASecondLineAlways) {
    const auto handler =
            registeredHandler<&a_qortvapi_videoinfo_reg_common_nfy, a_qortvapi_videoinfo_nfy_fct>(
                    hh_a_qortvapi_video_info_init, 12121);
    ASSERT_NE(handler, nullptr);
    std::string arguments;
    for (uint8_t i = 2; i <= 7; ++i) {
        arguments += (i == 2 ? "" : ",") + pointerText(opaquePointer(i));
    }
    checkFanOut(
            {"_video_info_callback_fct",
             "hh_qortvapi_videoinfo",
             "notifyVideoInfo(-1, " + opaqueNumbers(7) + ")",
             {"e_code = -1, TAG:" + pointerText(opaquePointer(1)) + ", ARGs(" + arguments + ")\n"},
             {""}},
            log, [&] {
                handler(-1, opaquePointer(1), opaquePointer(2), opaquePointer(3), opaquePointer(4),
                        opaquePointer(5), opaquePointer(6), opaquePointer(7));
            });
}

TEST_F(ServiceHandler, ewsWritesASecondLineAlways) {
    const auto handler = registeredHandler<&a_qortvapi_ews_reg_msg_callback, Pointers1>(
            hh_a_qortvapi_ews_init, 6666);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_ews_callback_fct",
                 "hh_qortvapi_ews",
                 "notifyEws(-1, 18364758544493064704)",
                 {entryLine("{EWS}i4_callback_type", -1, opaquePointer(0))},
                 {""}},
                log, [&] { handler(-1, opaquePointer(0)); });
}

TEST_F(ServiceHandler, mheg5PassesItsFirstArgumentThreeTimes) {
    const auto handler =
            registeredHandler<&a_qortvapi_mheg5_register_msg_callback, a_qortvapi_mheg5_nfy_fct>(
                    hh_a_qortvapi_mheg5_init, 9000);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_mheg5_nfy_fct",
                 "hh_qortvapi_mheg5",
                 "notifyMheg5(-1, 18364758544493064704, -2, -2, -2)",
                 {"{MHEG5} i4_callback_type = -1, pv_tag:18364758544493064704, arg1:-2, arg2:3, "
                  "arg3:4.\n"},
                 {}},
                log, [&] { handler(-1, opaquePointer(0), -2, 3, 4); });
}

TEST_F(ServiceHandler, mheg5AsksForAnHbbtvApplication) {
    a_qortvapi_mheg5_launch_hbbtv_fct handler = nullptr;
    tv.on<&a_qortvapi_mheg5_reg_launch_hbbtv_nfy>([&](int32_t, auto its_handler, void*) {
        handler = its_handler;
        return 0;
    });
    hh_a_qortvapi_mheg5_init();
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_mheg5_lanuch_hbbtv_fct",
                 "hh_qortvapi_mheg5",
                 "notifyMheg5LaunchHbbtv(\"http://a/b\", 18364758544493064704, -2)",
                 {"{MHEG5} ps_location = (http://a/b), pv_tag:18364758544493064704, arg1:-2.\n"},
                 {}},
                log, [&] { handler("http://a/b", opaquePointer(0), -2); });
}

TEST_F(ServiceHandler, oadCopiesItsText) {
    const auto handler =
            registeredHandler<&a_qortvapi_oad_register_callback, a_qortvapi_oad_nfy_fct>(
                    hh_a_qortvapi_oad_init, 0);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_oad_listener_nfy_fct",
                 "hh_qortvapi_oad",
                 "notifyOad(-1, 18364758544493064704, \"version 2\", -3, 200, -4)",
                 {entryLine("e_code", -1, opaquePointer(0))},
                 {}},
                log, [&] { handler(-1, opaquePointer(0), "version 2", -3, 200, -4); });
}

TEST_F(ServiceHandler, textToSpeechPassesItsLengthBesideTheText) {
    const auto handler =
            registeredHandler<&a_qortvapi_tts_reg_msg_callback, a_qortvapi_tts_nfy_fct>(
                    hh_a_qortvapi_tts_init, 12345);
    ASSERT_NE(handler, nullptr);
    // The text ends at its NUL; the length, here longer, is a number like any other.
    checkFanOut({"_tts_msg_notify_fct",
                 "hh_tts",
                 "notifyTtsMsg(18364758544493064704, \"speak\", 4026531841)",
                 {"{tts} pc_nfy_data = (speak), pv_tag:18364758544493064704, "
                  "ui4_data_len:-268435455.\n"},
                 {}},
                log, [&] { handler(opaquePointer(0), "speak", 0xf0000001u); });
}

TEST_F(ServiceHandler, metadataPassesItsLengthBesideTheText) {
    const auto handler =
            registeredHandler<&a_qortvapi_mds_reg_msg_callback, a_qortvapi_mds_nfy_fct>(
                    hh_a_qortvapi_mds_init, 10085);
    ASSERT_NE(handler, nullptr);
    checkFanOut({"_mds_msg_notify_fct",
                 "hh_mds",
                 "notifyMdsMsg(18364758544493064704, \"\", 7)",
                 {"{mds} pc_nfy_data = (), pv_tag:18364758544493064704, ui4_data_len:7.\n"},
                 {}},
                log, [&] { handler(opaquePointer(0), "", 7); });
}

// Handlers of buffers.

struct IntegerArrayRow {
    const char* handler;
    const char* tag;
    const char* method;
    std::function<a_qortvapi_hbbtv_msg_nfy_fct()> registered;
};

const IntegerArrayRow kIntegerArrayRows[] = {
        {"_hbbtv_msg_notify_fct", "hh_sm", "notifyHbbtvMsg",
         [] {
             return registeredHandler<&a_qortvapi_hbbtv_reg_msg_callback,
                                      a_qortvapi_hbbtv_msg_nfy_fct>(hh_a_qortvapi_hbbtv_init,
                                                                    12345);
         }},
        {"_bml_msg_notify_fct", "hh_bml", "notifyBmlMsg",
         [] {
             return registeredHandler<&a_qortvapi_bml_reg_msg_callback, a_qortvapi_bml_msg_nfy_fct>(
                     hh_a_qortvapi_bml_init, 12345);
         }},
        {"_html_agent_notify_fct", "hh_sm", "notifyHtmlAgent",
         [] {
             return registeredHandler<&a_qortvapi_html_agent_reg_callback,
                                      a_qortvapi_html_agent_nfy_fct>(hh_a_qortvapi_html_agent_init,
                                                                     12345);
         }},
};

class ServiceIntegerArrayHandler : public ServiceTest,
                                   public testing::WithParamInterface<IntegerArrayRow> {};

TEST_P(ServiceIntegerArrayHandler, threeIntegersAreTwelveBytes) {
    const IntegerArrayRow& row = GetParam();
    const auto handler = row.registered();
    ASSERT_NE(handler, nullptr);
    const int32_t data[] = {1, -2, 0x01020304};
    checkFanOut({row.handler,
                 row.tag,
                 std::string(row.method) + "(-1, 18364758544493064704, <01000000feffffff04030201>)",
                 {entryLine("e_code", -1, opaquePointer(0))},
                 {}},
                log, [&] { handler(-1, opaquePointer(0), data, 3); });
}

TEST_P(ServiceIntegerArrayHandler, theArrayIsNotCopied) {
    const auto handler = GetParam().registered();
    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers()[0] = client;
    const int32_t data[] = {1};
    handler(-1, opaquePointer(0), data, 1);
    EXPECT_EQ(client->lastData, reinterpret_cast<const uint8_t*>(data));
}

TEST_P(ServiceIntegerArrayHandler, noIntegersAreAnEmptyVectorWhateverThePointer) {
    const auto handler = GetParam().registered();
    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers()[0] = client;
    handler(5, nullptr, reinterpret_cast<const int32_t*>(8), 0);
    handler(5, nullptr, reinterpret_cast<const int32_t*>(8), -1);
    const std::string call = std::string(GetParam().method) + "(5, 0, <>)";
    EXPECT_EQ(client->calls(), (std::vector<std::string>{call, call}));
}

INSTANTIATE_TEST_SUITE_P(, ServiceIntegerArrayHandler, testing::ValuesIn(kIntegerArrayRows),
                         [](const auto& row) { return std::string(row.param.method); });

TEST_F(ServiceHandler, inputManagerPassesItsBytesWithoutCopying) {
    const uint8_t data[] = {0x80, 0x00, 0xff};
    checkFanOut({"_iom_nfy_fct",
                 "hh_iom",
                 "notifyIom(18364758544493064704, 4026531841, <8000ff>)",
                 {"pui1_data = " + pointerText(data) +
                  ", ui4_len=3 pv_tag=" + pointerText(opaquePointer(0)) + " \n"},
                 {}},
                log, [&] { _iom_nfy_fct(opaquePointer(0), 0xf0000001u, data, 3); });

    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers()[0] = client;
    _iom_nfy_fct(nullptr, 0, data, 3);
    EXPECT_EQ(client->lastData, data);
    _iom_nfy_fct(nullptr, 0, reinterpret_cast<const uint8_t*>(8), 0);
    EXPECT_EQ(client->calls().back(), "notifyIom(0, 0, <>)");
}

TEST_F(ServiceHandler, theMutexIsHeldWhileAClientIsCalled) {
    const sp<RecordingClient> client = new RecordingClient();
    bool free_during_call = true;
    client->onCall = [&] {
        // From another thread: locking a mutex that one holds is undefined.
        std::thread([&] {
            free_during_call = QorTvApiImpl::getCallbackMutex().try_lock();
            if (free_during_call) QorTvApiImpl::getCallbackMutex().unlock();
        }).join();
    };
    QorTvApiImpl::getCallbackHandlers()[0] = client;
    _iom_nfy_fct(nullptr, 0, nullptr, 0);
    EXPECT_FALSE(free_during_call);
    EXPECT_TRUE(QorTvApiImpl::getCallbackMutex().try_lock());
    QorTvApiImpl::getCallbackMutex().unlock();
}

TEST_F(ServiceHandler, theCiModuleRegistersNothing) {
    switchboard::Switchboard::startRecording();
    EXPECT_EQ(hh_a_qortvapi_ci_init(), 0);
    EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());
}

}  // namespace
