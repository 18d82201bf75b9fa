// What plays in the windows: selection and what it reports, tracks, banner, screen saver.
#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/hbbtv.h"
#include "middleware/mheg5.h"
#include "middleware/scc.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/svctx.h"
#include "middleware/teletext.h"
#include "middleware/videoinfo.h"
#include "support/notification_log.h"
#include "support/television_test.h"

namespace {

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void* tag(uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

void listener(uint32_t context, uint32_t condition, uint32_t code, uint32_t stream, void* tag) {
    NotificationLog::instance().add("listener", static_cast<int32_t>(condition),
                                    {context, code, stream, value(tag)});
}
void selector(uint32_t context, uint32_t condition, uint32_t code, uint32_t stream, void* tag) {
    NotificationLog::instance().add("selector", static_cast<int32_t>(condition),
                                    {context, code, stream, value(tag)});
}
void audioInfo(int32_t code, void*, void* channel, void* track, void* count, void*) {
    NotificationLog::instance().add("audio", code, {value(channel), value(track), value(count)});
}
void subtitle(int32_t code, void*, void* channel, void* track, void* count, void*) {
    NotificationLog::instance().add("subtitle", code, {value(channel), value(track), value(count)});
}
void banner(int32_t code, void*, void* channel, void*, void*, void*) {
    NotificationLog::instance().add("banner", code, {value(channel)});
}
void video(int32_t code, void*, void* channel, void* width, void* height, void* progressive,
           void* rate, void*) {
    NotificationLog::instance().add(
            "video", code,
            {value(channel), value(width), value(height), value(progressive), value(rate)});
}
void screenSaver(int32_t message, void*, int32_t, int32_t, int32_t) {
    NotificationLog::instance().add("screenSaver", message, {});
}
int32_t detection(uint32_t component, int32_t condition, void* tag, int32_t a, int32_t b) {
    NotificationLog::instance().add(
            "detection", condition,
            {component, value(tag), static_cast<uint64_t>(a), static_cast<uint64_t>(b)});
    return 0;
}

class TelevisionPlaying : public TelevisionTest {
  protected:
    TelevisionPlaying() { log.clear(); }
    ~TelevisionPlaying() override {
        tv.reset();
        log.clear();
    }

    void SetUp() override {
        startWithDemo();
        c_svctx_open("main_svctx", &main);
        c_svctx_open("sub_svctx", &sub);
    }

    static SVCTX_SRC_DESC_T source(uint32_t channelId, const char* name = nullptr) {
        SVCTX_SRC_DESC_T descriptor = {};
        descriptor.ps_first_name = name;
        descriptor.ui4_value = channelId;
        return descriptor;
    }
    int32_t select(uint32_t channelId) const {
        const SVCTX_SRC_DESC_T descriptor = source(channelId);
        return c_svctx_select_svc(main, 0, &descriptor, nullptr, nullptr, nullptr);
    }
    static uint32_t trackCount() {
        uint32_t count = 0;
        EXPECT_EQ(a_qortvapi_audio_info_get_available_record(nullptr, &count), TV_OK);
        return count;
    }

    NotificationLog& log = NotificationLog::instance();
    uint32_t main = 0;
    uint32_t sub = 0;
};

TEST_F(TelevisionPlaying, SelectionReportsItsStepsInOrder) {
    ASSERT_EQ(c_svctx_set_listener(main, listener, tag(12)), TV_OK);
    const uint32_t id = channel(SVL_ID_CABLE, "Movies 1");
    SVCTX_SRC_DESC_T descriptor = source(id);
    ASSERT_EQ(c_svctx_select_svc(main, 0, &descriptor, nullptr, selector, tag(5)), TV_OK);
    std::vector<SeenNotification> steps;
    for (const auto& [condition, stream] :
         std::vector<std::pair<int32_t, uint64_t>>{{SVCTX_COND_SERVICE_CHANGED, SVCTX_STREAM_ALL},
                                                   {SVCTX_COND_SIGNAL_LOCKED, SVCTX_STREAM_ALL},
                                                   {SVCTX_COND_STREAM_STARTED, SVCTX_STREAM_VIDEO},
                                                   {SVCTX_COND_STREAM_STARTED, SVCTX_STREAM_AUDIO},
                                                   {SVCTX_COND_SERVICE_READY, SVCTX_STREAM_ALL}}) {
        steps.push_back({"listener", condition, {main, SVCTX_CODE_SERVICE_SELECTED, stream, 12}});
    }
    EXPECT_EQ(log.wait("listener", 5), steps);
    for (SeenNotification& step : steps) {
        step.handler = "selector";
        step.values[3] = 5;
    }
    EXPECT_EQ(log.wait("selector", 5), steps);
    EXPECT_EQ(static_cast<uint32_t>(a_qortvapi_channellist_get_current_chan_id()), id);

    // The selector of a selection is not notified of later ones. A radio service has no picture.
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(channel(SVL_ID_CABLE, "Jazz Radio")),
              TV_OK);
    const auto more = log.wait("listener", 9);
    EXPECT_EQ(more[7].values[2], uint64_t{SVCTX_STREAM_AUDIO});
    EXPECT_EQ(more[8].code, SVCTX_COND_SERVICE_READY);
    EXPECT_EQ(log.seen("selector").size(), 5u);
}

TEST_F(TelevisionPlaying, UnknownServiceIsReportedAndChangesNothing) {
    ASSERT_EQ(c_svctx_set_listener(main, listener, tag(1)), TV_OK);
    const int32_t before = a_qortvapi_channellist_get_current_chan_id();
    SVCTX_SRC_DESC_T descriptor = source(0xFFFFFF);
    EXPECT_EQ(c_svctx_select_svc(main, 7, &descriptor, nullptr, selector, tag(6)), TV_OK);
    EXPECT_EQ(log.wait("listener", 1)[0].code, SVCTX_COND_NO_SERVICE);
    EXPECT_EQ(log.wait("selector", 1)[0].code, SVCTX_COND_NO_SERVICE);
    EXPECT_EQ(a_qortvapi_channellist_get_current_chan_id(), before);

    EXPECT_EQ(c_svctx_select_svc(main, 0, nullptr, nullptr, selector, nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_select_svc(7, 0, &descriptor, nullptr, selector, nullptr), TV_NOT_FOUND);
    descriptor = source(0);
    EXPECT_EQ(c_svctx_select_svc(main, 0, &descriptor, nullptr, selector, nullptr),
              TV_INVALID_ARGUMENT);
    const std::string endless(1 << 16, 'n');
    descriptor = source(0, endless.c_str());
    EXPECT_EQ(c_svctx_select_svc(main, 0, &descriptor, nullptr, selector, nullptr),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionPlaying, SelectionByName) {
    const SVCTX_SRC_DESC_T descriptor = source(0, "Ελλάδα");
    ASSERT_EQ(c_svctx_select_svc(sub, 0, &descriptor, nullptr, nullptr, nullptr), TV_OK);
    uint32_t id = 0;
    uint32_t size = sizeof id;
    EXPECT_EQ(c_svctx_get(sub, SVCTX_GET_CHANNEL_ID, &id, &size), TV_OK);
    EXPECT_EQ(id, channel(SVL_ID_CABLE, "Ελλάδα"));
}

TEST_F(TelevisionPlaying, ContextsReturnWhatPlays) {
    SVL_REC_T record = {};
    uint32_t size = sizeof record - 1;
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Cable One")), TV_OK);
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_SERVICE, &record, &size), TV_INVALID_ARGUMENT);
    EXPECT_EQ(record.ui2_svl_id, 0) << "nothing is written on failure";
    size = 1000;
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_SERVICE, &record, &size), TV_OK);
    EXPECT_EQ(size, sizeof record);
    EXPECT_STREQ(record.s_service_name, "Cable One");
    EXPECT_EQ(c_svctx_get(main, 99, &record, &size), TV_NOT_SUPPORTED);
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_SERVICE, nullptr, &size), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_SERVICE, &record, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_get(1, SVCTX_GET_SERVICE, &record, &size), TV_NOT_FOUND);

    SVCTX_VIDEO_RESOLUTION_T resolution = {};
    EXPECT_EQ(c_svctx_get_video_src_resolution(main, &resolution), TV_OK);
    EXPECT_EQ(resolution.ui4_height, 1080u) << "a service of the HD type";
    EXPECT_STREQ(resolution.s_timing_type, "1080i");
    EXPECT_EQ(c_svctx_get_video_src_resolution(sub, &resolution), TV_NOT_FOUND);
    EXPECT_EQ(c_svctx_get_video_src_resolution(main, nullptr), TV_INVALID_ARGUMENT);
    SVCTX_AUDIO_INFO_T audio = {};
    EXPECT_EQ(c_svctx_get_audio_info(main, &audio), TV_OK);
    EXPECT_STREQ(audio.s_language, "eng");
    EXPECT_EQ(audio.ui4_pid, record.ui2_audio_pid);
    EXPECT_EQ(a_qortvapi_zoom_is_enable(), 1);

    char text[8];
    EXPECT_EQ(c_svctx_generic_get_info(main, SVCTX_INFO_SERVICE_NAME, 0, text, sizeof text), TV_OK);
    EXPECT_STREQ(text, "Cable O");
    EXPECT_EQ(c_svctx_generic_get_info(main, SVCTX_INFO_SERVICE_NAME, 0, text, 0),
              TV_INVALID_ARGUMENT);
    const uint32_t on = 1;
    uint32_t held = 0;
    EXPECT_EQ(c_svctx_set_stream_attr(main, SVCTX_STREAM_VIDEO, SVCTX_ATTR_HELD_BACK, &on, 4),
              TV_OK);
    EXPECT_EQ(c_svctx_set_stream_attr(main, SVCTX_STREAM_VIDEO, SVCTX_ATTR_HELD_BACK, &on, 3),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_set_stream_attr(main, UINT32_MAX, SVCTX_ATTR_HELD_BACK, &on, 4),
              TV_INVALID_ARGUMENT);
    size = sizeof held;
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_VIDEO_BLANK, &held, &size), TV_OK);
    EXPECT_EQ(held, 1u);
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_AUDIO_MUTE, &held, &size), TV_OK);
    EXPECT_EQ(held, 0u);
    // Who asks for these does not say how large its buffer is.
    EXPECT_EQ(c_svctx_get_conn_attr(main, 1, 1, text), TV_NOT_SUPPORTED);
    EXPECT_STREQ(text, "Cable O");

    uint16_t list = 0;
    EXPECT_EQ(a_qortvapi_mheg5_get_current_channel(&list, &record, nullptr), TV_OK);
    EXPECT_EQ(list, SVL_ID_CABLE);
}

TEST_F(TelevisionPlaying, ComponentsOfBothSinks) {
    const auto open = [](uintptr_t type, const char* sink, uint32_t* handle) {
        const SCC_CMD_T commands[] = {{SCC_CMD_COMP_TYPE, type},
                                      {SCC_CMD_SINK_NAME, reinterpret_cast<uintptr_t>(sink)},
                                      {77, 0},
                                      {SCC_CMD_END, 0}};
        return c_scc_comp_open(commands, handle);
    };
    uint32_t video = 0;
    uint32_t other = 0;
    ASSERT_EQ(open(SCC_COMP_VIDEO, SCC_SINK_MAIN, &video), TV_OK);
    ASSERT_EQ(open(SCC_COMP_VIDEO, SCC_SINK_SUB, &other), TV_OK);
    EXPECT_NE(video, other);
    EXPECT_EQ(c_scc_vid_set_src_detect_nfy(video, detection, tag(8)), TV_OK);
    EXPECT_EQ(log.wait("detection", 1)[0].code, SCC_DETECT_SIGNAL);
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Jazz Radio")), TV_OK);
    EXPECT_EQ(log.wait("detection", 2)[1],
              (SeenNotification{"detection", SCC_DETECT_NO_SIGNAL, {video, 8, 0, 0}}));
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Cable One")), TV_OK);
    EXPECT_EQ(log.wait("detection", 3)[2],
              (SeenNotification{"detection", SCC_DETECT_SIGNAL, {video, 8, 1920, 1080}}));

    uint32_t refused = 42;
    EXPECT_EQ(open(SCC_COMP_COUNT, SCC_SINK_MAIN, &refused), TV_NOT_FOUND);
    EXPECT_EQ(open(UINTPTR_MAX, SCC_SINK_MAIN, &refused), TV_NOT_FOUND);
    EXPECT_EQ(open(SCC_COMP_VIDEO, "snk_Other", &refused), TV_NOT_FOUND);
    EXPECT_EQ(open(SCC_COMP_VIDEO, nullptr, &refused), TV_NOT_FOUND);
    const std::vector<SCC_CMD_T> endless(SCC_CMD_MAX, SCC_CMD_T{SCC_CMD_COMP_TYPE, 0});
    EXPECT_EQ(c_scc_comp_open(endless.data(), &refused), TV_NOT_FOUND);
    EXPECT_EQ(c_scc_comp_open(nullptr, &refused), TV_INVALID_ARGUMENT);
    EXPECT_EQ(refused, 42u);
    ASSERT_EQ(open(SCC_COMP_AUDIO, SCC_SINK_MAIN, &other), TV_OK);
    EXPECT_EQ(c_scc_vid_set_src_detect_nfy(other, detection, nullptr), TV_NOT_FOUND);
    EXPECT_EQ(c_scc_vid_set_src_detect_nfy(video, nullptr, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionPlaying, AudioTracksOfTheProgramMap) {
    const uint32_t id = channel(SVL_ID_SATELLITE, "World News HD");
    ASSERT_EQ(select(id), TV_OK);
    ASSERT_EQ(trackCount(), 3u);
    std::vector<QORTVAPI_AUDIO_RECORD_T> records(3);
    uint32_t count = 2;
    records[2].ui4_index = 77;
    EXPECT_EQ(a_qortvapi_audio_info_get_available_record(records.data(), &count), TV_OK);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(records[2].ui4_index, 77u);
    count = UINT32_MAX;
    EXPECT_EQ(a_qortvapi_audio_info_get_available_record(records.data(), &count), TV_OK);
    EXPECT_EQ(count, 3u);
    EXPECT_STREQ(records[1].s_language, "spa");
    EXPECT_STREQ(records[2].s_language, "ara");
    EXPECT_EQ(records[0].ui4_encoding, uint32_t{AUDIO_ENCODING_MPEG1});
    EXPECT_EQ(records[1].ui4_encoding, uint32_t{AUDIO_ENCODING_AC3}) << "from its descriptor";

    a_qortvapi_audio_info_register_callback(audioInfo, nullptr);
    EXPECT_EQ(a_qortvapi_select_audio(1), TV_OK);
    EXPECT_EQ(a_qortvapi_select_audio(3), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_select_audio(UINT32_MAX), TV_NOT_FOUND);
    char language[4];
    EXPECT_EQ(a_qortvapi_audio_info_get_current_lanuage(language, sizeof language), TV_OK);
    EXPECT_STREQ(language, "spa");
    EXPECT_EQ(a_qortvapi_audio_info_get_current_lanuage(language, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_audio_info_set_next_lanuage(), TV_OK);
    EXPECT_EQ(a_qortvapi_audio_info_set_next_lanuage(), TV_OK);
    EXPECT_EQ(log.wait("audio", 3), (std::vector<SeenNotification>{
                                            {"audio", AUDIO_INFO_NFY_TRACK_SELECTED, {id, 1, 3}},
                                            {"audio", AUDIO_INFO_NFY_TRACK_SELECTED, {id, 2, 3}},
                                            {"audio", AUDIO_INFO_NFY_TRACK_SELECTED, {id, 0, 3}}}));
    EXPECT_EQ(a_qortvapi_select_main_sub_audio(2, 3), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_select_main_sub_audio(2, 0), TV_OK);
    QORTVAPI_AUDIO_RECORD_T current = {};
    EXPECT_EQ(a_qortvapi_get_current_audio_info(&current), TV_OK);
    EXPECT_EQ(current.ui4_index, 2u);
    QORTVAPI_AUDIO_APD_TEXT_T text = {};
    int32_t type = -1;
    EXPECT_EQ(a_qortvapi_get_audio_apd_text(0, &text, &type), TV_OK);
    EXPECT_STREQ(text.s_text, "eng");
    EXPECT_EQ(type, AUDIO_TYPE_UNDEFINED);
    EXPECT_EQ(a_qortvapi_get_audio_apd_text(200, &text, &type), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_get_current_ad_info(&current), TV_NOT_FOUND);
    EXPECT_EQ(current.ui4_index, 2u);
    EXPECT_EQ(a_qortvapi_get_inputsource_current_audio_info(&current), TV_NOT_SUPPORTED);

    // Another service begins anew, and so does this one when it comes back.
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Cable One")), TV_OK);
    EXPECT_EQ(trackCount(), 1u);
    ASSERT_EQ(select(id), TV_OK);
    uint32_t track = 9;
    EXPECT_EQ(a_qortvapi_audio_info_get_value(AUDIO_INFO_VALUE_TRACK, &track), TV_OK);
    EXPECT_EQ(track, 0u);
    EXPECT_EQ(log.wait("audio", 6)[5],
              (SeenNotification{"audio", AUDIO_INFO_NFY_TRACKS_CHANGED, {id, 0, 3}}));
    EXPECT_EQ(a_qortvapi_audio_info_set_value(AUDIO_INFO_VALUE_TRACK, 1), TV_NOT_SUPPORTED);
}

TEST_F(TelevisionPlaying, HbbtvSeesTheSameTracks) {
    EXPECT_EQ(c_hbbtv_set_default_audio_lang("spa"), TV_OK);
    EXPECT_EQ(c_hbbtv_set_default_audio_lang("sp"), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_hbbtv_set_default_audio_lang(nullptr), TV_INVALID_ARGUMENT);
    ASSERT_EQ(select(channel(SVL_ID_SATELLITE, "World News HD")), TV_OK);
    uint16_t index = 9;
    EXPECT_EQ(c_hbbtv_stm_get_audio(&index), TV_OK);
    EXPECT_EQ(index, 1) << "the preferred language";
    EXPECT_EQ(c_hbbtv_stm_set_audio(2), TV_OK);
    EXPECT_EQ(c_hbbtv_stm_set_audio(3), TV_NOT_FOUND);
    EXPECT_EQ(c_hbbtv_stm_get_audio_num(&index), TV_OK);
    EXPECT_EQ(index, 3);
    char language[4] = {};
    EXPECT_EQ(c_hbbtv_stm_get_audio_lang(2, language), TV_OK);
    EXPECT_STREQ(language, "ara");
    EXPECT_EQ(c_hbbtv_stm_get_audio_lang(3, language), TV_NOT_FOUND);
    EXPECT_EQ(c_hbbtv_stm_get_audio_lang(1, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_hbbtv_set_audio_desc(true), TV_OK);
    uint32_t on = 0;
    EXPECT_EQ(a_qortvapi_audio_info_get_value(AUDIO_INFO_VALUE_DESCRIPTION_ON, &on), TV_OK);
    EXPECT_EQ(on, 1u);
}

TEST_F(TelevisionPlaying, TracksAreKnownFromTheRecordBeforeTheStreamIsRead) {
    ASSERT_EQ(select(channel(SVL_ID_SATELLITE, "World News HD")), TV_OK);
    options.streams.clear();
    restart();
    QORTVAPI_AUDIO_RECORD_T record = {};
    EXPECT_EQ(a_qortvapi_get_current_audio_info(&record), TV_OK);
    EXPECT_STREQ(record.s_language, "eng");
    EXPECT_EQ(trackCount(), 1u);
}

TEST_F(TelevisionPlaying, TracksThatChangeWhileTheServicePlaysAreNotified) {
    auto plans = stream_generator::demoPlans();
    const uint32_t id = channel(SVL_ID_TERRESTRIAL, "Première");
    ASSERT_EQ(select(id), TV_OK);
    ASSERT_EQ(a_qortvapi_select_audio(1), TV_OK);
    a_qortvapi_audio_info_register_callback(audioInfo, nullptr);
    tv->reload();  // nothing new
    plans[0].services[0].audioLanguages = {"fra"};
    stream_generator::writeStreams(streams(), plans);
    tv->reload();
    EXPECT_EQ(
            log.wait("audio", 1),
            (std::vector<SeenNotification>{{"audio", AUDIO_INFO_NFY_TRACKS_CHANGED, {id, 0, 1}}}));
    uint32_t track = 9;
    EXPECT_EQ(a_qortvapi_audio_info_get_value(AUDIO_INFO_VALUE_TRACK, &track), TV_OK);
    EXPECT_EQ(track, 0u) << "the one in use is gone";
}

TEST_F(TelevisionPlaying, TracksAreKeptUpToALimit) {
    auto plans = stream_generator::demoPlans();
    plans.resize(1);
    plans[0].services.resize(1);
    plans[0].services[0].audioLanguages.assign(20, "deu");
    plans[0].services[0].subtitleLanguages.assign(20, "deu");
    std::filesystem::remove_all(streams());
    stream_generator::writeStreams(streams(), plans);
    tv->reload();
    const SVL_REC_T record = services(SVL_ID_TERRESTRIAL).at(0);
    ASSERT_EQ(select(record.ui4_channel_id), TV_OK);
    EXPECT_EQ(record.ui1_audio_count, 20);
    EXPECT_EQ(record.ui1_subtitle_count, 20);
    EXPECT_EQ(trackCount(), 16u);
    int32_t loop[2] = {};
    EXPECT_EQ(a_qortvapi_subtitle_get_loop(loop, 2), TV_OK);
    EXPECT_EQ(loop[SUBTITLE_LOOP_COUNT], 16);
}

TEST_F(TelevisionPlaying, Subtitles) {
    const uint32_t id = channel(SVL_ID_CABLE, "Français Langue");
    ASSERT_EQ(select(id), TV_OK);
    a_qortvapi_subtitle_reg_callback(subtitle, nullptr);
    std::vector<int32_t> loop(5, -7);
    EXPECT_EQ(a_qortvapi_subtitle_get_loop(loop.data(), 4), TV_OK);
    EXPECT_EQ(loop, (std::vector<int32_t>{2, 0, 'f' | 'r' << 8 | 'a' << 16,
                                          'n' | 'l' << 8 | 'd' << 16, -7}));
    EXPECT_EQ(a_qortvapi_subtitle_get_loop(loop.data(), 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_subtitle_get_loop(nullptr, 4), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_subtitle_play(2), TV_OK);
    EXPECT_EQ(a_qortvapi_subtitle_play(3), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_subtitle_set_next(), 0) << "from the last to off";
    EXPECT_EQ(a_qortvapi_subtitle_set_next(), 1);
    EXPECT_EQ(
            log.wait("subtitle", 3),
            (std::vector<SeenNotification>{{"subtitle", SUBTITLE_NFY_TRACK_SELECTED, {id, 2, 2}},
                                           {"subtitle", SUBTITLE_NFY_TRACK_SELECTED, {id, 0, 2}},
                                           {"subtitle", SUBTITLE_NFY_TRACK_SELECTED, {id, 1, 2}}}));
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Cable One")), TV_OK);
    EXPECT_EQ(a_qortvapi_subtitle_set_next(), TV_NOT_FOUND);
    EXPECT_EQ(c_hbbtv_set_default_subtitle_lang("nl", 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_hbbtv_set_default_subtitle_lang("nld", 0), TV_OK);
    ASSERT_EQ(select(id), TV_OK);
    EXPECT_EQ(a_qortvapi_subtitle_get_loop(loop.data(), 2), TV_OK);
    EXPECT_EQ(loop[SUBTITLE_LOOP_CURRENT], 2) << "the preferred language";
}

TEST_F(TelevisionPlaying, SelectionIsSeenOnTheScreen) {
    a_qortvapi_banner_register_callback(banner, nullptr);
    a_qortvapi_videoinfo_reg_common_nfy(video, nullptr);
    a_qortvapi_screensaver_register_msg_callback(screenSaver, nullptr);
    const uint32_t id = channel(SVL_ID_CABLE, "Jazz Radio");
    ASSERT_EQ(select(id), TV_OK);
    EXPECT_EQ(log.wait("banner", 1)[0], (SeenNotification{"banner", BANNER_NFY_CHANGED, {id}}));
    EXPECT_EQ(log.wait("video", 1)[0],
              (SeenNotification{"video", VIDEOINFO_NFY_FORMAT_CHANGED, {id, 0, 0, 0, 0}}));
    EXPECT_EQ(log.wait("screenSaver", 1)[0].code, SCREENSAVER_MSG_RADIO);
    EXPECT_EQ(a_qortvapi_screensaver_get_msgID(), SCREENSAVER_MSG_RADIO);
    const uint32_t ultra = channel(SVL_ID_SATELLITE, "日本の旅");
    ASSERT_EQ(select(ultra), TV_OK);
    EXPECT_EQ(log.wait("video", 2)[1],
              (SeenNotification{
                      "video", VIDEOINFO_NFY_FORMAT_CHANGED, {ultra, 3840, 2160, 1, 50000}}));
    EXPECT_EQ(log.wait("screenSaver", 2)[1].code, SCREENSAVER_MSG_NONE);
    uint32_t width = 0;
    EXPECT_EQ(a_qortvapi_videoinfo_get_value(VIDEOINFO_VALUE_WIDTH, &width), TV_OK);
    EXPECT_EQ(width, 3840u);
    EXPECT_EQ(a_qortvapi_videoinfo_get_value(0, &width), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_videoinfo_get_value(VIDEOINFO_VALUE_WIDTH, nullptr), TV_INVALID_ARGUMENT);

    // What plays in the sub window is not on the main window's banner.
    const SVCTX_SRC_DESC_T descriptor = source(id);
    ASSERT_EQ(c_svctx_set_listener(sub, listener, nullptr), TV_OK);
    ASSERT_EQ(c_svctx_select_svc(sub, 0, &descriptor, nullptr, nullptr, nullptr), TV_OK);
    log.wait("listener", 4);
    ASSERT_EQ(select(id), TV_OK);
    EXPECT_EQ(log.wait("banner", 3).size(), 3u);
}

TEST_F(TelevisionPlaying, BannerItems) {
    ASSERT_EQ(select(channel(SVL_ID_CABLE, "Curaçao TV")), TV_OK);
    const auto content = [](int32_t item) {
        uint32_t length = 0;
        EXPECT_EQ(a_qortvapi_banner_get_item_content_len(item, 0, &length), TV_OK);
        std::vector<char> text(length);
        EXPECT_EQ(a_qortvapi_banner_get_item_content(item, 0, text.data(), length), TV_OK);
        EXPECT_EQ(std::strlen(text.data()) + 1, length);
        return std::string(text.data());
    };
    EXPECT_EQ(content(BANNER_ITEM_CHANNEL_NUMBER), "103");
    EXPECT_EQ(content(BANNER_ITEM_CHANNEL_NAME), "Curaçao TV");
    EXPECT_EQ(content(BANNER_ITEM_PROVIDER), "Corvanta Media");
    EXPECT_EQ(content(BANNER_ITEM_NETWORK), "Corvanta Cable");
    EXPECT_EQ(content(BANNER_ITEM_AUDIO_LANGUAGE), "eng");
    char text[6] = "xxxxx";
    EXPECT_EQ(a_qortvapi_banner_get_item_content(BANNER_ITEM_CHANNEL_NAME, 0, text, 6), TV_OK);
    EXPECT_STREQ(text, "Cura") << "not half a character";
    uint8_t visible = 0;
    EXPECT_EQ(a_qortvapi_banner_get_item_state(BANNER_ITEM_CHANNEL_NAME, 0, &visible), TV_OK);
    EXPECT_TRUE(visible);
    int32_t id = 0;
    EXPECT_EQ(a_qortvapi_banner_get_item_id(BANNER_ITEM_PROVIDER, 0, &id), TV_OK);
    EXPECT_EQ(id, BANNER_ITEM_PROVIDER);
    for (const auto& [item, index] : std::vector<std::pair<int32_t, int32_t>>{
                 {0, 0}, {BANNER_ITEM_LAST + 1, 0}, {-1, 0}, {1, 1}, {1, -1}}) {
        EXPECT_EQ(a_qortvapi_banner_get_item_state(item, index, &visible), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_banner_get_item_content(item, index, text, 6), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_banner_get_item_content(1, 0, nullptr, UINT32_MAX), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionPlaying, NothingPlaysWithoutStreams) {
    options.streams.clear();
    options.state = folder() / "other";
    restart();
    EXPECT_EQ(a_qortvapi_screensaver_get_msgID(), SCREENSAVER_MSG_NO_SIGNAL);
    uint8_t visible = 1;
    EXPECT_EQ(a_qortvapi_banner_get_item_state(BANNER_ITEM_CHANNEL_NAME, 0, &visible), TV_OK);
    EXPECT_FALSE(visible);
    EXPECT_EQ(trackCount(), 0u);
    QORTVAPI_AUDIO_RECORD_T record;
    EXPECT_EQ(a_qortvapi_get_current_audio_info(&record), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_select_audio(0), TV_NOT_FOUND);
    uint32_t locked = 9;
    uint32_t size = sizeof locked;
    EXPECT_EQ(c_svctx_get(main, SVCTX_GET_SIGNAL_LOCKED, &locked, &size), TV_OK);
    EXPECT_EQ(locked, 0u);
}

TEST_F(TelevisionPlaying, TeletextPage) {
    QORTVAPI_TTX_PAGE_ADDR_T page = {};
    EXPECT_EQ(a_qortvapi_teletext_get_cur_page(&page), TV_OK);
    EXPECT_EQ(page.ui1_magazine, 1);
    const QORTVAPI_TTX_PAGE_ADDR_T wanted = {8, 0x88, 3};
    EXPECT_EQ(a_qortvapi_teletext_set_page(&wanted), TV_OK);
    const QORTVAPI_TTX_PAGE_ADDR_T wrong[] = {{0, 0, 0}, {9, 0, 0}, {1, 0, 0xFFFF}};
    for (const auto& address : wrong) {
        EXPECT_EQ(a_qortvapi_teletext_set_page(&address), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_teletext_set_page(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_teletext_get_cur_page(&page), TV_OK);
    EXPECT_EQ(page.ui1_page, 0x88);
    EXPECT_EQ(a_qortvapi_teletext_is_top_stream(), 0);
    EXPECT_EQ(a_qortvapi_teletext_top_get_page_content(&page, nullptr), TV_NOT_SUPPORTED);
}

}  // namespace
