/** The entry lines of core methods that are no plain bridges. */
#include <functional>
#include <ostream>

#include "support/core_fixture.h"

namespace {

struct EntryRow {
    const char* function;
    std::function<void(QorTvApiImpl&)> call;
};

void PrintTo(const EntryRow& row, std::ostream* out) {
    *out << row.function;
}

const auto kIgnore = [](const auto&...) {};

// clang-format off
const EntryRow kRows[] = {
    {"a_qortvapi_enter_special_mode", [](auto& impl) { impl.a_hidl_a_qortvapi_enter_special_mode(1); }},
    {"a_qortvapi_quit_special_mode", [](auto& impl) { impl.a_hidl_a_qortvapi_quit_special_mode(1); }},
    {"a_qortvapi_query_special_mode_status", [](auto& impl) { impl.a_hidl_a_qortvapi_query_special_mode_status(1); }},
    {"a_rpc_close_client", [](auto& impl) { impl.a_hidl_a_rpc_close_client(); }},
    {"a_qortvapi_util_set", [](auto& impl) { impl.a_hidl_a_qortvapi_util_set("n", 1, {}, 0); }},
    {"a_qortvapi_util_get", [](auto& impl) { impl.a_hidl_a_qortvapi_util_get("n", 1, {}, 4, kIgnore); }},
    {"a_qortvapi_util_get_sys_version", [](auto& impl) { impl.a_hidl_a_qortvapi_util_get_sys_version(1, kIgnore); }},
    {"a_qortvapi_util_tuner_fac_query_diag", [](auto& impl) { impl.a_hidl_a_qortvapi_util_tuner_fac_query_diag(true, 32, kIgnore); }},
    {"a_qortvapi_screenmode_get_all_screen_mode", [](auto& impl) { impl.a_hidl_a_qortvapi_screenmode_get_all_screen_mode(1, kIgnore); }},
    {"a_qortvapi_screenmode_get_crnt_overscan", [](auto& impl) { impl.a_hidl_a_qortvapi_screenmode_get_crnt_overscan(kIgnore); }},
    {"a_qortvapi_av_mode_get_all_picture_mode", [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_picture_mode(1, kIgnore); }},
    {"a_qortvapi_av_mode_get_all_sound_effect", [](auto& impl) { impl.a_hidl_a_qortvapi_av_mode_get_all_sound_effect(1, kIgnore); }},
    {"a_qortvapi_banner_get_item_content", [](auto& impl) { impl.a_hidl_a_qortvapi_banner_get_item_content(1, 2, 3, kIgnore); }},
    {"a_qortvapi_volctrl_getMute", [](auto& impl) { impl.a_hidl_a_qortvapi_volctrl_getMute(); }},
    {"a_qortvapi_oad_get_scheduleinfo", [](auto& impl) { impl.a_hidl_a_qortvapi_oad_get_scheduleinfo(kIgnore); }},
    {"a_qortvapi_oad_get_datainfo", [](auto& impl) { impl.a_hidl_a_qortvapi_oad_get_datainfo(1, kIgnore); }},
    {"a_qortvapi_upgrade_get_firmware_info", [](auto& impl) { impl.a_hidl_a_qortvapi_upgrade_get_firmware_info(kIgnore); }},
    {"a_qortvapi_upgrade_get_item_info", [](auto& impl) { impl.a_hidl_a_qortvapi_upgrade_get_item_info(1, kIgnore); }},
    {"a_qortvapi_upgrade_set", [](auto& impl) { impl.a_hidl_a_qortvapi_upgrade_set(HIDL_QORTVAPI_UPGRADE_SET_TYPE_T::QORTVAPI_UPGRADE_SET_TYPE_ITEM, {}, 0, {}); }},
    {"a_qortvapi_get_base_config_file_path", [](auto& impl) { impl.a_hidl_a_qortvapi_get_base_config_file_path(1, kIgnore); }},
    {"a_qortvapi_parser_get_string", [](auto& impl) { impl.a_hidl_a_qortvapi_parser_get_string("k", kIgnore); }},
    {"tvapi_set_property", [](auto& impl) { impl.a_hidl_tvapi_set_property("k", "v"); }},
    {"a_qortvapi_subtitle_get_loop", [](auto& impl) { impl.a_hidl_a_qortvapi_subtitle_get_loop({}, kIgnore); }},
    {"a_qortvapi_event_atsc_load_events", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_load_events(1, 2, 3, kIgnore); }},
    {"a_qortvapi_event_atsc_get_details_info", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_details_info(1, 2, kIgnore); }},
    {"a_qortvapi_event_atsc_get_detail_info_by_index", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index(1, 2, 3, kIgnore); }},
    {"a_qortvapi_event_atsc_check_EIT_status", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_check_EIT_status(1, 2, kIgnore); }},
    {"a_qortvapi_event_atsc_getEvent_general", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_getEvent_general(1, kIgnore); }},
    {"a_qortvapi_event_atsc_getEvent_general_by_index", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index(1, 2, kIgnore); }},
    {"a_qortvapi_event_atsc_get_rating_map_by_index", [](auto& impl) { impl.a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index(1, 2, {}, kIgnore); }},
    {"a_qortvapi_audio_info_get_current_lanuage", [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_current_lanuage(1, kIgnore); }},
    {"a_qortvapi_audio_info_get_available_record", [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_available_record(1, kIgnore); }},
    {"a_qortvapi_audio_info_get_inputsource_available_record", [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(0, kIgnore); }},
    {"a_qortvapi_audio_info_set_data", [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_set_data(1, {}, 0); }},
    {"a_qortvapi_audio_info_get_data", [](auto& impl) { impl.a_hidl_a_qortvapi_audio_info_get_data(1, 2, {}, kIgnore); }},
    {"a_qortvapi_videoinfo_set_data", [](auto& impl) { impl.a_hidl_a_qortvapi_videoinfo_set_data(1, {}, 0); }},
    {"a_qortvapi_videoinfo_get_data", [](auto& impl) { impl.a_hidl_a_qortvapi_videoinfo_get_data(1, 2, {}, kIgnore); }},
    {"a_qortvapi_teletext_set_page", [](auto& impl) { impl.a_hidl_a_qortvapi_teletext_set_page({1, 2, 3}); }},
    {"a_qortvapi_teletext_top_get_group_content", [](auto& impl) { impl.a_hidl_a_qortvapi_teletext_top_get_group_content({1, 2, 3}, kIgnore); }},
    {"a_qortvapi_teletext_top_get_page_content", [](auto& impl) { impl.a_hidl_a_qortvapi_teletext_top_get_page_content({1, 2, 3}, kIgnore); }},
};
// clang-format on

class ServiceCoreEntryLine : public CoreTest, public testing::WithParamInterface<EntryRow> {};

TEST_P(ServiceCoreEntryLine, isWrittenWhileDebuggingIsOn) {
    const std::string method = std::string("a_hidl_") + GetParam().function;
    GetParam().call(*impl);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine("QorTvApiImpl(service)", method, method)}));
    mTvApiDebug = 0;
    GetParam().call(*impl);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreEntryLine, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
