/** The core methods of interactive television that are no plain bridges. */
#include <cstring>
#include <functional>

#include "middleware/apptv.h"
#include "middleware/ginga.h"
#include "middleware/hbbtv.h"
#include "middleware/highlevel.h"
#include "support/core_fixture.h"

namespace {

const char* const kTag = "QorTvApiImpl(service)";

class ServiceCoreApplications : public CoreTest {
  protected:
    /** `call` writes `lines`, and with debugging off `always_lines`. */
    void expectLines(const std::vector<LogLine>& lines, const std::vector<LogLine>& always_lines,
                     const std::function<void()>& call) {
        call();
        EXPECT_EQ(log.take(), lines);
        mTvApiDebug = 0;
        call();
        EXPECT_EQ(log.take(), always_lines);
        mTvApiDebug = 1;
    }
    void expectEntryLine(const char* method, const std::function<void()>& call) {
        expectLines({debugLine(kTag, method, method)}, {}, call);
    }
};

TEST_F(ServiceCoreApplications, theArgumentTestReturnsItsThreeWords) {
    tv.on<&a_qortvapi_highlevel_argument_test>(
            [](int32_t arg1, int32_t arg2, QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1* structure) {
                EXPECT_EQ(arg1, -11);
                EXPECT_EQ(arg2, 22);
                EXPECT_EQ(structure->ui4_value1, 0x81818181u);
                EXPECT_EQ(structure->ui4_value2, 0x92929292u);
                EXPECT_EQ(structure->ui4_value3, 0xa3a3a3a3u);
                *structure = {0xb1u, 0xf0000002u, structure->ui4_value3};
                return -3;
            });
    expectLines({debugLine(kTag, "a_hidl_a_qortvapi_highlevel_argument_test", "-11 22")}, {}, [&] {
        const HIDL_QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1 sent{0x81818181u, 0x92929292u, 0xa3a3a3a3u};
        int answers = 0;
        impl->a_hidl_a_qortvapi_highlevel_argument_test(
                -11, 22, sent,
                [&](const HIDL_QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1& left, int32_t result) {
                    ++answers;
                    EXPECT_EQ(left.value1, 0xb1u);
                    EXPECT_EQ(left.value2, 0xf0000002u);
                    EXPECT_EQ(left.value3, 0xa3a3a3a3u);
                    EXPECT_EQ(result, -3);
                });
        EXPECT_EQ(answers, 1);
    });
}

TEST_F(ServiceCoreApplications, theGenericFunctionReturnsTheClientsBytes) {
    const hidl_vec<uint8_t> sent{1, 2, 3, 4, 5};
    tv.on<&a_qortvapi_highlevel_generic_function_ex>(
            [&](uint32_t id, uint32_t* param1, uint32_t* param2, uint8_t* data, uint32_t length) {
                EXPECT_EQ(id, 0x81818181u);
                EXPECT_EQ(*param1, 0x92929292u);
                EXPECT_EQ(*param2, 0xa3a3a3a3u);
                EXPECT_EQ(length, 5u);
                EXPECT_EQ(memcmp(data, sent.data(), 5), 0);
                *param1 = 0xf0000001u;
                *param2 = 0xf0000002u;
                memset(data, 0xee, length);
                return 4;
            });
    expectEntryLine("a_hidl_a_qortvapi_highlevel_generic_function_ex", [&] {
        int answers = 0;
        impl->a_hidl_a_qortvapi_highlevel_generic_function_ex(
                0x81818181u, 0x92929292u, 0xa3a3a3a3u, sent,
                [&](uint32_t param1, uint32_t param2, const hidl_vec<uint8_t>& data,
                    int32_t result) {
                    ++answers;
                    EXPECT_EQ(param1, 0xf0000001u);
                    EXPECT_EQ(param2, 0xf0000002u);
                    EXPECT_EQ(data, (hidl_vec<uint8_t>{1, 2, 3, 4, 5}));
                    EXPECT_EQ(result, 4);
                });
        EXPECT_EQ(answers, 1);
    });
}

TEST_F(ServiceCoreApplications, theGenericFunctionPassesParametersThroughAFailure) {
    tv.on<&a_qortvapi_highlevel_generic_function_ex>(
            [](uint32_t, uint32_t*, uint32_t*, uint8_t*, uint32_t length) {
                EXPECT_EQ(length, 0u);
                return -6;
            });
    int answers = 0;
    impl->a_hidl_a_qortvapi_highlevel_generic_function_ex(
            1, 2, 3, {},
            [&](uint32_t param1, uint32_t param2, const hidl_vec<uint8_t>& data, int32_t result) {
                ++answers;
                EXPECT_EQ(param1, 2u);
                EXPECT_EQ(param2, 3u);
                EXPECT_EQ(data.size(), 0u);
                EXPECT_EQ(result, -6);
            });
    EXPECT_EQ(answers, 1);
}

/** Methods without a function of the middleware: they write a log line and do not answer. */
class ServiceCoreStub : public ServiceCoreApplications {
  protected:
    ServiceCoreStub() { switchboard::Switchboard::startRecording(); }
    ~ServiceCoreStub() override { EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty()); }

    void expectLine(const char* tag, const char* handler, const char* text,
                    const std::function<void()>& call) {
        const std::vector<LogLine> lines{debugLine(tag, handler, text)};
        expectLines(lines, lines, call);
    }
    void expectSuccess(const char* handler, const char* text,
                       const std::function<Return<int32_t>()>& call) {
        expectLine("hh_hbbtv", handler, text, [&] { EXPECT_EQ(int32_t{call()}, 0); });
    }

    static void noAnswer() { ADD_FAILURE() << "an answer"; }
};

TEST_F(ServiceCoreStub, theSecondBrowsersSettersSucceed) {
    expectSuccess("hh_c_opera_hbbtv_stm_set_audio", "65535, not implemented",
                  [&] { return impl->a_hidl_c_opera_hbbtv_stm_set_audio(0xffff); });
    expectSuccess("hh_c_opera_hbbtv_set_default_subtitle_lang", "ger -2, not implemented",
                  [&] { return impl->a_hidl_c_opera_hbbtv_set_default_subtitle_lang("ger", -2); });
    expectSuccess("hh_c_opera_hbbtv_set_default_audio_lang", "fra, not implemented",
                  [&] { return impl->a_hidl_c_opera_hbbtv_set_default_audio_lang("fra"); });
    expectSuccess("hh_c_opera_hbbtv_set_audio_desc", "1, not implemented",
                  [&] { return impl->a_hidl_c_opera_hbbtv_set_audio_desc(true); });
}

TEST_F(ServiceCoreStub, theSecondBrowsersQuestionsGetNoAnswer) {
    expectLine("hh_hbbtv", "hh_c_opera_hbbtv_stm_get_audio", "not implemented", [&] {
        impl->a_hidl_c_opera_hbbtv_stm_get_audio([](const auto&...) { noAnswer(); });
    });
    expectLine("hh_hbbtv", "hh_c_opera_hbbtv_stm_get_audio_lang", "not implemented", [&] {
        impl->a_hidl_c_opera_hbbtv_stm_get_audio_lang(3, [](const auto&...) { noAnswer(); });
    });
    expectLine("hh_hbbtv", "hh_c_opera_hbbtv_stm_get_audio_num", "not implemented", [&] {
        impl->a_hidl_c_opera_hbbtv_stm_get_audio_num([](const auto&...) { noAnswer(); });
    });
}

TEST_F(ServiceCoreStub, advertisingInsertionGetsNoAnswer) {
    expectLine("hh_qortvapi_dai", "hh_c_dai_tvapi_exchange_data", "not implemented", [&] {
        impl->a_hidl_c_dai_tvapi_exchange_data({1, 2, 3}, [](const auto&...) { noAnswer(); });
    });
}

TEST_F(ServiceCoreApplications, theLanguageOfAStreamIsAText) {
    std::string language;
    int32_t expected_result = 0;
    tv.on<&c_hbbtv_stm_get_audio_lang>([&](uint16_t index, char* text) {
        EXPECT_EQ(index, 0xfedc);
        EXPECT_EQ(std::string(text, 16), std::string(16, '\0'));
        memcpy(text, language.data(), language.size());
        return expected_result;
    });
    const char* handler = "hh_c_hbbtv_stm_get_audio_lang";
    for (const char* text : {"deu", "zh-Hant-TW-x-abc", ""}) {
        language = text;
        expected_result = language.empty() ? -8 : 0;
        expectLines({debugLine("hh_hbbtv", handler, handler)}, {}, [&] {
            int answers = 0;
            impl->a_hidl_c_hbbtv_stm_get_audio_lang(
                    0xfedc, [&](const hidl_string& answered, int32_t result) {
                        ++answers;
                        EXPECT_EQ(std::string(answered.c_str(), answered.size()), language);
                        EXPECT_EQ(result, expected_result);
                    });
            EXPECT_EQ(answers, 1);
        });
    }
}

class ServiceCoreGinga : public ServiceCoreApplications {
  protected:
    struct Answer {
        std::vector<uint8_t> records;
        uint32_t count;
        int32_t result;
    };

    /** The answers to a request for `count` records. */
    std::vector<Answer> request(uint32_t count) {
        std::vector<Answer> answers;
        const Return<void> status = impl->a_hidl_a_qortvapi_ginga_getApplicationInfo_ex(
                count, [&](const hidl_vec<uint8_t>& records, uint32_t reported, int32_t result) {
                    answers.push_back({records, reported, result});
                });
        EXPECT_TRUE(status.isOk());
        return answers;
    }

    /** The middleware fills `written` records with 0xab and reports `reported`. */
    void plug(uint32_t asked, uint32_t written, uint32_t reported, int32_t result) {
        tv.on<&a_qortvapi_ginga_getApplicationInfo_ex>([=](void* records, uint32_t* count) {
            EXPECT_EQ(*count, asked);
            const std::vector<uint8_t> zeros(asked * 284);
            EXPECT_TRUE(zeros.empty() || memcmp(records, zeros.data(), zeros.size()) == 0);
            memset(records, 0xab, written * 284);
            *count = reported;
            return result;
        });
    }
};

TEST_F(ServiceCoreGinga, answersAsManyRecordsAsReported) {
    for (const uint32_t reported : {0u, 1u, 3u}) {
        plug(3, reported, reported, 12);
        const std::vector<Answer> answers = request(3);
        ASSERT_EQ(answers.size(), 1u);
        EXPECT_EQ(answers[0].records, std::vector<uint8_t>(reported * 284, 0xab));
        EXPECT_EQ(answers[0].count, reported);
        EXPECT_EQ(answers[0].result, 12);
    }
}

TEST_F(ServiceCoreGinga, answersNoRecordsWhereNoneAreAskedFor) {
    plug(0, 0, 0, 0);
    const std::vector<Answer> answers = request(0);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_TRUE(answers[0].records.empty());
    EXPECT_EQ(answers[0].count, 0u);
    EXPECT_EQ(answers[0].result, 0);
}

TEST_F(ServiceCoreGinga, answersZerosWhereTheMiddlewareFails) {
    plug(2, 0, 2, -5);
    const std::vector<Answer> answers = request(2);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].records, std::vector<uint8_t>(2 * 284));
    EXPECT_EQ(answers[0].count, 2u);
    EXPECT_EQ(answers[0].result, -5);
}

TEST_F(ServiceCoreGinga, passesALargerCountOnWithTheRecordsThereAre) {
    plug(2, 2, 9, 0);
    const std::vector<Answer> answers = request(2);
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0].records, std::vector<uint8_t>(2 * 284, 0xab));
    EXPECT_EQ(answers[0].count, 9u);
}

TEST_F(ServiceCoreGinga, doesNotAnswerWithoutMemory) {
    const char* method = "a_hidl_a_qortvapi_ginga_getApplicationInfo_ex";
    const LogLine failure = debugLine(
            kTag, method,
            "allocte memory fail (in a_hidl_a_qortvapi_ginga_getApplicationInfo_ex) !!!!\n");
    switchboard::Switchboard::startRecording();
    expectLines({debugLine(kTag, method, method), failure}, {failure},
                [&] { EXPECT_TRUE(request(UINT32_MAX).empty()); });
    EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());

    expectEntryLine(method, [&] { EXPECT_EQ(request(1).size(), 1u); });
}

TEST_F(ServiceCoreGinga, answersTheScreenModeBehindItsResult) {
    bool queried = false;
    bool enabled = false;
    tv.on<&a_qortvapi_ginga_is_enable_screen_mode>([&](bool query, uint8_t* output) {
        EXPECT_EQ(query, queried);
        EXPECT_EQ(*output, 0);
        *output = enabled ? 0x80 : 0;
        return 100 + enabled;
    });
    for (const bool value : {false, true}) {
        queried = !value;
        enabled = value;
        expectEntryLine("a_hidl_a_qortvapi_ginga_is_enable_screen_mode", [&] {
            int answers = 0;
            impl->a_hidl_a_qortvapi_ginga_is_enable_screen_mode(
                    queried, [&](int32_t result, bool answered) {
                        ++answers;
                        EXPECT_EQ(result, 100 + enabled);
                        EXPECT_EQ(answered, enabled);
                    });
            EXPECT_EQ(answers, 1);
        });
    }
}

TEST_F(ServiceCoreApplications, theServiceTextIsAlwaysEmpty) {
    tv.on<&a_qortvapi_apptv_get_current_channel_svc_text>([](char* text, int32_t length) {
        EXPECT_EQ(text, nullptr);
        return length == 64 ? 7 : -7;
    });
    for (const int32_t length : {64, 0, -1}) {
        const int32_t expected = length == 64 ? 7 : -7;
        expectLines({debugLine(kTag, "a_hidl_a_qortvapi_apptv_get_current_channel_svc_text",
                               "file_path:(null),i4_len:" + std::to_string(length) +
                                       ",i4_ret = " + std::to_string(expected) + "\n")},
                    {}, [&] {
                        int answers = 0;
                        impl->a_hidl_a_qortvapi_apptv_get_current_channel_svc_text(
                                length, [&](const hidl_string& text, int32_t result) {
                                    ++answers;
                                    EXPECT_EQ(text.size(), 0u);
                                    EXPECT_EQ(result, expected);
                                });
                        EXPECT_EQ(answers, 1);
                    });
    }
}

TEST_F(ServiceCoreApplications, videoIsMutedForEveryValueButZero) {
    int32_t muted = 0;
    tv.on<&a_qortvapi_apptv_get_video_mute>([&](const char*) { return muted; });
    for (const int32_t value : {0, 1, 2, -1, 256}) {
        muted = value;
        expectEntryLine("a_hidl_a_qortvapi_apptv_get_video_mute", [&] {
            EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_apptv_get_video_mute("main")}, value != 0)
                    << value;
        });
    }
}

}  // namespace
