/** The requests to the MHEG-5 engine, each with a log line of its own. */
#include <cstring>
#include <functional>

#include "middleware/mheg5.h"
#include "support/core_fixture.h"
#include "support/forwarding.h"

namespace {

class ServiceCoreMheg5 : public CoreTest {
  protected:
    /** `call` writes `text` while debugging is on, and else nothing. */
    void expectLine(const std::string& function, const std::string& text,
                    const std::function<void()>& call) {
        call();
        EXPECT_EQ(log.take(),
                  std::vector<LogLine>{debugLine("hh_qortvapi_mheg5", "hh_" + function, text)});
        mTvApiDebug = 0;
        call();
        EXPECT_TRUE(log.take().empty());
        mTvApiDebug = 1;
    }

    void expectForwarding(const forwarding::Bridge& bridge) {
        forwarding::check(bridge, impl.get());
        log.take();
    }
};

#define EXPECT_FORWARDING(function)                                                        \
    expectForwarding(                                                                      \
            forwarding::bridge<QorTvApiImpl, &QorTvApiImpl::a_hidl_##function, &function>( \
                    #function))

TEST_F(ServiceCoreMheg5, passArgumentsAndOutputsOn) {
    EXPECT_FORWARDING(a_qortvapi_mheg5_get_current_channel);
    EXPECT_FORWARDING(a_qortvapi_mheg5_get_pfg_info_len);
    EXPECT_FORWARDING(a_qortvapi_mheg5_get_internal_scrn);
    EXPECT_FORWARDING(a_qortvapi_mheg5_set_pfg_result);
    EXPECT_FORWARDING(a_qortvapi_mheg5_set_hbbtv_status);
    EXPECT_FORWARDING(a_qortvapi_mheg5_enabled);
    EXPECT_FORWARDING(a_qortvapi_mheg5_disabled);
    EXPECT_FORWARDING(a_qortvapi_mheg5_set_mheg5_status);
}

TEST_F(ServiceCoreMheg5, answersTheRecordsOfTheCurrentChannelWhole) {
    tv.on<&a_qortvapi_mheg5_get_current_channel>(
            [](uint16_t* svl_id, SVL_REC_T* svl_rec, TSL_REC_T* tsl_rec) {
                *svl_id = 0xfedc;
                reinterpret_cast<uint8_t*>(svl_rec)[395] = 0x12;
                reinterpret_cast<uint8_t*>(tsl_rec)[627] = 0x34;
                return 5;
            });
    expectLine("a_qortvapi_mheg5_get_current_channel", "{MHEG5} ui2_svl_id:65244, i4_ret:5\n", [&] {
        impl->a_hidl_a_qortvapi_mheg5_get_current_channel(
                [](uint16_t svl_id, const hidl_vec<uint8_t>& svl_rec,
                   const hidl_vec<uint8_t>& tsl_rec, int32_t result) {
                    EXPECT_EQ(svl_id, 0xfedc);
                    ASSERT_EQ(svl_rec.size(), 396u);
                    EXPECT_EQ(svl_rec[394], 0);
                    EXPECT_EQ(svl_rec[395], 0x12);
                    ASSERT_EQ(tsl_rec.size(), 628u);
                    EXPECT_EQ(tsl_rec[626], 0);
                    EXPECT_EQ(tsl_rec[627], 0x34);
                    EXPECT_EQ(result, 5);
                });
    });
}

TEST_F(ServiceCoreMheg5, answersTheParentalTextUpToItsEnd) {
    const std::string full(40, 'x');
    std::string written;
    tv.on<&a_qortvapi_mheg5_get_pfg_info>([&](char* info, uint32_t* length, uint8_t* show) {
        EXPECT_EQ(*length, 40u);
        EXPECT_EQ(std::string(info, 41), std::string(41, '\0'));
        EXPECT_EQ(*show, 0);
        memcpy(info, written.data(), written.size());
        *length = static_cast<uint32_t>(written.size());
        *show = 0x80;
        return 3;
    });
    for (const auto& [text, expected] : {std::pair<std::string, std::string>{full, full},
                                         {std::string("ab\0cd", 5), "ab"},
                                         {"", ""}}) {
        written = text;
        expectLine("a_qortvapi_mheg5_get_pfg_info",
                   "{MHEG5} ui4_len:" + std::to_string(text.size()) + ", b_show:1, i4_ret:3\n",
                   [&, wanted = expected] {
                       int answers = 0;
                       impl->a_hidl_a_qortvapi_mheg5_get_pfg_info(
                               40, [&](const hidl_string& info, bool show, int32_t result) {
                                   ++answers;
                                   EXPECT_EQ(std::string(info.c_str(), info.size()), wanted);
                                   EXPECT_TRUE(show);
                                   EXPECT_EQ(result, 3);
                               });
                       EXPECT_EQ(answers, 1);
                   });
    }
}

TEST_F(ServiceCoreMheg5, answersAnEmptyParentalText) {
    tv.on<&a_qortvapi_mheg5_get_pfg_info>([](char* info, uint32_t* length, uint8_t*) {
        EXPECT_EQ(*length, 0u);
        EXPECT_EQ(*info, '\0');
        return -9;
    });
    expectLine("a_qortvapi_mheg5_get_pfg_info", "{MHEG5} ui4_len:0, b_show:0, i4_ret:-9\n", [&] {
        impl->a_hidl_a_qortvapi_mheg5_get_pfg_info(
                0, [](const hidl_string& info, bool show, int32_t result) {
                    EXPECT_EQ(info.size(), 0u);
                    EXPECT_FALSE(show);
                    EXPECT_EQ(result, -9);
                });
    });
}

using ServiceCoreMheg5DeathTest = ServiceCoreMheg5;

TEST_F(ServiceCoreMheg5DeathTest, noMemoryForTheParentalTextEndsTheProcess) {
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_mheg5_get_pfg_info(UINT32_MAX, [](const auto&...) {}),
                 "hh_a_qortvapi_mheg5_get_pfg_info: no memory for 4294967296 elements of 1 bytes");
}

TEST_F(ServiceCoreMheg5, answersWhetherTheScreenIsItsOwn) {
    bool internal = false;
    tv.on<&a_qortvapi_mheg5_get_internal_scrn>([&](uint8_t* output) {
        EXPECT_EQ(*output, 0);
        *output = internal ? 0x80 : 0;
        return internal ? 1 : -1;
    });
    for (const bool value : {false, true}) {
        internal = value;
        expectLine("a_qortvapi_mheg5_get_internal_scrn",
                   value ? "{MHEG5} b_internal_scrn:1, i4_ret:1\n"
                         : "{MHEG5} b_internal_scrn:0, i4_ret:-1\n",
                   [&] {
                       int answers = 0;
                       impl->a_hidl_a_qortvapi_mheg5_get_internal_scrn(
                               [&](bool answered, int32_t result) {
                                   ++answers;
                                   EXPECT_EQ(answered, internal);
                                   EXPECT_EQ(result, internal ? 1 : -1);
                               });
                       EXPECT_EQ(answers, 1);
                   });
    }
}

TEST_F(ServiceCoreMheg5, logWhatTheyPassOn) {
    tv.on<&a_qortvapi_mheg5_get_pfg_info_len>([](uint32_t* length) {
        *length = 17;
        return 6;
    });
    tv.on<&a_qortvapi_mheg5_set_pfg_result>([](bool) { return -4; });
    tv.on<&a_qortvapi_mheg5_set_hbbtv_status>([](uint32_t, bool) { return -5; });
    expectLine("a_qortvapi_mheg5_get_pfg_info_len", "{MHEG5} ui4_str_len:17, i4_ret:6\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_get_pfg_info_len([](const auto&...) {}); });
    expectLine("a_qortvapi_mheg5_set_pfg_result", "{MHEG5} b_right:1, i4_ret:-4\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_set_pfg_result(true); });
    expectLine("a_qortvapi_mheg5_set_hbbtv_status", "{MHEG5} b_success:1, i4_ret:-5\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_set_hbbtv_status(7, true); });
    expectLine("a_qortvapi_mheg5_enabled", "{MHEG5} enable mheg5.\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_enabled(); });
    expectLine("a_qortvapi_mheg5_disabled", "{MHEG5} disable mheg5.\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_disabled(); });
    expectLine("a_qortvapi_mheg5_set_mheg5_status",
               "{MHEG5} updateType:-1, argv1:2, argv2:-3, argv3:4.\n",
               [&] { impl->a_hidl_a_qortvapi_mheg5_set_mheg5_status(-1, 2, -3, 4); });
}

}  // namespace
