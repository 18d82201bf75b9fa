/** Log lines that contain answers: which are written before the result callback, which after it. */
#include <functional>
#include <ostream>

#include "middleware/ewspa.h"
#include "support/core_fixture.h"

namespace {

struct OrderRow {
    const char* function;
    std::vector<std::string> before;
    std::vector<std::string> behind;
    std::function<void(QorTvApiImpl&, const LineParter&)> call;
};

void PrintTo(const OrderRow& row, std::ostream* out) {
    *out << row.function;
}

// clang-format off
const OrderRow kRows[] = {
    {"a_qortvapi_highlevel_argument_test", {"7 8"}, {},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_highlevel_argument_test(7, 8, {}, answered); }},
    {"a_qortvapi_apptv_get_current_channel_svc_text", {"file_path:(null),i4_len:7,i4_ret = 0\n"}, {},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_apptv_get_current_channel_svc_text(7, answered); }},
    {"a_qortvapi_mheg5_get_current_channel", {"{MHEG5} ui2_svl_id:0, i4_ret:0\n"}, {},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_mheg5_get_current_channel(answered); }},
    {"a_qortvapi_mheg5_get_pfg_info", {"{MHEG5} ui4_len:7, b_show:0, i4_ret:0\n"}, {},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_mheg5_get_pfg_info(7, answered); }},
    {"a_qortvapi_mheg5_get_pfg_info_len", {}, {"{MHEG5} ui4_str_len:0, i4_ret:0\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_mheg5_get_pfg_info_len(answered); }},
    {"a_qortvapi_mheg5_get_internal_scrn", {}, {"{MHEG5} b_internal_scrn:0, i4_ret:0\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_mheg5_get_internal_scrn(answered); }},
    {"a_qortvapi_mds_getValue", {"Enter a_hidl_a_qortvapi_mds_getValue ,s_msg_data :m"}, {"s_getValue = , i4_ret = 0\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_mds_getValue("m", 7, answered); }},
    {"a_qortvapi_load_ch_logo", {"a_hidl_a_qortvapi_load_ch_logo", "onid:7,svcid:8,freq:9\n"}, {"file_path:,i4_ret = 0\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_load_ch_logo(7, 8, 9, answered); }},
    {"a_qortvapi_ewspa_set", {"a_hidl_a_qortvapi_ewspa_set", "a_qortvapi_ewspa_set fail, i4_ret=-3, 1\n"}, {"1 -3\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_ewspa_set(7, 8, {9}, answered); }},
    {"a_qortvapi_ewspa_get", {"a_hidl_a_qortvapi_ewspa_get", "a_qortvapi_ewspa_get fail, i4_ret=-3, 1\n"}, {"1 -3\n"},
     [](auto& impl, const auto& answered) { impl.a_hidl_a_qortvapi_ewspa_get(7, 8, {9}, answered); }},
};
// clang-format on

class ServiceCoreLineOrder : public CoreTest, public testing::WithParamInterface<OrderRow> {};

TEST_P(ServiceCoreLineOrder, isKept) {
    tv.on<&a_qortvapi_ewspa_set>([](auto...) { return -3; });
    tv.on<&a_qortvapi_ewspa_get>([](auto...) { return -3; });
    std::vector<std::vector<std::string>> texts;
    for (const Lines& part :
         linesAroundAnswer([&](const auto& answered) { GetParam().call(*impl, answered); })) {
        texts.emplace_back();
        for (const LogLine& line : part) texts.back().push_back(line.text);
    }
    EXPECT_EQ(texts, (std::vector{GetParam().before, GetParam().behind}));
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreLineOrder, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
