/** What need not allocate does not, and what happens where a buffer cannot be had. */
#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <tuple>

#include "QorTvApiBroadcastImpl.h"
#include "QorTvApiCIImpl.h"
#include "QorTvApiChannelListImpl.h"
#include "QorTvApiConfigImpl.h"
#include "QorTvApiEventImpl.h"
#include "QorTvApiInputSrcImpl.h"
#include "QorTvApiMultiviewImpl.h"
#include "QorTvApiRatingImpl.h"
#include "QorTvApiScanImpl.h"
#include "QorTvApiTimeImpl.h"
#include "hhandler/hh_iom.h"
#include "hhandler/hh_svctx.h"
#include "middleware/channellist.h"
#include "middleware/event.h"
#include "middleware/svctx.h"
#include "service_fixture.h"
#include "short_memory.h"

namespace {

std::atomic<int> gAllocations{0};
bool gMemoryIsShort = false;           // for allocations that may fail
constexpr uint8_t kLeftBehind = 0xa5;  // what fresh memory holds

void* allocate(size_t size) {
    ++gAllocations;
    void* memory = malloc(size == 0 ? 1 : size);
    if (memory == nullptr) abort();
    return memset(memory, kLeftBehind, size);
}

}  // namespace

void* operator new(size_t size) {
    return allocate(size);
}
void* operator new[](size_t size) {
    return allocate(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return gMemoryIsShort ? nullptr : allocate(size);
}
void operator delete(void* memory) noexcept {
    free(memory);
}
void operator delete[](void* memory) noexcept {
    free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    free(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    free(memory);
}

namespace {

/** Calls a method with empty arguments and a callback that does nothing; returns its allocations.
 */
template <typename Implementation, typename Result, typename... Arguments>
int allocationsOf(Result (Implementation::*method)(Arguments...)) {
    const sp<Implementation> implementation = new Implementation();
    std::tuple<std::decay_t<Arguments>...> arguments;
    const auto fill = [](auto& argument) {
        using Argument = std::decay_t<decltype(argument)>;
        const auto callback = [](const auto&...) {};
        if constexpr (std::is_assignable_v<Argument&, decltype(callback)>) argument = callback;
    };
    std::apply([&](auto&... all) { (fill(all), ...); }, arguments);
    const int before = gAllocations + arraysAskedFor();
    std::apply([&](auto&... all) { (*implementation.*method)(all...); }, arguments);
    return gAllocations + arraysAskedFor() - before;
}

struct Row {
    const char* function;
    int (*allocations)();
};

template <auto Method>
int allocations() {
    return allocationsOf(Method);
}

// clang-format off
const Row kRows[] = {
#define ROW(function) {#function, &allocations<&QorTvApiChannelListImpl::a_hidl_##function>}
#include "channel_list_rows.inc"
#undef ROW
#define ROW(function) {#function, &allocations<&QorTvApiCIImpl::a_hidl_##function>}
#include "ci_rows.inc"
ROW(a_qortvapi_ci_key_query),
ROW(a_qortvapi_ci_set_mmi_enq_ans),
ROW(a_qortvapi_ci_set),
#undef ROW
#define ROW(function) {#function, &allocations<&QorTvApiImpl::a_hidl_##function>}
#define HBBTV_ROW(function) ROW(function)
#include "core_rows_applications.inc"
#include "core_rows_contexts.inc"
#include "core_rows_settings.inc"
// Those of the core interface with more to them, whose buffers have a fixed size.
ROW(a_qortvapi_highlevel_argument_test),
ROW(a_qortvapi_hbbtv_exchange_data),
ROW(a_qortvapi_html_agent_exchange_data),
ROW(a_qortvapi_mheg5_get_current_channel),
ROW(a_qortvapi_mheg5_get_pfg_info_len),
ROW(a_qortvapi_mheg5_get_internal_scrn),
ROW(c_hbbtv_stm_get_audio_lang),
ROW(a_qortvapi_ginga_is_enable_screen_mode),
ROW(a_qortvapi_apptv_get_current_channel_svc_text),
ROW(c_svctx_open),
ROW(c_svctx_close),
ROW(c_svctx_get_video_src_resolution),
ROW(c_svctx_select_svc_64),
ROW(c_svctx_set_stream_attr_64),
ROW(c_svctx_set_conn_attr),
ROW(c_svctx_get_audio_info),
ROW(c_scc_comp_close),
ROW(c_scc_vid_set_src_detect_nfy),
ROW(c_pcl_get_wakeup_reason),
ROW(c_pcl_set_wakeup_reason),
ROW(c_pcl_get_power_down_reason),
ROW(c_pcl_set_power_down_reason),
ROW(c_pcl_get_gpio),
ROW(c_pcl_set_gpio),
ROW(c_pcl_set_gpio_monitor_ctrl_ex),
ROW(c_pcl_get_wakeup_irkey),
ROW(a_qortvapi_pcl_get_wakeup_reason),
ROW(c_iom_output),
ROW(a_qortvapi_enter_special_mode),
ROW(a_qortvapi_util_set),
ROW(a_qortvapi_util_get_sys_version),
ROW(a_qortvapi_screenmode_get_crnt_overscan),
ROW(a_qortvapi_volctrl_getMute),
ROW(a_qortvapi_oad_get_scheduleinfo),
ROW(a_qortvapi_oad_get_datainfo),
ROW(a_qortvapi_upgrade_get_firmware_info),
ROW(a_qortvapi_upgrade_get_item_info),
ROW(a_qortvapi_upgrade_set),
ROW(a_qortvapi_parser_get_string),
ROW(a_qortvapi_load_ch_logo),
ROW(a_qortvapi_event_atsc_getEvent_general),
ROW(a_qortvapi_event_atsc_getEvent_general_by_index),
ROW(a_qortvapi_event_atsc_get_rating_map_by_index),
ROW(a_qortvapi_audio_info_set_data),
ROW(a_qortvapi_videoinfo_set_data),
ROW(a_qortvapi_teletext_set_page),
ROW(a_qortvapi_teletext_top_get_group_content),
ROW(a_qortvapi_teletext_top_get_page_content),
#undef ROW
#define ROW(class, function, entry) {#function, &allocations<&class::a_hidl_##function>}
#include "domain_rows_broadcast.inc"
#include "domain_rows_config.inc"
#include "domain_rows_event.inc"
#include "domain_rows_input_source.inc"
#include "domain_rows_multiview.inc"
#include "domain_rows_rating.inc"
#include "domain_rows_scan.inc"
#include "domain_rows_time.inc"
// Those of the domain interfaces with more to them, whose buffers have a fixed size.
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_get_target_regions, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_get_cam_operator_name, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_sync_stop, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_strm_is_orig_scramble, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_change_freq, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_ana_channel_fine_tune, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_get_connect_attr, ""),
ROW(QorTvApiBroadcastImpl, a_qortvapi_broadcast_transfer_external_ui_status, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_sharepinrec_byidx, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_sourcerec_byidx, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_currentsourcename, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_currentsourcename_bypath, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_sourcename_bysourceid, ""),
ROW(QorTvApiInputSrcImpl, a_qortvapi_inputsource_get_userdefname_bysourceid, ""),
ROW(QorTvApiMultiviewImpl, a_qortvapi_multiview_startMainVideo, ""),
ROW(QorTvApiMultiviewImpl, a_qortvapi_multiview_startSubVideo, ""),
ROW(QorTvApiRatingImpl, a_qortvapi_rating_get_us_tv_setting_info, ""),
ROW(QorTvApiRatingImpl, a_qortvapi_rating_set_us_tv_setting_info, ""),
ROW(QorTvApiRatingImpl, a_qortvapi_rating_get_op_vchip_info, ""),
ROW(QorTvApiRatingImpl, a_qortvapi_rating_set_op_vchip_setting_info, ""),
ROW(QorTvApiRatingImpl, a_qortvapi_rating_get_crnt_rating_info, ""),
ROW(QorTvApiScanImpl, a_qortvapi_is_scan_active, ""),
ROW(QorTvApiScanImpl, a_qortvapi_set_atsc_scan_param, ""),
ROW(QorTvApiScanImpl, a_qortvapi_set_isdb_scan_param, ""),
ROW(QorTvApiScanImpl, a_qortvapi_set_ntsc_scan_param, ""),
ROW(QorTvApiConfigImpl, a_qortvapi_config_set_value, ""),
ROW(QorTvApiConfigImpl, a_qortvapi_config_set_value_for_all_elems, ""),
ROW(QorTvApiConfigImpl, a_qortvapi_config_get_str_value, ""),
ROW(QorTvApiConfigImpl, a_qortvapi_config_get_items_enabled, ""),
ROW(QorTvApiEventImpl, a_qortvapi_event_get_rating_map, ""),
ROW(QorTvApiEventImpl, a_qortvapi_event_set_query_parameter, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_get_utc_time, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_utc_sec_to_dtg, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_get_broadcast_time_ex, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_convert, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_get_brdcst_raw_data, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_convert_millis_to_local_time, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_dtg_to_sec, ""),
ROW(QorTvApiTimeImpl, a_qortvapi_time_convert_local_time_to_millis, ""),
ROW(QorTvApiTimeImpl, c_dt_utc_sec_to_loc_dtg, ""),
ROW(QorTvApiTimeImpl, c_dt_get_utc, ""),
ROW(QorTvApiTimeImpl, c_dt_conv_utc_local, ""),
ROW(QorTvApiTimeImpl, c_dt_mjd_to_dtg, ""),
ROW(QorTvApiTimeImpl, c_dt_dtg_to_sec, ""),
ROW(QorTvApiTimeImpl, c_dt_dtg_to_mjd_bcd, ""),
#undef ROW
};

/** A read of a block of bytes about an event. */
struct BlockRow {
    const char* method;
    Return<void> (QorTvApiEventImpl::*call)(uint32_t, uint32_t, uint32_t,
                                            std::function<void(const hidl_vec<uint8_t>&, int32_t)>);
    void (*plug)(switchboard::Switchboard& tv,
                 const std::function<int32_t(uint32_t, uint32_t, uint8_t*, uint32_t)>& read);
};

const BlockRow kBlockRows[] = {
#define ROW(method, function) \
    {"a_hidl_" #method, &QorTvApiEventImpl::a_hidl_##method, \
     [](auto& tv, const auto& read) { tv.template on<&function>(read); }}
#include "event_block_rows.inc"
#undef ROW
};
// clang-format on

class ServiceAllocation : public ServiceTest {
  protected:
    ServiceAllocation() { mTvApiDebug = 0; }
};

TEST_F(ServiceAllocation, isNotNeededByPlainMethods) {
    for (const Row& row : kRows) EXPECT_EQ(row.allocations(), 0) << row.function;
}

TEST_F(ServiceAllocation, isNotNeededByMethodsThatAlwaysLog) {
    // Their lines are kept out of the capture, which allocates.
    __android_log_set_minimum_priority(ANDROID_LOG_ERROR);
    EXPECT_EQ(allocationsOf(&QorTvApiImpl::a_hidl_send_key_and_mouse), 0) << "nobody listens";
    EXPECT_EQ(
            allocationsOf(&QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_op_vchip_setting_info),
            0);
}

TEST_F(ServiceAllocation, isCounted) {
    EXPECT_EQ(allocationsOf(&QorTvApiImpl::a_hidl_a_qortvapi_ginga_getApplicationInfo_ex), 1)
            << "the buffer of a size that the client chose";
    const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
    const int before = gAllocations;
    impl->a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(1, 2, 0, 1, 1,
                                                            [](const auto&, int32_t) {});
    EXPECT_EQ(gAllocations, before + 1) << "the buffer of an array read";
    for (const BlockRow& row : kBlockRows) EXPECT_EQ(allocationsOf(row.call), 1) << row.method;
}

class ServiceShortMemory : public ServiceTest {
  protected:
    ServiceShortMemory() { gMemoryIsShort = true; }
    ~ServiceShortMemory() override { gMemoryIsShort = false; }

    /** An array read answers no bytes and the result, and logs `line` while debugging is on. */
    template <typename Method>
    void check(Method method, const LogLine& line) {
        const sp<QorTvApiChannelListImpl> impl = new QorTvApiChannelListImpl();
        for (const bool debugging : {true, false}) {
            mTvApiDebug = debugging ? 1 : 0;
            log.take();
            int answers = 0;
            (*impl.*method)(1, 2, 5, 10, 8, [&](const hidl_vec<uint8_t>& records, int32_t result) {
                ++answers;
                EXPECT_EQ(records.size(), 0u);
                EXPECT_EQ(result, -6);
            });
            EXPECT_EQ(answers, 1);
            const std::vector<LogLine> lines = log.take();
            EXPECT_EQ(std::count(lines.begin(), lines.end(), line), debugging ? 1 : 0);
        }
    }
};

TEST_F(ServiceShortMemory, readsTransportStreamsWithoutABuffer) {
    tv.on<&a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id>(
            [](uint16_t, uint16_t, uint16_t, uint16_t, uint16_t, TSL_REC_T* records) {
                EXPECT_EQ(records, nullptr);
                return -6;
            });
    check(&QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id,
          debugLine("hh_channellist", "hh_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id",
                    "pt_tsl_rec malloc fail \n"));
}

TEST_F(ServiceShortMemory, readsNetworksWithoutABuffer) {
    tv.on<&a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id>(
            [](uint16_t, uint16_t, uint16_t, uint16_t, uint16_t, NWL_REC_T* records) {
                EXPECT_EQ(records, nullptr);
                return -6;
            });
    check(&QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id,
          debugLine("hh_channellist", "hh_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id",
                    "pt_nwl_rec malloc fail \n"));
}

TEST_F(ServiceShortMemory, doesNotAnswerBlocksOfEvents) {
    const sp<QorTvApiEventImpl> impl = new QorTvApiEventImpl();
    for (const BlockRow& row : kBlockRows) {
        SCOPED_TRACE(row.method);
        for (const uint8_t debugging : {0, 1}) {
            mTvApiDebug = debugging;
            log.take();
            switchboard::Switchboard::startRecording();
            (*impl.*row.call)(1, 2, 3, [](const auto&...) { ADD_FAILURE() << "an answer"; });
            EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());
            EXPECT_EQ(log.take(),
                      (std::vector<LogLine>{debugLine("QorTvApiEventImpl(service)", row.method,
                                                      "allocte memory fail !!!!\n")}));
        }
    }
}

/** The reads whose buffers the client sizes and nobody zeroes. */
class ServiceUninitialisedRead : public ServiceTest {
  protected:
    const sp<QorTvApiImpl> impl = new QorTvApiImpl();
};

TEST_F(ServiceUninitialisedRead, handsOverWhatMemoryHeld) {
    const std::vector<uint8_t> expected = {1, 2, kLeftBehind, kLeftBehind};
    int answers = 0;
    const auto check = [&](const hidl_vec<uint8_t>& bytes, int32_t) {
        ++answers;
        EXPECT_EQ(std::vector<uint8_t>(bytes), expected);
    };
    const auto write = [&](void* data) {
        memcpy(data, expected.data(), 2);
        return 0;
    };
    tv.on<&c_svctx_get_conn_attr>(
            [&](uint32_t, uint32_t, uint32_t, void* data) { return write(data); });
    impl->a_hidl_c_svctx_get_conn_attr(1, 2, 3, 4, check);
    tv.on<&c_svctx_generic_get_info>(
            [&](uint32_t, uint32_t, uint32_t, void* data, uint32_t) { return write(data); });
    impl->a_hidl_c_svctx_generic_get_info(1, 2, 3, 4, check);
    EXPECT_EQ(answers, 2);
}

TEST_F(ServiceUninitialisedRead, handsOverWhatMemoryHeldBehindWhatIsKnownOfAnEvent) {
    const sp<QorTvApiEventImpl> events = new QorTvApiEventImpl();
    const std::vector<uint8_t> expected = {1, 2, kLeftBehind, kLeftBehind};
    for (const BlockRow& row : kBlockRows) {
        row.plug(tv, [&](uint32_t, uint32_t, uint8_t* block, uint32_t) {
            memcpy(block, expected.data(), 2);
            return 0;
        });
        int answers = 0;
        (*events.*row.call)(1, 2, 4, [&](const hidl_vec<uint8_t>& block, int32_t) {
            ++answers;
            EXPECT_EQ(std::vector<uint8_t>(block), expected) << row.method;
        });
        EXPECT_EQ(answers, 1) << row.method;
    }
}

using ServiceUninitialisedReadDeathTest = ServiceUninitialisedRead;

TEST_F(ServiceUninitialisedReadDeathTest, endsTheProcessWhereMemoryIsShort) {
    const auto ignore = [](const auto&...) {};
    const auto whereMemoryIsShort = [](const auto& request) {
        gMemoryIsShort = true;
        request();
    };
    EXPECT_DEATH(
            whereMemoryIsShort([&] { impl->a_hidl_c_svctx_get_conn_attr(1, 2, 3, 16, ignore); }),
            "hh_c_svctx_get_conn_attr: no memory for 16 elements of 1 bytes");
    EXPECT_DEATH(
            whereMemoryIsShort([&] { impl->a_hidl_c_svctx_generic_get_info(1, 2, 3, 16, ignore); }),
            "hh_c_svctx_generic_get_info: no memory for 16 elements of 1 bytes");
}

/** A client that does nothing at all. */
class SilentClient : public RecordingClient {
  public:
    Return<void> notifyIom(uint64_t, uint64_t, const hidl_vec<uint8_t>&) override {
        return Return<void>();
    }
};

TEST_F(ServiceAllocation, isNotNeededByTheFanOut) {
    QorTvApiImpl::getCallbackHandlers()[0] = new SilentClient();
    const int before = gAllocations;
    _iom_nfy_fct(nullptr, 0, nullptr, 0);
    EXPECT_EQ(gAllocations, before);
}

}  // namespace
