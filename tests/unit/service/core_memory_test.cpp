/** The core methods where there is no memory for a buffer of a size that the client chose. */
#include <functional>
#include <ostream>

#include "middleware/util.h"
#include "support/core_fixture.h"
#include "support/short_memory.h"

namespace {

using Bytes = std::vector<uint8_t>;
using switchboard::Switchboard;

const auto kIgnore = [](const auto&...) {};
constexpr auto kItem = HIDL_QORTVAPI_UPGRADE_SET_TYPE_T::QORTVAPI_UPGRADE_SET_TYPE_ITEM;

class ServiceCoreShortMemory : public CoreTest {
  protected:
    /** With no more than `granted` arrays, `request` writes `line` whether debugging is on or not,
     * and reaches no middleware. */
    void expectLine(const LogLine& line, int granted, const std::function<void()>& request) {
        for (const uint8_t debugging : {1, 0}) {
            mTvApiDebug = debugging;
            log.take();
            Switchboard::startRecording();
            {
                const ShortMemory memory(granted);
                request();
            }
            EXPECT_TRUE(Switchboard::stopRecording().empty());
            const std::vector<LogLine> lines = log.take();
            ASSERT_EQ(lines.size(), debugging + 1u) << "the entry line only while debugging is on";
            EXPECT_EQ(lines.back(), line);
        }
    }
};

TEST_F(ServiceCoreShortMemory, aUtilityAnswersTheSizeAsItWasSent) {
    using Gets = Answers<uint64_t, Bytes, int32_t>;
    expectLine(debugLine("hh_qortvapi_util", "hh_a_qortvapi_util_get", "Alloc memory fail!!!!\n"),
               0, [&] {
                   EXPECT_EQ(Gets::of([&](const auto& callback) {
                                 impl->a_hidl_a_qortvapi_util_get("name", 1, Bytes{1, 2},
                                                                  0x700000005, callback);
                             }),
                             (Gets::All{{0x700000005, {}, -1}}));
               });
}

TEST_F(ServiceCoreShortMemory, theTunerDiagnosisNeedsBothBuffers) {
    using Diagnoses = Answers<int32_t, Bytes, Bytes>;
    const auto query = [&](uint64_t size) {
        EXPECT_EQ(Diagnoses::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_util_tuner_fac_query_diag(true, size, callback);
                  }),
                  (Diagnoses::All{{-1, {}, {}}}));
    };
    const LogLine line = debugLine("hh_qortvapi_util", "hh_a_qortvapi_util_tuner_fac_query_diag",
                                   "Alloc memory fail!!!!\n");
    expectLine(line, 0, [&] { query(64); });
    expectLine(line, 1, [&] { query(64); });
    // More than any vector of the interface can hold.
    expectLine(line, 2, [&] { query(0x100000020); });
    expectLine(line, 2, [&] { query(0xffffffffffffffe0); });
}

TEST_F(ServiceCoreShortMemory, theStatusOfEventTablesIsNotAnswered) {
    int answers = 0;
    expectLine(debugLine("QorTvApiImpl(service)", "a_hidl_a_qortvapi_event_atsc_check_EIT_status",
                         "peit_group_status_array Alloc memory fail!!!!\n"),
               0, [&] {
                   impl->a_hidl_a_qortvapi_event_atsc_check_EIT_status(
                           1, 2, [&](const auto&...) { ++answers; });
               });
    EXPECT_EQ(answers, 0);
}

TEST_F(ServiceCoreShortMemory, isAskedForWhere32BitsCanCountItWithAByteBehindIt) {
    const ShortMemory memory(0);
    for (const auto& [size, asked_for] : {std::pair{0xfffffffe, 1}, {0xffffffff, 0}}) {
        const int before = arraysAskedFor();
        impl->a_hidl_a_qortvapi_util_get("name", 1, {}, size, kIgnore);
        EXPECT_EQ(arraysAskedFor() - before, asked_for) << size;
    }
}

/** A method that cannot do without its array, of `count` elements of `size` bytes. */
struct RequiredRow {
    const char* method;  // the one that the last words name
    int64_t count;
    size_t size;
    std::function<void(QorTvApiImpl&)> call;
};

void PrintTo(const RequiredRow& row, std::ostream* out) {
    *out << row.method;
}

// clang-format off
const RequiredRow kRequiredRows[] = {
    {"a_hidl_a_qortvapi_screenmode_get_all_screen_mode", 3, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_screenmode_get_all_screen_mode(3, kIgnore); }},
    {"a_hidl_a_qortvapi_av_mode_get_all_picture_mode", 3, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_picture_mode(3, kIgnore); }},
    {"a_hidl_a_qortvapi_av_mode_get_all_sound_effect", 3, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_sound_effect(3, kIgnore); }},
    {"a_hidl_a_qortvapi_banner_get_item_content", 4, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_banner_get_item_content(1, 2, 3, kIgnore); }},
    {"a_hidl_a_qortvapi_get_base_config_file_path", 4, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_get_base_config_file_path(3, kIgnore); }},
    {"a_hidl_a_qortvapi_parser_get_string_config_data", 4, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_parser_get_string_config_data("f", "k", 3, kIgnore); }},
    {"a_hidl_a_qortvapi_subtitle_get_loop", 2, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_subtitle_get_loop({1, 2}, kIgnore); }},
    {"a_hidl_a_qortvapi_event_atsc_load_events", 3, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_load_events(1, 2, 3, kIgnore); }},
    {"a_hidl_a_qortvapi_event_atsc_get_details_info", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_details_info(1, 3, kIgnore); }},
    {"a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index", 4, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index(1, 2, 3, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_current_lanuage", 4, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_current_lanuage(3, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_available_record", 3, 44, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_available_record(3, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_inputsource_available_record", 3, 44, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(3, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_data", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_data(1, 3, {}, kIgnore); }},
    {"a_hidl_a_qortvapi_videoinfo_get_data", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_videoinfo_get_data(1, 3, {}, kIgnore); }},
    {"a_hidl_a_qortvapi_mds_getValue", 5120, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_mds_getValue("m", 1, kIgnore); }},
    {"hh_a_qortvapi_ewspa_set", 3, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_ewspa_set(1, 2, {1, 2, 3}, kIgnore); }},
    {"hh_a_qortvapi_ewspa_get", 3, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_ewspa_get(1, 2, {1, 2, 3}, kIgnore); }},
    {"hh_c_svctx_get_64", 3, 1, [](auto& impl) { impl.a_hidl_c_svctx_get_64(1, 2, {1, 2, 3}, kIgnore); }},
    {"hh_c_svctx_generic_set_info", 3, 1, [](auto& impl) { impl.a_hidl_c_svctx_generic_set_info(1, 2, 3, {1, 2, 3}, kIgnore); }},
    // Fewer were sent than the client says.
    {"a_hidl_a_qortvapi_util_set", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_util_set("n", 1, {1, 2}, 3); }},
    {"a_hidl_a_qortvapi_upgrade_set", 3, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_upgrade_set(kItem, {1, 2}, 3, {1, 2, 3}); }},
    {"a_hidl_a_qortvapi_audio_info_set_data", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_set_data(1, {1, 2}, 3); }},
    {"a_hidl_a_qortvapi_videoinfo_set_data", 3, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_videoinfo_set_data(1, {1, 2}, 3); }},
};

/** Sizes that are negative or that, with the byte behind the elements, do not fit into 32 bits. */
const RequiredRow kImpossibleRows[] = {
    {"a_hidl_a_qortvapi_screenmode_get_all_screen_mode", 0x80000000, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_screenmode_get_all_screen_mode(0x80000000, kIgnore); }},
    {"a_hidl_a_qortvapi_av_mode_get_all_picture_mode", 0x80000000, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_picture_mode(0x80000000, kIgnore); }},
    {"a_hidl_a_qortvapi_av_mode_get_all_sound_effect", 0x80000000, 2, [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_sound_effect(0x80000000, kIgnore); }},
    {"a_hidl_a_qortvapi_event_atsc_load_events", 0x40000000, 4, [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_load_events(1, 2, 0x40000000, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_available_record", 0x10000000, 44, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_available_record(0x10000000, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_inputsource_available_record", 0x10000000, 44, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(0x10000000, kIgnore); }},
    {"a_hidl_a_qortvapi_event_atsc_get_details_info", 0xffffffff, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_details_info(1, 0xffffffff, kIgnore); }},
    {"a_hidl_a_qortvapi_audio_info_get_current_lanuage", 0xffffffff, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_current_lanuage(0xfffffffe, kIgnore); }},
    {"a_hidl_a_qortvapi_banner_get_item_content", 0x100000000, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_banner_get_item_content(1, 2, 0xffffffff, kIgnore); }},
    {"a_hidl_a_qortvapi_get_base_config_file_path", -1, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_get_base_config_file_path(-2, kIgnore); }},
    {"a_hidl_a_qortvapi_parser_get_string_config_data", -32767, 1, [](auto& impl) { impl.a_hidl_a_qortvapi_parser_get_string_config_data("f", "k", -32768, kIgnore); }},
};
// clang-format on

class ServiceCoreMemoryDeathTest : public CoreTest,
                                   public testing::WithParamInterface<RequiredRow> {
  protected:
    static std::string lastWords(const RequiredRow& row) {
        return std::string(row.method) + ": no memory for " + std::to_string(row.count) +
               " elements of " + std::to_string(row.size) + " bytes";
    }
};

using ServiceCoreRequiredMemoryDeathTest = ServiceCoreMemoryDeathTest;
using ServiceCoreImpossibleSizeDeathTest = ServiceCoreMemoryDeathTest;

TEST_P(ServiceCoreRequiredMemoryDeathTest, endsTheProcess) {
    const RequiredRow& row = GetParam();
    const int before = arraysAskedFor();
    row.call(*impl);  // with memory all is well
    EXPECT_EQ(arraysAskedFor(), before + 1);
    const ShortMemory memory(0);
    EXPECT_DEATH(row.call(*impl), lastWords(row));
}

TEST_P(ServiceCoreImpossibleSizeDeathTest, endsTheProcess) {
    EXPECT_DEATH(GetParam().call(*impl), lastWords(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreRequiredMemoryDeathTest, testing::ValuesIn(kRequiredRows),
                         [](const auto& row) { return std::string(row.param.method); });
INSTANTIATE_TEST_SUITE_P(, ServiceCoreImpossibleSizeDeathTest, testing::ValuesIn(kImpossibleRows),
                         [](const auto& row) { return std::string(row.param.method); });

}  // namespace
