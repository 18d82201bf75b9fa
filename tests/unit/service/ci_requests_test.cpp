/** Requests to the CI module: calls of the middleware, answers, log lines. */
#include <algorithm>
#include <cstring>
#include <functional>

#include "QorTvApiCIImpl.h"
#include "middleware/ci.h"
#include "support/domain_fixture.h"
#include "support/forwarding.h"
#include "support/short_memory.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Units = std::vector<uint16_t>;
using Gets = Answers<Bytes, uint32_t, int32_t>;
using Texts = std::vector<std::string>;
using switchboard::Switchboard;

constexpr uint32_t kInfo = 0xfedcba98;
constexpr char kInfoText[] = "-19088744";  // as "%d" prints it

class ServiceCiRequests : public DomainTest<QorTvApiCIImpl> {
  protected:
    ServiceCiRequests() : DomainTest("QorTvApiCIImpl(service)") {}

    /** expectLines(), and neither call reaches the middleware. */
    void expectNoCall(const std::string& method, const Texts& texts,
                      const std::function<void()>& call, const Texts& always = {}) {
        Switchboard::startRecording();
        expectLines(method, texts, call, always);
        EXPECT_EQ(Switchboard::stopRecording(), Texts{});
    }

    Gets::All get(uint32_t type, const Bytes& data, uint32_t length) const {
        return Gets::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ci_get(type, kInfo, data, length, callback);
        });
    }

    static std::string getLine(uint32_t type, size_t size, uint32_t length) {
        return "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get with e_get_type:" +
               std::to_string(static_cast<int32_t>(type)) + ", pv_get_info:" + kInfoText +
               ", pv_data.size():" + std::to_string(size) +
               ", in_data_len:" + std::to_string(static_cast<int32_t>(length)) + " \n";
    }

    int32_t set(uint32_t type, const Bytes& data) const {
        return impl->a_hidl_a_qortvapi_ci_set(type, kInfo, data);
    }

    static std::string setLine(uint32_t type, size_t size) {
        return "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set with e_set_type:" +
               std::to_string(static_cast<int32_t>(type)) + ", ui4_set_info:" + kInfoText +
               ", pv_data.size:" + std::to_string(size) + " \n";
    }
    static std::string setText(const std::string& rest) {
        return "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set " + rest;
    }
};

const std::string kGet = "a_hidl_a_qortvapi_ci_get";
const std::string kSet = "a_hidl_a_qortvapi_ci_set";
const std::string kGetPin = "a_hidl_a_qortvapi_ci_get_cam_pin_code";
const std::string kSetAnswer = "a_hidl_a_qortvapi_ci_set_mmi_enq_ans";

// Reads.

struct GetRow {
    uint32_t type;
    uint32_t info;
    uint32_t told;      // length that the middleware is told
    uint32_t capacity;  // bytes
    uint32_t unit;
};

constexpr uint32_t kRoom = 20;  // units, for a CAM name
constexpr GetRow kGetRows[] = {
        {0, kInfo, kRoom, 2 * kRoom, 2},
        {1, 0, 1, 1, 1},
        {2, kInfo, 8, 8, 1},
        {7, 0, 4, 4, 1},
        {8, 0, 4, 4, 1},
        {10, kInfo, 1, 1, 1},
        {13, kInfo, 1, 1, 1},
        {15, kInfo, 200, 200, 2},
        {16, kInfo, 12, 12, 1},
        {17, 0, 16, 16, 1},
        {18, kInfo, 8, 9, 1},
        {19, kInfo, 1, 1, 1},
        {20, kInfo, 3, 4, 1},
        {26, kInfo, 1, 1, 1},
        {27, kInfo, 1, 1, 1},
        {28, kInfo, 1, 1, 1},
        {30, kInfo, 4, 4, 1},
        {31, kInfo, 4, 4, 1},
        {32, kInfo, 4, 4, 1},
};

class ServiceCiGet : public ServiceCiRequests, public testing::WithParamInterface<GetRow> {};

TEST_P(ServiceCiGet, answersAsMuchAsTheMiddlewareReportsAndTheBufferHolds) {
    const GetRow& row = GetParam();
    const Bytes sent = {0xf1, 0xf2, 0xf3};
    for (const int32_t result : {0, -7}) {
        for (const uint32_t reported :
             {0u, 1u, row.capacity / row.unit, row.capacity / row.unit + 1, 0xffffffffu}) {
            SCOPED_TRACE(reported);
            int calls = 0;
            tv.on<&a_qortvapi_ci_get>(
                    [&](uint32_t type, uint32_t info, void* data, uint32_t* length) {
                        ++calls;
                        EXPECT_EQ(type, row.type);
                        EXPECT_EQ(info, row.info);
                        EXPECT_EQ(*length, row.told);
                        auto* bytes = static_cast<uint8_t*>(data);
                        Bytes expected(row.capacity);
                        if (row.type == 16) memcpy(expected.data(), sent.data(), sent.size());
                        EXPECT_EQ(Bytes(bytes, bytes + row.capacity), expected);
                        for (uint32_t i = 0; i < row.capacity; ++i) bytes[i] = 0x81 + i;
                        *length = reported;
                        return result;
                    });
            Bytes written;
            for (uint32_t i = 0; i < row.capacity; ++i) written.push_back(0x81 + i);
            written.resize(std::min<uint64_t>(uint64_t{reported} * row.unit, row.capacity));
            EXPECT_EQ(get(row.type, sent, kRoom),
                      (Gets::All{{written, row.type == 16 ? kRoom : reported, result}}));
            EXPECT_EQ(calls, 1);
        }
    }
}

TEST_P(ServiceCiGet, answersZerosWhereNothingIsWritten) {
    const GetRow& row = GetParam();
    tv.on<&a_qortvapi_ci_get>([](uint32_t, uint32_t, void*, uint32_t*) { return -1; });
    const Bytes zeros(std::min(row.told * row.unit, row.capacity));
    EXPECT_EQ(get(row.type, {}, kRoom),
              (Gets::All{{zeros, row.type == 16 ? kRoom : row.told, -1}}));
}

TEST_P(ServiceCiGet, logsTheRequest) {
    const GetRow& row = GetParam();
    expectLines(kGet, {getLine(row.type, 2, kRoom)}, [&] { get(row.type, {1, 2}, kRoom); });
}

INSTANTIATE_TEST_SUITE_P(, ServiceCiGet, testing::ValuesIn(kGetRows),
                         [](const auto& row) { return std::to_string(row.param.type); });

TEST_F(ServiceCiRequests, aNameOfNoLengthIsAQuestionForItsLength) {
    tv.on<&a_qortvapi_ci_get>([&](uint32_t type, uint32_t info, void* data, uint32_t* length) {
        EXPECT_EQ(type, 0u);
        EXPECT_EQ(info, kInfo);
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(*length, 0u);
        *length = 23;
        return 5;
    });
    EXPECT_EQ(get(0, {1, 2, 3}, 0), (Gets::All{{{}, 23, 5}}));
}

TEST_F(ServiceCiRequests, readsOfOtherTypesAreNotAnswered) {
    for (const uint32_t type :
         {3u, 4u, 5u, 6u, 9u, 11u, 12u, 14u, 21u, 22u, 23u, 24u, 25u, 29u, 33u, 0xffffffffu}) {
        expectNoCall(kGet, {getLine(type, 1, 2)},
                     [&] { EXPECT_EQ(get(type, {1}, 2), Gets::All{}) << type; });
    }
}

TEST_F(ServiceCiRequests, readsWithoutMemoryAreNotAnswered) {
    struct Buffer {
        uint32_t type;
        std::string name;
    };
    for (const Buffer& buffer : {Buffer{0, "utf16_cam_name"}, Buffer{15, "utf16_profile_name"},
                                 Buffer{18, "pui1_cam_id"}, Buffer{20, "c_lang_code"}}) {
        const std::string failure = buffer.name + " alloc memory fail!\n";
        const ShortMemory memory(0);
        expectNoCall(kGet, {getLine(buffer.type, 0, 5), failure},
                     [&] { EXPECT_EQ(get(buffer.type, {}, 5).size(), 0u); }, {failure});
    }
    // More than any vector of the interface can hold.
    expectNoCall(kGet, {getLine(0, 0, 0x80000000), "utf16_cam_name alloc memory fail!\n"},
                 [&] { EXPECT_EQ(get(0, {}, 0x80000000).size(), 0u); },
                 {"utf16_cam_name alloc memory fail!\n"});
}

using ServiceCiRequestsDeathTest = ServiceCiRequests;

TEST_F(ServiceCiRequestsDeathTest, dataLongerThanTheirBlockEndTheProcess) {
    EXPECT_DEATH(get(16, Bytes(13), 13), kGet + ": bounded copy of 13 bytes into a block of 12");
    EXPECT_DEATH(set(3, Bytes(9)), kSet + ": bounded copy of 9 bytes into a block of 8");
    EXPECT_DEATH(set(40, Bytes(5)), kSet + ": bounded copy of 5 bytes into a block of 4");
    EXPECT_DEATH(set(80, Bytes(2)), kSet + ": bounded copy of 2 bytes into a block of 1");
}

TEST_F(ServiceCiRequests, aWholeQueryBlockReachesTheMiddleware) {
    const Bytes sent = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    tv.on<&a_qortvapi_ci_get>([&](uint32_t, uint32_t, void* data, uint32_t*) {
        EXPECT_EQ(memcmp(data, sent.data(), sent.size()), 0);
        return 0;
    });
    EXPECT_EQ(get(16, sent, 77), (Gets::All{{sent, 77, 0}}));
}

// The PIN.

class ServiceCiPin : public ServiceCiRequests {
  protected:
    struct Pin {
        int valid;
        Units digits;
        int32_t result;
        bool operator==(const Pin& other) const {
            return valid == other.valid && digits == other.digits && result == other.result;
        }
    };

    std::vector<Pin> get(uint32_t type) const {
        std::vector<Pin> pins;
        impl->a_hidl_a_qortvapi_ci_get_cam_pin_code(
                type, kInfo, [&](const HIDL_CI_CAM_PIN_CODE_T& pin, int32_t result) {
                    pins.push_back({pin.ui1_valid, pin.w2s_pin_code, result});
                });
        return pins;
    }

    static Texts lines(int valid, const Units& units) {
        Texts texts = {entry(29)};
        texts.push_back("QorTvApiCIImpl, a_hidl_cam_pin_code.ui1_valid:" + std::to_string(valid) +
                        "!\n");
        texts.push_back("QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code len:" +
                        std::to_string(units.size()));
        for (size_t i = 0; i < units.size(); ++i) {
            texts.push_back("QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code t_enq_ans[" +
                            std::to_string(i) + "]:" + std::to_string(units[i]));
        }
        return texts;
    }
    static std::string entry(uint32_t type) {
        return "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code with e_get_type:" +
               std::to_string(type) + ", pv_get_info:" + kInfoText + "\n";
    }
};

TEST_F(ServiceCiPin, isReadIntoFourDigits) {
    tv.on<&a_qortvapi_ci_get>([&](uint32_t type, uint32_t info, void* data, uint32_t* length) {
        EXPECT_EQ(type, 29u);
        EXPECT_EQ(info, kInfo);
        EXPECT_EQ(*length, 8u);
        const auto* query = static_cast<const CI_CAM_PIN_CODE_T*>(data);
        EXPECT_EQ(*query->pui1_valid, 0);
        EXPECT_EQ(query->pui2_pin_code[4], 0);
        *query->pui1_valid = 0xfe;
        const uint16_t pin[] = {'1', '2', '3', 0xfedc, '5'};  // with a unit too many
        memcpy(query->pui2_pin_code, pin, sizeof(pin));
        *length = 10;
        return 6;
    });
    const Units digits = {'1', '2', '3', 0xfedc};
    expectLines(kGetPin, lines(0xfe, digits), [&] {
        EXPECT_EQ(get(29), (std::vector<Pin>{{0xfe, digits, 6}}));
    });
}

TEST_F(ServiceCiPin, isFourDigitsAlsoWhereTheModuleWritesNone) {
    tv.on<&a_qortvapi_ci_get>([&](uint32_t, uint32_t, void*, uint32_t*) { return -4; });
    const Units zeros = {'0', '0', '0', '0'};
    expectLines(kGetPin, lines(0, zeros), [&] {
        EXPECT_EQ(get(29), (std::vector<Pin>{{0, zeros, -4}}));
    });
}

TEST_F(ServiceCiPin, isLoggedUpToItsFirstZero) {
    tv.on<&a_qortvapi_ci_get>([&](uint32_t, uint32_t, void* data, uint32_t*) {
        static_cast<const CI_CAM_PIN_CODE_T*>(data)->pui2_pin_code[1] = 0;
        return 0;
    });
    expectLines(kGetPin, lines(0, {'0'}), [&] {
        EXPECT_EQ(get(29), (std::vector<Pin>{{0, Units{'0', 0, '0', '0'}, 0}}));
    });
}

TEST_F(ServiceCiPin, isTheOnlyTypeOfItsMethod) {
    for (const uint32_t type : {0u, 28u, 30u}) {
        expectNoCall(kGetPin,
                     {entry(type),
                      "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code with e_get_type:" +
                              std::to_string(type) + " not handle here\n"},
                     [&] { EXPECT_TRUE(get(type).empty()); });
    }
}

TEST_F(ServiceCiPin, isNotAnsweredWithoutMemory) {
    const ShortMemory memory(0);
    const std::string failure = "pui1_cam_id alloc memory fail!\n";
    expectNoCall(kGetPin, {entry(29), failure}, [&] { EXPECT_TRUE(get(29).empty()); }, {failure});
}

// Writes.

class ServiceCiSet : public ServiceCiRequests {
  protected:
    /** `set(type, data)` writes its entry line and `texts` and returns `result`, which
     * the middleware answers to `type`, `info` and data that `check` is content with. */
    void expectSet(uint32_t type, const Bytes& data, uint32_t info, const Texts& texts,
                   int32_t result, const std::function<void(const void*)>& check) {
        SCOPED_TRACE(type);
        int calls = 0;
        tv.on<&a_qortvapi_ci_set>([&](uint32_t its_type, uint32_t its_info, const void* its_data) {
            ++calls;
            EXPECT_EQ(its_type, type);
            EXPECT_EQ(its_info, info);
            check(its_data);
            return result;
        });
        Texts all = {setLine(type, data.size())};
        all.insert(all.end(), texts.begin(), texts.end());
        expectLines(kSet, all, [&] { EXPECT_EQ(set(type, data), result); });
        EXPECT_EQ(calls, 2) << "with debugging on and off";
    }

    static std::function<void(const void*)> bytes(const Bytes& expected) {
        return [=](const void* data) {
            const auto* all = static_cast<const uint8_t*>(data);
            EXPECT_EQ(Bytes(all, all + expected.size()), expected);
        };
    }
    static void nothing(const void* data) { EXPECT_EQ(data, nullptr); }
};

TEST_F(ServiceCiSet, plainTypesHaveNoData) {
    for (const uint32_t type : {0, 1, 6, 24, 81}) {
        expectSet(type, {}, kInfo, {}, 0, nothing);
        expectSet(type, {1, 2, 3}, kInfo, {}, -9, nothing);
    }
}

TEST_F(ServiceCiSet, aMenuAnswerIsABlockOfEight) {
    expectSet(3, {}, 0, {}, 0, bytes(Bytes(8)));
    expectSet(3, {1, 2, 3}, 0, {}, 0, bytes({1, 2, 3, 0, 0, 0, 0, 0}));
    expectSet(3, {1, 2, 3, 4, 5, 6, 7, 8}, 0,
              {setText("HIDL_QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, return:-9\n")}, -9,
              bytes({1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(ServiceCiSet, aPinCommandIsATextWithANul) {
    expectSet(34, {'1', '2', '3', '4'}, 0, {}, 0, bytes({'1', '2', '3', '4', 0}));
    expectSet(34, {'1'}, 0, {setText("HIDL_QORTVAPI_CI_SET_TYPE_PIN_CMD, return:3\n")}, 3,
              bytes({'1', 0}));
}

TEST_F(ServiceCiSet, anEmptyPinCommandGoesNowhere) {
    expectNoCall(
            kSet,
            {setLine(34, 0), setText("HIDL_QORTVAPI_CI_SET_TYPE_PIN_CMD, pv_data.size(): 0\n")},
            [&] { EXPECT_EQ(set(34, {}), 0); });
}

TEST_F(ServiceCiSet, aPinCommandWithoutMemoryGoesNowhere) {
    const ShortMemory memory(0);
    expectNoCall(kSet, {setLine(34, 4), "Alloc memory fail!!!!\n"},
                 [&] {
                     EXPECT_EQ(set(34, {'1', '2', '3', '4'}), 0);
                 },
                 {"Alloc memory fail!!!!\n"});
}

TEST_F(ServiceCiSet, anEventIsAWord) {
    const auto line = [](const std::string& number) {
        return setText("QORTVAPI_CI_SET_TYPE_SAS_DTID_EVENT, event:" + number + "\n");
    };
    expectSet(40, {1, 2, 3, 4}, kInfo, {line("67305985")}, -9, bytes({1, 2, 3, 4}));
    expectSet(40, {1, 2}, kInfo, {line("513")}, 0, bytes({1, 2, 0, 0}));
    expectSet(40, {}, kInfo, {line("0")}, 0, bytes({0, 0, 0, 0}));
}

TEST_F(ServiceCiSet, aConfirmationIsTheInformation) {
    expectSet(47, {1, 2}, kInfo,
              {setText(std::string("QORTVAPI_CI_SET_TYPE_HDS_CONFIRM, hds_confirm:") + kInfoText +
                       "\n")},
              -9, nothing);
}

TEST_F(ServiceCiSet, aScanIsAFlagByValue) {
    const auto line = [](const std::string& number) {
        return setText("QORTVAPI_CI_SET_TYPE_NAV_CAM_SCAN, flag:" + number + "\n");
    };
    expectSet(80, {0xfe}, kInfo, {line("254")}, -9,
              [](const void* data) { EXPECT_EQ(reinterpret_cast<uintptr_t>(data), 0xfeu); });
    expectSet(80, {}, kInfo, {line("0")}, 0, nothing);
}

TEST_F(ServiceCiSet, otherTypesGoNowhere) {
    for (const uint32_t type :
         {2u, 4u, 5u, 7u, 23u, 25u, 33u, 35u, 39u, 41u, 46u, 48u, 79u, 82u, 0xffffffffu}) {
        expectNoCall(kSet,
                     {setLine(type, 1), setText("not support with e_set_type:" +
                                                std::to_string(static_cast<int32_t>(type)) + "\n")},
                     [&] { EXPECT_EQ(set(type, {1}), 0); });
    }
}

// Answers to enquiries.

class ServiceCiEnquiryAnswer : public ServiceCiRequests {
  protected:
    int32_t send(uint32_t type, const hidl_vec<uint16_t>& text) const {
        HIDL_CI_MMI_ENQ_ANS_T enq_ans;
        enq_ans.ui4_id = 0x12345678;
        enq_ans.answer = 0xfe;
        enq_ans.w2s_text.setToExternal(const_cast<uint16_t*>(text.data()), text.size());
        return impl->a_hidl_a_qortvapi_ci_set_mmi_enq_ans(type, kInfo, enq_ans);
    }

    static std::string entry(uint32_t type) {
        return "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set_mmi_enq_ans with e_set_type:" +
               std::to_string(type) + ", ui4_set_info:" + kInfoText + "\n";
    }

    void expectSent(const hidl_vec<uint16_t>& text, const Units& logged, int32_t result) {
        int calls = 0;
        tv.on<&a_qortvapi_ci_set>([&](uint32_t type, uint32_t info, const void* data) {
            ++calls;
            const auto* record = static_cast<const CI_MMI_ENQ_ANS_T*>(data);
            EXPECT_EQ(type, 2u);
            EXPECT_EQ(info, 0u);
            EXPECT_EQ(record->ui4_id, 0x12345678u);
            EXPECT_EQ(record->ui1_answer, 0xfe);
            EXPECT_EQ(record->w2s_text, text.data()) << "a text is not copied";
            return result;
        });
        const std::string with = "QorTvApiCIImpl, with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS ";
        Texts texts = {entry(2),
                       "QorTvApiCIImpl, QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS ui4_id:305419896",
                       with + "answer:254", with + "t_enq_ans.w2s_text data start",
                       "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set with "
                       "QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS len:" +
                               std::to_string(logged.size())};
        for (size_t i = 0; i < logged.size(); ++i) {
            texts.push_back(with + "t_enq_ans[" + std::to_string(i) +
                            "]:" + std::to_string(logged[i]));
        }
        texts.push_back(with + "t_enq_ans.w2s_text data end");
        if (result != 0) {
            texts.push_back(setText("HIDL_QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, return:" +
                                    std::to_string(result) + "\n"));
        }
        expectLines(kSetAnswer, texts, [&] { EXPECT_EQ(send(2, text), result); });
        EXPECT_EQ(calls, 2) << "with debugging on and off";
    }
};

TEST_F(ServiceCiEnquiryAnswer, reachesTheModuleWithItsText) {
    expectSent({'4', '2', 0}, {'4', '2'}, 0);
    expectSent({'4', '2'}, {'4', '2'}, -9);                // no terminator
    expectSent({'4', 0, '2', 0}, {'4'}, 0);                // a zero inside
    expectSent({0xd83d, 0xde00, 0}, {0xd83d, 0xde00}, 0);  // a surrogate pair
    expectSent({0}, {}, 0);
    expectSent({}, {}, 0);
}

TEST_F(ServiceCiEnquiryAnswer, isTheOnlyTypeOfItsMethod) {
    for (const uint32_t type : {0u, 1u, 3u, 34u}) {
        expectNoCall(kSetAnswer,
                     {entry(type),
                      "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set_mmi_enq_ans with e_set_type:" +
                              std::to_string(type) + " not handle here\n"},
                     [&] { EXPECT_EQ(send(type, {1}), 0); });
    }
}

// Virtual channels, keys.

TEST_F(ServiceCiRequests, aVirtualChannelIsATextUpToItsNul) {
    using Infos = Answers<std::string, uint32_t, int32_t>;
    const auto request = [&](uint32_t size) {
        return Infos::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ci_get_virtual_channel_info(size, callback);
        });
    };
    tv.on<&a_qortvapi_ci_get_virtual_channel_info>([](char* info, uint32_t* value) {
        EXPECT_EQ(Bytes(info, info + 6), Bytes(6));
        EXPECT_EQ(*value, 0u);
        memcpy(info, "ab\0cd", 5);
        *value = 0xfedcba98;
        return -9;
    });
    const std::string method = "a_hidl_a_qortvapi_ci_get_virtual_channel_info";
    expectLines(method, {method}, [&] {
        EXPECT_EQ(request(6), (Infos::All{{"ab", 0xfedcba98, -9}}));
    });
    tv.on<&a_qortvapi_ci_get_virtual_channel_info>([](char* info, uint32_t*) {
        memcpy(info, "abcdef", 6);
        return 0;
    });
    EXPECT_EQ(request(6), (Infos::All{{"abcdef", 0, 0}})) << "all bytes of the buffer";
    tv.on<&a_qortvapi_ci_get_virtual_channel_info>([](char*, uint32_t*) { return 1; });
    EXPECT_EQ(request(0), (Infos::All{{"", 0, 1}}));

    const ShortMemory memory(0);
    const std::string failure = "pc_vir_channel Alloc memory fail!!!!\n";
    expectNoCall(method, {method, failure}, [&] { EXPECT_EQ(request(6).size(), 0u); }, {failure});
}

TEST_F(ServiceCiRequests, aHostIdIsAnsweredAtItsFullSize) {
    using Ids = Answers<Bytes, uint32_t, int32_t>;
    const auto request = [&](uint8_t size) {
        return Ids::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ci_key_get_host_id(size, callback);
        });
    };
    tv.on<&a_qortvapi_ci_key_get_host_id>([](uint8_t* id, uint8_t* length) {
        EXPECT_EQ(Bytes(id, id + *length), Bytes(*length));
        if (*length > 0) id[0] = 0xfe;
        *length = 254;
        return -9;
    });
    const std::string method = "a_hidl_a_qortvapi_ci_key_get_host_id";
    expectLines(method, {method}, [&] {
        EXPECT_EQ(request(3), (Ids::All{{{0xfe, 0, 0}, 254, -9}}));
    });
    EXPECT_EQ(std::get<0>(request(255).at(0)).size(), 255u);
    EXPECT_EQ(request(0), (Ids::All{{{}, 254, -9}}));

    const ShortMemory memory(0);
    const std::string failure = "host_id Alloc memory fail!!!!\n";
    expectNoCall(method, {method, failure}, [&] { EXPECT_EQ(request(3).size(), 0u); }, {failure});
}

TEST_F(ServiceCiRequests, aKeyQueryHasTheAreaInItsFirstHalf) {
    using Queries = Answers<Units, int32_t>;
    tv.on<&a_qortvapi_ci_key_query>([](uint16_t* area) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(area);
        EXPECT_EQ(Bytes(bytes, bytes + 1024), Bytes(1024));
        for (uint16_t i = 0; i < 512; ++i) area[i] = 0xf000 + i;
        return -9;
    });
    Units expected(1024);
    for (uint16_t i = 0; i < 512; ++i) expected[i] = 0xf000 + i;
    const std::string method = "a_hidl_a_qortvapi_ci_key_query";
    expectLines(method, {method}, [&] {
        EXPECT_EQ(Queries::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_ci_key_query(callback);
                  }),
                  (Queries::All{{expected, -9}}));
    });
}

TEST_F(ServiceCiRequests, aKeyIsWrittenWithTheLengthThatTheClientSays) {
    const hidl_vec<uint8_t> key = {1, 2, 3};
    for (const uint32_t length : {0u, 3u, 5000u}) {
        tv.on<&a_qortvapi_ci_key_write>([&](const uint8_t* data, uint32_t its_length) {
            EXPECT_EQ(data, key.data());
            EXPECT_EQ(its_length, length);
            return -9;
        });
        const Texts lines = {"pui1_key_buffer.size() = 3, ui4_key_buffer_len = " +
                             std::to_string(length) + ".\n"};
        expectLines(
                "a_hidl_a_qortvapi_ci_key_write", lines,
                [&] {
                    EXPECT_EQ(
                            static_cast<int32_t>(impl->a_hidl_a_qortvapi_ci_key_write(key, length)),
                            -9);
                },
                lines);
    }
}

// Plain bridges.

// clang-format off
#define ROW(function) \
    forwarding::bridge<QorTvApiCIImpl, &QorTvApiCIImpl::a_hidl_##function, &function>(#function)
// clang-format on

const forwarding::Bridge kBridges[] = {
#include "rows/ci.inc"
};

class ServiceCiForwarding : public ServiceTest,
                            public testing::WithParamInterface<forwarding::Bridge> {};

TEST_P(ServiceCiForwarding, passesArgumentsAndOutputsOn) {
    const forwarding::Bridge& bridge = GetParam();
    const std::string method = std::string("a_hidl_") + bridge.function;
    forwarding::checkNew<QorTvApiCIImpl>(bridge);
    EXPECT_EQ(log.take(),
              std::vector<LogLine>(forwarding::kCalls,
                                   debugLine("QorTvApiCIImpl(service)", method, method)))
            << "an entry line for each call";

    mTvApiDebug = 0;
    forwarding::checkNew<QorTvApiCIImpl>(bridge);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceCiForwarding, testing::ValuesIn(kBridges),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
