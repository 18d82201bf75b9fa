// Broadcast channels: all kinds of selection, tuning, keys, banner, reception.
#include <algorithm>
#include <thread>

#include "middleware/banner.h"
#include "middleware/broadcast.h"
#include "middleware/svctx.h"
#include "support/notification_log.h"
#include "support/television_test.h"

namespace {

using namespace stream_generator;

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void broadcast(int32_t code, void*, void* a, void* b, void* c, void* d) {
    NotificationLog::instance().add("broadcast", code, {value(a), value(b), value(c), value(d)});
}
void banner(int32_t code, void*, void* channel, void*, void*, void*) {
    NotificationLog::instance().add("banner", code, {value(channel)});
}
void listener(uint32_t, uint32_t condition, uint32_t, uint32_t, void*) {
    NotificationLog::instance().add("listener", static_cast<int32_t>(condition), {});
}

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

class TelevisionBroadcast : public TelevisionTest {
  protected:
    TelevisionBroadcast() {
        log.clear();
        options.digitTime = std::chrono::hours(1);
        options.scanPause = std::chrono::milliseconds(0);
    }
    ~TelevisionBroadcast() override {
        log.hook(nullptr);
        tv.reset();
        log.clear();
    }

    void SetUp() override {
        startWithDemo();
        cable = channel(SVL_ID_CABLE, "Cable One");
        movies = channel(SVL_ID_CABLE, "Movies 1");
    }
    void listen() { ASSERT_EQ(a_qortvapi_broadcast_register_callback(broadcast, nullptr), TV_OK); }
    /** Selects a channel by a function of another module. */
    static void select(uint32_t channelId) {
        ASSERT_EQ(a_qortvapi_channellist_set_current_channel(channelId), TV_OK);
    }

    static uint32_t current(uint8_t window = 0) {
        SVL_REC_T record = {};
        uint16_t list = 0;
        const int32_t result = a_qortvapi_channellist_get_current_channel_from_nav(
                window, &list, &record, nullptr);
        return result == TV_OK ? record.ui4_channel_id : 0;
    }
    static std::string currentName() {
        SVL_REC_T record = {};
        uint16_t list = 0;
        a_qortvapi_channellist_get_current_channel(&list, &record, nullptr);
        return record.s_service_name;
    }
    static uint32_t status() {
        uint32_t status = 99;
        EXPECT_EQ(a_qortvapi_broadcast_get_tuning_status(&status), TV_OK);
        return status;
    }
    static int32_t error() {
        int32_t error = 99;
        EXPECT_EQ(a_qortvapi_broadcast_get_tuning_error(&error), TV_OK);
        return error;
    }
    /** Returns the flag that a function writes through its last argument. */
    template <typename Function, typename... Arguments>
    static int ask(Function function, Arguments... arguments) {
        uint8_t answer = 99;
        EXPECT_EQ(function(arguments..., &answer), TV_OK);
        EXPECT_EQ(function(arguments..., nullptr), TV_INVALID_ARGUMENT);
        EXPECT_EQ(function(arguments..., badPointer<uint8_t>()), TV_INVALID_ARGUMENT);
        return answer;
    }
    /** Presses keys, of which all but the last must be accepted. Returns the result of the last. */
    static int32_t press(const std::vector<uint32_t>& keys) {
        int32_t result = TV_OK;
        for (const uint32_t key : keys) {
            EXPECT_EQ(result, TV_OK);
            result = a_qortvapi_broadcast_key_handler(key);
        }
        return result;
    }
    /** The notifications of a selection in a window. */
    static std::vector<SeenNotification> selected(uint64_t channelId, uint64_t window,
                                                  uint64_t list,
                                                  uint64_t status = BROADCAST_TUNING_LOCKED,
                                                  uint64_t error = BROADCAST_TUNING_ERROR_NONE) {
        return {{"broadcast",
                 BROADCAST_NFY_TUNING,
                 {BROADCAST_TUNING_SEARCHING, 0, channelId, window}},
                {"broadcast", BROADCAST_NFY_TUNING, {status, error, channelId, window}},
                {"broadcast", BROADCAST_NFY_CHANNEL_CHANGED, {channelId, window, list, 0}}};
    }
    static SeenNotification bannerShown(uint64_t visible) {
        return {"broadcast", BROADCAST_NFY_BANNER, {visible, 0, 0, 0}};
    }

    NotificationLog& log = NotificationLog::instance();
    uint32_t cable = 0;
    uint32_t movies = 0;
};

TEST_F(TelevisionBroadcast, SelectionByRecordAndId) {
    const SVL_REC_T record = service(SVL_ID_CABLE, "Movies 1");
    const uint16_t id = record.ui2_svl_rec_id;
    const auto byRecord = a_qortvapi_broadcast_select_channel;
    EXPECT_EQ(byRecord(SVL_ID_CABLE, id, movies, false), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(byRecord(0, 0, cable, false), TV_OK);
    EXPECT_EQ(current(), cable);
    EXPECT_EQ(byRecord(SVL_ID_CABLE, id, 0, false), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(byRecord(SVL_ID_CABLE, 0, cable, false), TV_OK);
    EXPECT_EQ(current(), cable);
    EXPECT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, false), TV_OK);
    EXPECT_EQ(current(), movies);

    EXPECT_EQ(byRecord(SVL_ID_CABLE, id, cable, false), TV_NOT_FOUND) << "they do not agree";
    EXPECT_EQ(byRecord(SVL_ID_SATELLITE, 0, cable, false), TV_NOT_FOUND);
    EXPECT_EQ(byRecord(0, id, 0, false), TV_NOT_FOUND);
    EXPECT_EQ(byRecord(4, id, 0, false), TV_NOT_FOUND);
    EXPECT_EQ(byRecord(UINT16_MAX, UINT16_MAX, UINT32_MAX, true), TV_NOT_FOUND);
    EXPECT_EQ(byRecord(0, 0, 0, true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(byRecord(SVL_ID_CABLE, 0, 0, true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(0, true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(77, true), TV_NOT_FOUND);
    EXPECT_EQ(current(), movies);
}

TEST_F(TelevisionBroadcast, SelectionByFocus) {
    const uint32_t main = current();
    const auto byFocus = a_qortvapi_broadcast_select_channel_by_focusid;
    EXPECT_EQ(byFocus(0, 0, movies, false, 1), TV_OK);
    EXPECT_EQ(current(1), movies);
    EXPECT_EQ(current(), main);
    EXPECT_EQ(byFocus(0, 0, movies, false, 0), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(byFocus(0, 0, cable, false, 2), TV_INVALID_ARGUMENT);
    EXPECT_EQ(byFocus(0, 0, cable, false, UINT16_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(byFocus(0, 0, 77, false, 1), TV_NOT_FOUND);
    EXPECT_EQ(current(1), movies);
}

TEST_F(TelevisionBroadcast, SelectionByNumberPrefersTheListThatPlays) {
    SVL_REC_T record = service(SVL_ID_SATELLITE, "World News HD");
    record.ui2_channel_number = 105;  // as Movies 1 of cable
    ASSERT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info(SVL_ID_SATELLITE, 0, 0, 0, 0,
                                                          CHANNEL_WRITE_SERVICE, &record, nullptr),
              TV_OK);
    const auto byNumber = a_qortvapi_broadcast_select_channel_by_chan_num;
    select(services(SVL_ID_SATELLITE)[0].ui4_channel_id);
    EXPECT_EQ(byNumber(105, 0, false), TV_OK);
    EXPECT_EQ(current(), record.ui4_channel_id);
    EXPECT_EQ(byNumber(106, 0, false), TV_OK) << "of another list";
    EXPECT_EQ(currentName(), "Movies 2");
    EXPECT_EQ(byNumber(105, 0, false), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(byNumber(105, 1, false), TV_NOT_FOUND);
    EXPECT_EQ(byNumber(0, 0, false), TV_NOT_FOUND);
    EXPECT_EQ(byNumber(65536 + 105, 0, false), TV_NOT_FOUND);
    EXPECT_EQ(byNumber(UINT32_MAX, 0, false), TV_NOT_FOUND);
}

TEST_F(TelevisionBroadcast, SelectionByProgramNumber) {
    const auto byProgram = a_qortvapi_broadcast_select_channel_by_prog_no;
    EXPECT_EQ(byProgram(BRDCST_MEDIUM_DIG_CABLE, 0x2102), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(byProgram(BRDCST_MEDIUM_DIG_SATELLITE, 0x2102), TV_NOT_FOUND);
    EXPECT_EQ(byProgram(0, 0x1101), TV_OK);
    EXPECT_EQ(currentName(), "World News HD");
    EXPECT_EQ(byProgram(4, 0x1101), TV_INVALID_ARGUMENT);
    EXPECT_EQ(byProgram(0, 0), TV_NOT_FOUND);

    // The multiplex that plays comes first, then the lowest number.
    auto plans = demoPlans();
    plans[7].services[3].serviceId = 0x2201;  // Volksmusik, 131, as Ελλάδα, 107
    writeStreams(streams(), {plans[7]});
    tv->reload();
    EXPECT_EQ(byProgram(BRDCST_MEDIUM_DIG_CABLE, 0x2201), TV_OK);
    EXPECT_EQ(currentName(), "Ελλάδα");
    select(movies);
    EXPECT_EQ(byProgram(BRDCST_MEDIUM_DIG_CABLE, 0x2201), TV_OK);
    EXPECT_EQ(currentName(), "Volksmusik");
}

TEST_F(TelevisionBroadcast, NotifiesTuningThenTheChannelThenTheBanner) {
    listen();
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, false), TV_OK);
    std::vector<SeenNotification> expected = selected(movies, 0, SVL_ID_CABLE);
    expected.push_back(bannerShown(1));
    EXPECT_EQ(log.wait("broadcast", 4), expected);
    EXPECT_EQ(status(), uint32_t{BROADCAST_TUNING_LOCKED});
    EXPECT_EQ(error(), BROADCAST_TUNING_ERROR_NONE);
    // The same channel again notifies nobody, unless it is to be selected anew.
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, false), TV_OK);
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, true), TV_OK);
    for (const SeenNotification& event : selected(movies, 0, SVL_ID_CABLE))
        expected.push_back(event);
    // The sub window has no banner.
    ASSERT_EQ(a_qortvapi_broadcast_set_banner_visibility(false), TV_OK);
    expected.push_back(bannerShown(0));
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_focusid(0, 0, cable, false, 1), TV_OK);
    for (const SeenNotification& event : selected(cable, 1, SVL_ID_CABLE))
        expected.push_back(event);
    EXPECT_EQ(log.wait("broadcast", expected.size()), expected);
    EXPECT_EQ(a_qortvapi_broadcast_get_tuning_status(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_get_tuning_error(badPointer<int32_t>()), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionBroadcast, WithoutAFileThereIsNoSignal) {
    listen();
    uint32_t context = 0;
    ASSERT_EQ(c_svctx_open("main_svctx", &context), TV_OK);
    ASSERT_EQ(c_svctx_set_listener(context, listener, nullptr), TV_OK);
    ASSERT_TRUE(std::filesystem::remove(streams() + "/dvb-c-2.ts"));
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, false), TV_OK);
    std::vector<SeenNotification> expected = selected(
            movies, 0, SVL_ID_CABLE, BROADCAST_TUNING_FAILED, BROADCAST_TUNING_ERROR_NO_SIGNAL);
    expected.push_back(bannerShown(1));
    EXPECT_EQ(log.wait("broadcast", 4), expected);
    EXPECT_EQ(status(), uint32_t{BROADCAST_TUNING_FAILED});
    EXPECT_EQ(error(), BROADCAST_TUNING_ERROR_NO_SIGNAL);
    EXPECT_EQ(a_qortvapi_broadcast_is_signal_loss(), 1);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_level(), 0);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_quality(), 0);
    uint32_t locked = 9;
    uint32_t size = sizeof(locked);
    EXPECT_EQ(c_svctx_get(context, SVCTX_GET_SIGNAL_LOCKED, &locked, &size), TV_OK);
    EXPECT_EQ(locked, 0u);

    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(cable, false), TV_OK);
    log.wait("broadcast", 7);
    EXPECT_EQ(log.wait("listener", 2)[0].code, SVCTX_COND_SERVICE_CHANGED);
    EXPECT_EQ(log.seen("listener")[1].code, SVCTX_COND_SERVICE_CHANGED) << "the next selection";
    EXPECT_EQ(a_qortvapi_broadcast_is_signal_loss(), 0);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_level(), 100);
    EXPECT_EQ(c_svctx_get(context, SVCTX_GET_SIGNAL_LOCKED, &locked, &size), TV_OK);
    EXPECT_EQ(locked, 1u);
}

TEST_F(TelevisionBroadcast, DamagedPacketsLowerTheQuality) {
    select(movies);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_quality(), 100);
    // A quarter of the packets after the first hundred are marked as damaged.
    constexpr size_t kPacket = 188;
    const std::string path = streams() + "/dvb-c-2.ts";
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
            .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    size_t damaged = 0;
    for (size_t at = 100 * kPacket; at < bytes.size(); at += 4 * kPacket) {
        bytes[at + 1] = static_cast<char>(bytes[at + 1] | 0x80);
        ++damaged;
    }
    ASSERT_GT(damaged, 10u);
    std::ofstream(path + ".new", std::ios::binary) << bytes;
    std::filesystem::rename(path + ".new", path);
    tv->reload();
    const int32_t quality = a_qortvapi_broadcast_get_signal_quality();
    EXPECT_GT(quality, 0);
    EXPECT_LT(quality, 95);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_level(), 50 + quality / 2);
    EXPECT_EQ(status(), uint32_t{BROADCAST_TUNING_LOCKED});
}

TEST_F(TelevisionBroadcast, NothingSelected) {
    for (const auto& file : std::filesystem::directory_iterator(streams())) {
        std::filesystem::remove(file);
    }
    listen();
    tv->reload();
    EXPECT_EQ(log.wait("broadcast", 2),
              (std::vector<SeenNotification>{
                      {"broadcast", BROADCAST_NFY_TUNING, {BROADCAST_TUNING_IDLE, 0, 0, 0}},
                      {"broadcast", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0, 0, 0}}}));
    EXPECT_EQ(status(), uint32_t{BROADCAST_TUNING_IDLE});
    EXPECT_EQ(error(), BROADCAST_TUNING_ERROR_NONE);
    EXPECT_EQ(a_qortvapi_broadcast_is_signal_loss(), 1);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_level(), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_get_signal_quality(), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_switch_input_to_tv(), TV_NOT_FOUND);
    EXPECT_EQ(press({BROADCAST_KEY_CHANNEL_UP}), TV_NOT_FOUND);
    EXPECT_EQ(press({BROADCAST_KEY_CHANNEL_DOWN}), TV_NOT_FOUND);
    EXPECT_EQ(press({1, BROADCAST_KEY_OK}), TV_NOT_FOUND);
    int32_t frequency = -1;
    EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr("main", 0, &frequency), TV_NOT_FOUND);
    EXPECT_EQ(frequency, -1);
    uint8_t scrambled = 9;
    EXPECT_EQ(a_qortvapi_broadcast_strm_is_orig_scramble("main", 0, &scrambled), TV_NOT_FOUND);
    EXPECT_EQ(scrambled, 9);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_additional_service_available), 0);
}

TEST_F(TelevisionBroadcast, SilentSelections) {
    listen();
    const auto silently = a_qortvapi_broadcast_select_channel_silently;
    EXPECT_EQ(silently(0, 0, 0, movies, BROADCAST_SILENT_NO_BANNER), TV_OK);
    std::vector<SeenNotification> expected = selected(movies, 0, SVL_ID_CABLE);
    EXPECT_EQ(silently(0, 0, 0, cable, BROADCAST_SILENT_NO_NOTIFICATION), TV_OK);
    EXPECT_EQ(current(), cable);
    // The banner is shown, though no handler was notified.
    EXPECT_EQ(silently(1, 0, 0, cable, 0), TV_OK);
    for (const SeenNotification& event : selected(cable, 1, SVL_ID_CABLE))
        expected.push_back(event);
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(false), TV_OK);
    expected.push_back(bannerShown(0));
    EXPECT_EQ(silently(0, 0, 0, movies,
                       BROADCAST_SILENT_NO_BANNER | BROADCAST_SILENT_NO_NOTIFICATION),
              TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(true), TV_OK);
    expected.push_back(bannerShown(1));
    EXPECT_EQ(log.wait("broadcast", expected.size()), expected);
    EXPECT_EQ(silently(0, 0, 0, cable, 4), TV_INVALID_ARGUMENT);
    EXPECT_EQ(silently(0, 0, 0, cable, UINT32_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(silently(2, 0, 0, cable, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(silently(0, 0, 0, 0, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(silently(0, 0, 0, 77, 0), TV_NOT_FOUND);
    EXPECT_EQ(current(), movies);
}

TEST_F(TelevisionBroadcast, BannerIsNotifiedWhenItChangesAndStaysHiddenUnderAnApplication) {
    listen();
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(false), TV_OK) << "it is already";
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(false), TV_OK);
    EXPECT_EQ(log.wait("broadcast", 2),
              (std::vector<SeenNotification>{bannerShown(1), bannerShown(0)}));
    QORTVAPI_EXTERNAL_UI_STATUS_T ui = {7, 200};
    EXPECT_EQ(a_qortvapi_broadcast_transfer_external_ui_status(&ui), TV_OK);
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, false), TV_OK);
    ui.ui1_visible = 0;
    EXPECT_EQ(a_qortvapi_broadcast_transfer_external_ui_status(&ui), TV_OK);
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(cable, false), TV_OK);
    const auto seen = log.wait("broadcast", 9);
    EXPECT_EQ(seen[5].code, BROADCAST_NFY_TUNING) << "no banner between the selections";
    EXPECT_EQ(seen[8], bannerShown(1));

    EXPECT_EQ(a_qortvapi_broadcast_transfer_external_ui_status(nullptr), TV_INVALID_ARGUMENT);
    ui.ui1_visible = 1;
    uint32_t refused = 0;
    for (ui.ui4_ui_id = 0; ui.ui4_ui_id < 100; ++ui.ui4_ui_id) {
        const int32_t result = a_qortvapi_broadcast_transfer_external_ui_status(&ui);
        if (result == TV_FULL) ++refused;
    }
    EXPECT_EQ(refused, 68u);
}

TEST_F(TelevisionBroadcast, FavouriteIconIsKept) {
    a_qortvapi_banner_register_callback(banner, nullptr);
    select(cable);
    log.wait("banner", 1);
    EXPECT_EQ(a_qortvapi_broadcast_set_favorite_icon_on_banner(true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_set_favorite_icon_on_banner(true), TV_OK) << "it is already";
    EXPECT_EQ(a_qortvapi_broadcast_set_favorite_icon_on_banner(false), TV_OK);
    const auto seen = log.wait("banner", 2);
    EXPECT_EQ(seen[1], (SeenNotification{"banner", BANNER_NFY_CHANGED, {cable}}));
}

TEST_F(TelevisionBroadcast, DigitsAndOkSelectAtOnce) {
    listen();
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_digits_key_handled), 0);
    EXPECT_EQ(press({1, 0, 5}), TV_OK);
    EXPECT_NE(current(), movies);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_digits_key_handled), 0);
    EXPECT_EQ(press({BROADCAST_KEY_OK}), TV_OK);
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_digits_key_handled), 1);
    EXPECT_EQ(a_qortvapi_broadcast_reset_digits_key_handled(), TV_OK);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_digits_key_handled), 0);
    // Leading zeros count as digits; the fifth digit ends a number.
    EXPECT_EQ(press({0, 0, 1, 0, 1}), TV_OK);
    EXPECT_EQ(current(), cable);
    EXPECT_EQ(press({9, 9, 9, 9, 9}), TV_NOT_FOUND);
    EXPECT_EQ(press({9, 9, BROADCAST_KEY_OK}), TV_OK) << "a hidden channel";
    EXPECT_EQ(currentName(), "Engineering Test");
    EXPECT_EQ(press({0, BROADCAST_KEY_OK}), TV_NOT_FOUND);
    EXPECT_EQ(press({9, 8, BROADCAST_KEY_OK}), TV_NOT_FOUND);
    EXPECT_EQ(currentName(), "Engineering Test");
    // OK alone shows the banner; another key forgets the digits.
    EXPECT_EQ(a_qortvapi_broadcast_set_banner_visibility(false), TV_OK);
    EXPECT_EQ(press({BROADCAST_KEY_OK}), TV_OK);
    EXPECT_EQ(press({1, 0, BROADCAST_KEY_LAST_CHANNEL, 1, BROADCAST_KEY_OK}), TV_OK);
    EXPECT_EQ(currentName(), "Première");
    const auto seen = log.wait("broadcast", 3 * 5 + 3);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), bannerShown(1)), 2);
    for (const uint32_t key : {10u, 12u, 14u, 19u, 23u, UINT32_MAX}) {
        EXPECT_EQ(a_qortvapi_broadcast_key_handler(key), TV_NOT_SUPPORTED);
    }
}

TEST_F(TelevisionBroadcast, DigitsSelectAfterAWhile) {
    tv.reset();
    options.digitTime = std::chrono::milliseconds(1);
    start();
    listen();
    // The selection comes when the time is over; each further digit starts the time anew.
    log.hook([](const SeenNotification& event) {
        if (event.code != BROADCAST_NFY_CHANNEL_CHANGED) return;
        EXPECT_EQ(ask(a_qortvapi_broadcast_is_digits_key_handled), 1);
    });
    EXPECT_EQ(press({4}), TV_OK);
    const auto seen = log.wait("broadcast", 3);
    EXPECT_EQ(seen[2].values[0], channel(SVL_ID_TERRESTRIAL, "Canal Niño"));
}

TEST_F(TelevisionBroadcast, UpAndDownGoAroundTheChannelsThatAreShown) {
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_num(1, 0, false), TV_OK);
    std::vector<std::string> shown;
    std::vector<std::string> up;
    for (const SVL_REC_T& record : services(SVL_ID_TERRESTRIAL)) {
        if ((record.ui4_nw_mask & SB_VNET_VISIBLE) != 0) shown.emplace_back(record.s_service_name);
    }
    ASSERT_EQ(shown.size(), 14u);
    for (size_t i = 0; i < shown.size(); ++i) {
        up.push_back(currentName());
        EXPECT_EQ(press({BROADCAST_KEY_CHANNEL_UP}), TV_OK);
    }
    EXPECT_EQ(up, shown);
    EXPECT_EQ(currentName(), shown.front());
    EXPECT_EQ(press({BROADCAST_KEY_CHANNEL_DOWN}), TV_OK);
    EXPECT_EQ(currentName(), shown.back());
    // From a hidden one to its neighbours.
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_num(99, 0, false), TV_OK);
    EXPECT_EQ(press({BROADCAST_KEY_CHANNEL_DOWN}), TV_OK);
    EXPECT_EQ(currentName(), shown.back());
}

TEST_F(TelevisionBroadcast, LastChannelGoesBackAndForthAndOutlivesARestart) {
    select(cable);
    select(movies);
    select(movies);
    EXPECT_EQ(press({BROADCAST_KEY_LAST_CHANNEL}), TV_OK);
    EXPECT_EQ(current(), cable);
    EXPECT_EQ(press({BROADCAST_KEY_LAST_CHANNEL}), TV_OK);
    EXPECT_EQ(current(), movies);
    restart();
    EXPECT_EQ(press({BROADCAST_KEY_LAST_CHANNEL}), TV_OK);
    EXPECT_EQ(current(), cable);
    const SVL_REC_T gone = service(SVL_ID_CABLE, "Movies 1");
    ASSERT_EQ(a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, gone.ui2_svl_rec_id),
              TV_OK);
    EXPECT_EQ(press({BROADCAST_KEY_LAST_CHANNEL}), TV_NOT_FOUND);
    EXPECT_EQ(current(), cable);
}

TEST_F(TelevisionBroadcast, ChannelNumbers) {
    const auto valid = [](uint32_t major, uint32_t minor, bool exact) {
        return ask(a_qortvapi_broadcast_is_channel_number_valid, major, minor, exact);
    };
    EXPECT_EQ(valid(105, 0, true), 1);
    EXPECT_EQ(valid(105, 1, true), 0);
    EXPECT_EQ(valid(50, 0, true), 0);
    EXPECT_EQ(valid(0, 0, true), 0);
    EXPECT_EQ(valid(UINT32_MAX, 0, true), 0);
    EXPECT_EQ(valid(10, 0, false), 1);
    EXPECT_EQ(valid(105, 0, false), 1);
    EXPECT_EQ(valid(1055, 0, false), 0);
    EXPECT_EQ(valid(50, 0, false), 0);
    EXPECT_EQ(valid(0, 0, false), 1) << "0 in front of any";
    EXPECT_EQ(valid(10, 1, false), 0);
    EXPECT_EQ(valid(UINT32_MAX, 0, false), 0);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_support_4_digits_chan_no), 1);

    const std::vector<std::pair<int32_t (*)(uint16_t, uint32_t*), uint32_t>> limits = {
            {a_qortvapi_broadcast_get_max_possible_major_chan_no, 65535},
            {a_qortvapi_broadcast_get_max_possible_minor_chan_no, 0},
            {a_qortvapi_broadcast_get_max_possible_major_digits, 5},
            {a_qortvapi_broadcast_get_max_possible_minor_digits, 0}};
    for (const auto& [function, expected] : limits) {
        for (const uint16_t tuner : {BRDCST_MEDIUM_DIG_TERRESTRIAL, BRDCST_MEDIUM_DIG_CABLE,
                                     BRDCST_MEDIUM_DIG_SATELLITE}) {
            uint32_t limit = 99;
            EXPECT_EQ(function(tuner, &limit), TV_OK);
            EXPECT_EQ(limit, expected);
            EXPECT_EQ(function(tuner, nullptr), TV_INVALID_ARGUMENT);
        }
        uint32_t limit = 99;
        for (const uint16_t tuner : {0, 4, UINT16_MAX}) {
            EXPECT_EQ(function(tuner, &limit), TV_NOT_SUPPORTED);
        }
        EXPECT_EQ(limit, 99u);
    }
}

TEST_F(TelevisionBroadcast, SwitchingToTelevisionTunesAnew) {
    select(movies);
    listen();
    EXPECT_EQ(a_qortvapi_broadcast_switch_input_to_tv(), TV_OK);
    const auto seen = log.wait("broadcast", 4);
    EXPECT_EQ(std::vector<SeenNotification>(seen.begin(), seen.begin() + 3),
              selected(movies, 0, SVL_ID_CABLE));
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop("main", true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_switch_input_to_tv(), TV_OK);
    EXPECT_EQ(current(), movies);
}

TEST_F(TelevisionBroadcast, StoppedWindowsStayEmptyUntilASelection) {
    select(movies);
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_focusid(0, 0, cable, false, 1), TV_OK);
    listen();
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop("main", true), TV_OK);
    EXPECT_EQ(log.wait("broadcast", 2),
              (std::vector<SeenNotification>{
                      {"broadcast", BROADCAST_NFY_TUNING, {BROADCAST_TUNING_IDLE, 0, 0, 0}},
                      {"broadcast", BROADCAST_NFY_CHANNEL_CHANGED, {0, 0, 0, 0}}}));
    EXPECT_EQ(current(), 0u);
    EXPECT_EQ(current(1), cable);
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop("main", false), TV_OK) << "it is already";
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop("sub", false), TV_OK);
    EXPECT_EQ(current(1), 0u);
    tv->reload();
    EXPECT_EQ(current(), 0u) << "a load does not start it";
    EXPECT_EQ(press({BROADCAST_KEY_LAST_CHANNEL}), TV_OK);
    EXPECT_EQ(current(), movies);
    for (const char* name : {"", "mai", "third"}) {
        EXPECT_EQ(a_qortvapi_broadcast_sync_stop(name, true), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_broadcast_sync_stop(nullptr, true), TV_NOT_FOUND);
}

TEST_F(TelevisionBroadcast, WindowsHaveNamesThatMayBeCutToFiveCharacters) {
    for (const char* name : {"main", "main_", "main_svctx", "sub", "sub_s", "sub_svctx"}) {
        const size_t window = *name == 'm' ? 0 : 1;
        select(movies);
        ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_focusid(0, 0, cable, false, 1), TV_OK);
        EXPECT_EQ(a_qortvapi_broadcast_sync_stop(name, true), TV_OK) << name;
        EXPECT_EQ(current(0), window == 0 ? 0 : movies) << name;
        EXPECT_EQ(current(1), window == 1 ? 0 : cable) << name;
    }
    for (const char* name : {"m", "main_s", "mains", "sub_", "sub_sv", "s"}) {
        EXPECT_EQ(a_qortvapi_broadcast_sync_stop(name, true), TV_NOT_FOUND) << name;
    }
}

TEST_F(TelevisionBroadcast, FrequencyChanges) {
    QORTVAPI_FREQ_INFO_T wanted = {};
    wanted.ui4_frequency_khz = 322'400;  // dvb-c-2.ts, nearly
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_OK);
    EXPECT_EQ(currentName(), "Ouvrir l'Œil");
    wanted.ui1_brdcst_medium = BRDCST_MEDIUM_DIG_TERRESTRIAL;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_NOT_FOUND);
    wanted.ui4_frequency_khz = 490'000;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("sub", &wanted), TV_OK);
    EXPECT_EQ(current(1), channel(SVL_ID_TERRESTRIAL, "Kanał Łódź"))
            << "the lowest number of the multiplex";
    wanted.ui4_frequency_khz = 489'499;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_NOT_FOUND);
    wanted = {};
    wanted.ui4_frequency_khz = 10'753'250;
    wanted.ui1_polarization = POLARIZATION_VERTICAL;  // that one is horizontal
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_NOT_FOUND);
    wanted.ui1_polarization = POLARIZATION_HORIZONTAL;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_OK);
    EXPECT_EQ(currentName(), services(SVL_ID_SATELLITE)[0].s_service_name);
    wanted.ui4_frequency_khz = UINT32_MAX;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_NOT_FOUND);
    wanted.ui4_frequency_khz = 0;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_INVALID_ARGUMENT);
    wanted.ui4_frequency_khz = 490'000;
    wanted.ui1_brdcst_medium = 4;
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", &wanted), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("main", nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_change_freq("other", &wanted), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_change_freq(nullptr, &wanted), TV_NOT_FOUND);
}

TEST_F(TelevisionBroadcast, ConnectionAttributes) {
    select(movies);
    const auto attribute = [](int32_t which, int32_t expected = TV_OK) {
        int32_t value = -1;
        EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr("main", which, &value), expected);
        return value;
    };
    EXPECT_EQ(attribute(BROADCAST_CONN_ATTR_FREQUENCY_KHZ), 322'000);
    EXPECT_EQ(attribute(BROADCAST_CONN_ATTR_SYMBOL_RATE), 6'900'000);
    EXPECT_EQ(attribute(BROADCAST_CONN_ATTR_MODULATION), MODULATION_256QAM);
    EXPECT_EQ(attribute(BROADCAST_CONN_ATTR_MEDIUM), BRDCST_MEDIUM_DIG_CABLE);
    select(channel(SVL_ID_TERRESTRIAL, "Première"));
    EXPECT_EQ(attribute(BROADCAST_CONN_ATTR_BANDWIDTH_HZ), 8'000'000);
    EXPECT_EQ(attribute(5, TV_NOT_SUPPORTED), -1);
    EXPECT_EQ(attribute(-1, TV_NOT_SUPPORTED), -1);
    int32_t value = -1;
    EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr("sub", 0, &value), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr("m", 0, &value), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr(nullptr, 0, &value), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_get_connect_attr("main", 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(a_qortvapi_broadcast_ana_channel_fine_tune("main", 1, true), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_broadcast_ana_channel_fine_tune("x", 1, true), TV_NOT_FOUND);
}

TEST_F(TelevisionBroadcast, ScrambledStreams) {
    const auto scrambled = a_qortvapi_broadcast_strm_is_orig_scramble;
    select(movies);
    for (const uint32_t type : {BROADCAST_STREAM_TYPE_AUDIO, BROADCAST_STREAM_TYPE_VIDEO}) {
        EXPECT_EQ(ask(scrambled, "main", type), 1);
    }
    select(channel(SVL_ID_CABLE, "Jazz Radio"));
    EXPECT_EQ(ask(scrambled, "main", uint32_t{BROADCAST_STREAM_TYPE_AUDIO}), 0);
    uint8_t answer = 9;
    EXPECT_EQ(scrambled("main", BROADCAST_STREAM_TYPE_VIDEO, &answer), TV_NOT_FOUND);
    EXPECT_EQ(scrambled("main", BROADCAST_STREAM_TYPE_SUBTITLE, &answer), TV_NOT_FOUND);
    EXPECT_EQ(scrambled("main", BROADCAST_STREAM_TYPE_TELETEXT, &answer), TV_NOT_FOUND);
    EXPECT_EQ(scrambled("main", 4, &answer), TV_INVALID_ARGUMENT);
    EXPECT_EQ(scrambled("main", UINT32_MAX, &answer), TV_INVALID_ARGUMENT);
    EXPECT_EQ(scrambled("sub", 0, &answer), TV_NOT_FOUND);
    EXPECT_EQ(scrambled(nullptr, 0, &answer), TV_NOT_FOUND);
    EXPECT_EQ(answer, 9);
    select(channel(SVL_ID_CABLE, "Français Langue"));
    EXPECT_EQ(ask(scrambled, "main", uint32_t{BROADCAST_STREAM_TYPE_SUBTITLE}), 0);
}

TEST_F(TelevisionBroadcast, AdditionalServices) {
    select(channel(SVL_ID_CABLE, "Français Langue"));
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_additional_service_available), 1) << "subtitles";
    select(channel(SVL_ID_SATELLITE, "World News HD"));
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_additional_service_available), 1) << "three languages";
    select(cable);
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_additional_service_available), 0);
    for (const uint8_t mask : {0, 1, 255}) {
        EXPECT_EQ(ask(a_qortvapi_broadcast_get_mheg_input_event_mask, mask), 0);
    }
}

TEST_F(TelevisionBroadcast, CamAndItsName) {
    char name[32] = "######";
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_cam_installed), 0);
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(31, name), TV_OK);
    EXPECT_STREQ(name, "");
    std::ofstream(streams() + "/cam.json")
            << R"({"name": "Télé 😀 卡", "id": "0123456789ABCDEF", "menu": {"items": []}})";
    tv->reload();
    EXPECT_EQ(ask(a_qortvapi_broadcast_is_cam_installed), 1);
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(31, name), TV_OK);
    EXPECT_STREQ(name, "Télé 😀 卡");
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(UINT32_MAX, name), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(2, name), TV_OK);
    EXPECT_STREQ(name, "T") << "cut at a character";
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(0, name), TV_OK);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(a_qortvapi_broadcast_get_cam_operator_name(8, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionBroadcast, TargetRegions) {
    const auto read = a_qortvapi_broadcast_get_target_regions;
    QORTVAPI_SB_DVB_REGION_T region = {};
    // The regions found below all parents are as many as the level has.
    std::vector<uint16_t> parents = {0};
    for (uint16_t level = BROADCAST_REGION_PRIMARY; level <= BROADCAST_REGION_TERTIARY; ++level) {
        uint16_t count = 0;
        EXPECT_EQ(a_qortvapi_broadcast_get_target_region_num(level, &count), TV_OK);
        std::vector<uint16_t> codes;
        for (const uint16_t parent : parents) {
            for (uint16_t i = 0; read(level, parent, i, &region) == TV_OK; ++i) {
                EXPECT_EQ(region.ui1_depth, level);
                EXPECT_NE(region.s_name[0], '\0');
                const uint16_t above = level == 1   ? 0
                                       : level == 2 ? region.ui2_primary
                                                    : region.ui2_secondary;
                EXPECT_EQ(above, parent);
                codes.push_back(level == 1   ? region.ui2_primary
                                : level == 2 ? region.ui2_secondary
                                             : region.ui2_tertiary);
            }
        }
        EXPECT_EQ(codes.size(), count);
        EXPECT_GT(count, 0);
        parents = codes;
    }
    EXPECT_EQ(read(3, 21, 0, &region), TV_OK);
    EXPECT_EQ(region.ui2_primary, 2);
    EXPECT_STREQ(region.s_name, "Bay");
    uint16_t count = 9;
    for (const uint16_t level : {0, 4, UINT16_MAX}) {
        EXPECT_EQ(a_qortvapi_broadcast_get_target_region_num(level, &count), TV_INVALID_ARGUMENT);
        EXPECT_EQ(read(level, 0, 0, &region), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(count, 9);
    EXPECT_EQ(read(1, 0, UINT16_MAX, &region), TV_NOT_FOUND);
    EXPECT_EQ(read(2, 0, 0, &region), TV_NOT_FOUND);
    EXPECT_EQ(read(1, 0, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_broadcast_get_target_region_num(1, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_STREQ(region.s_name, "Bay");
}

TEST_F(TelevisionBroadcast, ManyThreadsAtTheKeys) {
    tv.reset();
    options.digitTime = std::chrono::milliseconds(1);
    start();
    listen();
    std::vector<std::thread> viewers;
    for (uint32_t viewer = 0; viewer < 4; ++viewer) {
        viewers.emplace_back([viewer] {
            for (uint32_t i = 0; i < 40; ++i) {
                const uint32_t keys[] = {1, 0, BROADCAST_KEY_OK, BROADCAST_KEY_CHANNEL_UP,
                                         BROADCAST_KEY_LAST_CHANNEL};
                a_qortvapi_broadcast_key_handler(keys[(viewer + i) % 5]);
                status();
                a_qortvapi_broadcast_get_signal_level();
                a_qortvapi_broadcast_set_banner_visibility(i % 2 == 0);
                if (i % 10 == 0) a_qortvapi_broadcast_sync_stop("sub", true);
                a_qortvapi_broadcast_select_channel_by_prog_no(0, 0x2102);
            }
        });
    }
    for (std::thread& viewer : viewers) viewer.join();
    EXPECT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(cable, true), TV_OK);
    log.wait("broadcast", 3);
}

}  // namespace
