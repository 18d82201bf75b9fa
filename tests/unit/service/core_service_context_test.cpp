/** Service contexts: the handles that all clients share, the selection, the reads and writes. */
#include <cstring>
#include <functional>

#include "hhandler/hh_svctx.h"
#include "middleware/svctx.h"
#include "support/core_contexts_fixture.h"

namespace {

constexpr char kTag[] = "hh_svctx";
constexpr uint32_t kContext = 0x80000011;  // -2147483631 in the log

hidl_vec<uint8_t> countingBytes(size_t count) {
    hidl_vec<uint8_t> bytes;
    bytes.resize(count);
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>(3 * i + 1);
    return bytes;
}

class ServiceContext : public CoreContextsTest {
  protected:
    ServiceContext() { gMainSvctx = gSubSvctx = 0; }
    ~ServiceContext() override { gMainSvctx = gSubSvctx = 0; }

    using Handle = std::pair<uint32_t, int32_t>;

    Handle open(const char* name) {
        std::vector<Handle> handles;
        EXPECT_TRUE(impl->a_hidl_c_svctx_open(name, [&](uint32_t svctx, int32_t its_result) {
                            handles.emplace_back(svctx, its_result);
                        }).isOk());
        EXPECT_EQ(handles.size(), 1u);
        return handles.at(0);
    }

    /** A callback for an answer of bytes. */
    auto takeBytes() {
        return [this](const hidl_vec<uint8_t>& bytes, int32_t its_result) {
            ++answers;
            answer = std::vector<uint8_t>(bytes.begin(), bytes.end());
            answerData = bytes.data();
            result = its_result;
        };
    }

    int answers = 0;
    std::vector<uint8_t> answer;
    const void* answerData = nullptr;
    int32_t result = 0;
};

// Opening and closing.

TEST_F(ServiceContext, isFoundByItsName) {
    gMainSvctx = 17;
    gSubSvctx = 18;
    const std::pair<const char*, Handle> names[] = {
            {"", {17, 0}},
            {"m", {17, 0}},
            {"main", {17, 0}},
            {"main_svctx", {17, 0}},
            {"main_svctx2", {0, -1}},
            {"Main", {0, -1}},
            {"sub_svctx", {18, 0}},
            {"sub_svctx and more", {18, 0}},
            {"sub", {0, -1}},
            {"sub_svct", {0, -1}},
            {"sub_svcty", {0, -1}},
            {"other", {0, -1}},
    };
    switchboard::Switchboard::startRecording();
    for (const auto& [name, handle] : names) EXPECT_EQ(open(name), handle) << name;
    EXPECT_EQ(switchboard::Switchboard::stopRecording(), std::vector<std::string>{});
}

TEST_F(ServiceContext, isOpenedOnTheFirstMissAndAnsweredFromTheNextCallOn) {
    struct {
        const char* asked;
        const char* opened;
        uint32_t* cache;
    } const rows[] = {{"main", "main_svctx", &gMainSvctx}, {"sub_svctx2", "sub_svctx", &gSubSvctx}};
    for (const auto& row : rows) {
        tv.on<&c_svctx_open>([&](const char* name, uint32_t* svctx) {
            EXPECT_STREQ(name, row.opened);
            EXPECT_EQ(svctx, row.cache);
            *svctx = 33;
            return 4;
        });
        EXPECT_EQ(open(row.asked), Handle(0, 4)) << "the handle is not answered yet";
        tv.on<&c_svctx_open>([](const char*, uint32_t*) {
            ADD_FAILURE() << "opened again";
            return 0;
        });
        EXPECT_EQ(open(row.asked), Handle(33, 0));
    }
}

TEST_F(ServiceContext, isTriedAgainWhereItCouldNotBeOpened) {
    int calls = 0;
    tv.on<&c_svctx_open>([&](const char*, uint32_t*) {
        ++calls;
        return -6;
    });
    EXPECT_EQ(open("main_svctx"), Handle(0, -6));
    EXPECT_EQ(open("main_svctx"), Handle(0, -6));
    EXPECT_EQ(calls, 2);
}

TEST_F(ServiceContext, openingLogsTheNameAndTheResultBeforeTheAnswer) {
    gMainSvctx = 17;
    for (const auto& [name, line] : {std::pair{"main", "main 0"}, {"other", "other -1"}}) {
        const auto request = [&, its_name = name](const auto& answered) {
            impl->a_hidl_c_svctx_open(its_name, answered);
        };
        mTvApiDebug = 1;
        EXPECT_EQ(linesAroundAnswer(request),
                  (std::vector<Lines>{{debugLine(kTag, "hh_c_svctx_open", line)}, {}}));
        mTvApiDebug = 0;
        EXPECT_EQ(linesAroundAnswer(request), (std::vector<Lines>{{}, {}}));
    }
}

TEST_F(ServiceContext, isOpenedForAClientThatDoesNotAskForTheHandle) {
    tv.on<&c_svctx_open>([](const char*, uint32_t* svctx) {
        *svctx = 33;
        return 0;
    });
    EXPECT_TRUE(impl->a_hidl_c_svctx_open("main_svctx", nullptr).isOk());
    EXPECT_EQ(open("main_svctx"), Handle(33, 0));
}

TEST_F(ServiceContext, isNeverClosed) {
    gMainSvctx = 17;
    switchboard::Switchboard::startRecording();
    expectDebugLines({debugLine(kTag, "hh_c_svctx_close", ".")},
                     [&] { EXPECT_EQ(int32_t{impl->a_hidl_c_svctx_close(17)}, 0); });
    EXPECT_EQ(switchboard::Switchboard::stopRecording(), std::vector<std::string>{});
    EXPECT_EQ(open("main_svctx"), Handle(17, 0));
}

// Selection.

/** `image`, as a client sends it, is found in the fields of `record`. */
void expectImage(const SVCTX_SRC_DESC_T& record, const std::vector<uint8_t>& image) {
    EXPECT_EQ(memcmp(record.aui1_before_value, &image[4], 4), 0);
    EXPECT_EQ(sizeof(record.aui1_before_second), 204u);
    EXPECT_EQ(memcmp(record.aui1_before_second, &image[12], 204), 0);
    EXPECT_EQ(sizeof(record.aui1_rest), 40u);
    EXPECT_EQ(memcmp(record.aui1_rest, &image[220], 40), 0);
}

TEST_F(ServiceContext, selectionPassesTheWholeDescriptor) {
    HIDL_SRC_DESC_T source;
    source.record = countingBytes(260);
    source.first_name = "first";
    source.second_name = "second";
    source.value = 0xf1f2f3f4;
    const hidl_vec<uint8_t> sink = countingBytes(5);
    tv.on<&c_svctx_select_svc>([&](uint32_t svctx, uint32_t mode, const SVCTX_SRC_DESC_T* record,
                                   const void* its_sink, c_svctx_nfy_fct handler, void* tag) {
        EXPECT_EQ(svctx, kContext);
        EXPECT_EQ(mode, 0xfffffffeu);
        EXPECT_EQ(record->ps_first_name, source.first_name.c_str()) << "a text is not copied";
        EXPECT_EQ(record->ps_second_name, source.second_name.c_str());
        EXPECT_EQ(record->ui4_value, 0xf1f2f3f4u);
        expectImage(*record, source.record);
        EXPECT_EQ(its_sink, sink.data());
        EXPECT_EQ(handler, _svctx_select_nfy_fct);
        EXPECT_EQ(tag, reinterpret_cast<void*>(uintptr_t{5})) << "the low word";
        return -77;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_svctx_select_svc_64(kContext, 0xfffffffe, source, sink,
                                                         0x8000000100000005)},
              -77);
}

TEST_F(ServiceContext, selectionFillsAShortDescriptorWithZeros) {
    for (const size_t length : {0, 1, 12, 13, 216, 221, 259, 260}) {
        HIDL_SRC_DESC_T source;
        source.record = countingBytes(length);
        source.value = 9;
        std::vector<uint8_t> image = source.record;
        image.resize(260);
        int calls = 0;
        tv.on<&c_svctx_select_svc>([&](uint32_t, uint32_t, const SVCTX_SRC_DESC_T* record,
                                       const void*, c_svctx_nfy_fct, void*) {
            ++calls;
            EXPECT_STREQ(record->ps_first_name, "");
            EXPECT_EQ(record->ui4_value, 9u);
            expectImage(*record, image);
            return 0;
        });
        impl->a_hidl_c_svctx_select_svc_64(1, 2, source, {}, 0);
        EXPECT_EQ(calls, 1) << length;
    }
}

TEST_F(ServiceContext, selectionIsLoggedBeforeTheCall) {
    std::vector<LogLine> before;
    tv.on<&c_svctx_select_svc>(
            [&](uint32_t, uint32_t, const SVCTX_SRC_DESC_T*, const void*, c_svctx_nfy_fct, void*) {
                before = log.take();
                return -1;
            });
    impl->a_hidl_c_svctx_select_svc_64(kContext, 7, {}, {}, 0);
    EXPECT_EQ(before, std::vector<LogLine>{debugLine(kTag, "hh_c_svctx_select_svc_64",
                                                     "h_svctx -2147483631 7\n")});
    EXPECT_TRUE(log.take().empty());
    mTvApiDebug = 0;
    impl->a_hidl_c_svctx_select_svc_64(kContext, 7, {}, {}, 0);
    EXPECT_TRUE(before.empty());
}

using ServiceContextDeathTest = ServiceContext;

TEST_F(ServiceContextDeathTest, aDescriptorThatIsTooLongEndsTheProcess) {
    HIDL_SRC_DESC_T source;
    source.record = countingBytes(261);
    EXPECT_DEATH(impl->a_hidl_c_svctx_select_svc_64(1, 2, source, {}, 0),
                 "hh_c_svctx_select_svc_64: bounded copy of 261 bytes into a block of 260");
}

// Reads and writes.

TEST_F(ServiceContext, getAnswersAsManyBytesAsWereSent) {
    for (const size_t length : {size_t{0}, size_t{1}, size_t{8}, size_t{3000}}) {
        for (const uint32_t reported : {0u, 4u, 0xffffffffu}) {
            const hidl_vec<uint8_t> sent = countingBytes(length);
            tv.on<&c_svctx_get>([&](uint32_t svctx, uint32_t type, void* data, uint32_t* size) {
                EXPECT_EQ(svctx, kContext);
                EXPECT_EQ(type, 0xfffffffdu);
                EXPECT_EQ(*size, length);
                EXPECT_NE(data, sent.data()) << "a copy";
                if (length != 0) {
                    EXPECT_EQ(memcmp(data, sent.data(), length), 0);
                    static_cast<uint8_t*>(data)[0] = 0xee;
                }
                *size = reported;
                return -2;
            });
            answers = 0;
            impl->a_hidl_c_svctx_get_64(kContext, 0xfffffffd, sent, takeBytes());
            EXPECT_EQ(answers, 1);
            EXPECT_EQ(result, -2);
            std::vector<uint8_t> expected = countingBytes(length);
            EXPECT_EQ(std::vector<uint8_t>(sent), expected) << "the client's bytes are untouched";
            if (length != 0) expected[0] = 0xee;
            EXPECT_EQ(answer, expected);
        }
    }
}

TEST_F(ServiceContext, videoResolutionIsARecordOf132Bytes) {
    for (const bool succeeds : {true, false}) {
        tv.on<&c_svctx_get_video_src_resolution>(
                [&](uint32_t svctx, SVCTX_VIDEO_RESOLUTION_T* resolution) {
                    EXPECT_EQ(svctx, kContext);
                    const std::vector<uint8_t> zeros(sizeof(*resolution));
                    EXPECT_EQ(memcmp(resolution, zeros.data(), zeros.size()), 0);
                    if (!succeeds) return -2;
                    memset(resolution, 0x5a, sizeof(*resolution));
                    return 3;
                });
        answers = 0;
        impl->a_hidl_c_svctx_get_video_src_resolution(kContext, takeBytes());
        EXPECT_EQ(answers, 1);
        EXPECT_EQ(answer, std::vector<uint8_t>(132, succeeds ? 0x5a : 0));
        EXPECT_EQ(result, succeeds ? 3 : -2);
    }
}

TEST_F(ServiceContext, audioInfoIsARecordOf24Bytes) {
    for (const bool succeeds : {true, false}) {
        tv.on<&c_svctx_get_audio_info>([&](uint32_t svctx, SVCTX_AUDIO_INFO_T* info) {
            EXPECT_EQ(svctx, kContext);
            const std::vector<uint8_t> zeros(sizeof(*info));
            EXPECT_EQ(memcmp(info, zeros.data(), zeros.size()), 0);
            if (!succeeds) return -2;
            memset(info, 0x5b, sizeof(*info));
            return 3;
        });
        answers = 0;
        impl->a_hidl_c_svctx_get_audio_info(kContext, takeBytes());
        EXPECT_EQ(answers, 1);
        EXPECT_EQ(answer, std::vector<uint8_t>(24, succeeds ? 0x5b : 0));
        EXPECT_EQ(result, succeeds ? 3 : -2);
    }
}

TEST_F(ServiceContext, streamAttributeIsPassedWithItsLength) {
    const hidl_vec<uint8_t> sent = countingBytes(11);
    tv.on<&c_svctx_set_stream_attr>([&](uint32_t svctx, uint32_t stream, uint32_t attribute,
                                        const void* data, uint32_t length) {
        EXPECT_EQ(svctx, kContext);
        EXPECT_EQ(stream, 0xf0000001u);
        EXPECT_EQ(attribute, 0xf0000002u);
        EXPECT_EQ(data, sent.data());
        EXPECT_EQ(length, 11u);
        return -9;
    });
    EXPECT_EQ(int32_t{impl->a_hidl_c_svctx_set_stream_attr_64(kContext, 0xf0000001, 0xf0000002,
                                                              sent)},
              -9);
}

TEST_F(ServiceContext, connectionAttributeIsReadIntoABufferOfTheSizeAskedFor) {
    for (const uint32_t size : {0u, 1u, 8u, 100'000u}) {
        tv.on<&c_svctx_get_conn_attr>(
                [&](uint32_t svctx, uint32_t type, uint32_t attribute, void* data) {
                    EXPECT_EQ(svctx, kContext);
                    EXPECT_EQ(type, 0xf0000001u);
                    EXPECT_EQ(attribute, 0xf0000002u);
                    memset(data, 0x77, size);
                    return -9;
                });
        answers = 0;
        impl->a_hidl_c_svctx_get_conn_attr(kContext, 0xf0000001, 0xf0000002, size, takeBytes());
        EXPECT_EQ(answers, 1);
        EXPECT_EQ(answer, std::vector<uint8_t>(size, 0x77));
        EXPECT_EQ(result, -9);
    }
}

TEST_F(ServiceContext, connectionAttributeIsWrittenInTheClientsOwnBytes) {
    const hidl_vec<uint8_t> sent = countingBytes(6);
    tv.on<&c_svctx_set_conn_attr>(
            [&](uint32_t svctx, uint32_t type, uint32_t attribute, void* data) {
                EXPECT_EQ(svctx, kContext);
                EXPECT_EQ(type, 0xf0000001u);
                EXPECT_EQ(attribute, 0xf0000002u);
                EXPECT_EQ(data, sent.data());
                static_cast<uint8_t*>(data)[5] = 0xee;
                return -9;
            });
    impl->a_hidl_c_svctx_set_conn_attr(kContext, 0xf0000001, 0xf0000002, sent, takeBytes());
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(answerData, sent.data());
    EXPECT_EQ(answer, (std::vector<uint8_t>{1, 4, 7, 10, 13, 0xee}));
    EXPECT_EQ(result, -9);
}

TEST_F(ServiceContext, genericReadIsToldItsSize) {
    for (const uint32_t size : {0u, 1u, 8u, 100'000u}) {
        tv.on<&c_svctx_generic_get_info>([&](uint32_t svctx, uint32_t type, uint32_t subtype,
                                             void* data, uint32_t its_size) {
            EXPECT_EQ(svctx, kContext);
            EXPECT_EQ(type, 0xf0000001u);
            EXPECT_EQ(subtype, 0xf0000002u);
            EXPECT_EQ(its_size, size);
            memset(data, 0x78, its_size);
            return -9;
        });
        answers = 0;
        impl->a_hidl_c_svctx_generic_get_info(kContext, 0xf0000001, 0xf0000002, size, takeBytes());
        EXPECT_EQ(answers, 1);
        EXPECT_EQ(answer, std::vector<uint8_t>(size, 0x78));
        EXPECT_EQ(result, -9);
    }
}

TEST_F(ServiceContext, genericWriteIsOfACopy) {
    for (const size_t length : {size_t{0}, size_t{1}, size_t{300}}) {
        const hidl_vec<uint8_t> sent = countingBytes(length);
        tv.on<&c_svctx_generic_set_info>(
                [&](uint32_t svctx, uint32_t type, uint32_t subtype, void* data, uint32_t size) {
                    EXPECT_EQ(svctx, kContext);
                    EXPECT_EQ(type, 0xf0000001u);
                    EXPECT_EQ(subtype, 0xf0000002u);
                    EXPECT_EQ(size, length);
                    EXPECT_NE(data, sent.data());
                    if (length == 0) return -9;
                    EXPECT_EQ(memcmp(data, sent.data(), length), 0);
                    static_cast<uint8_t*>(data)[0] = 0xee;
                    return -9;
                });
        answers = 0;
        impl->a_hidl_c_svctx_generic_set_info(kContext, 0xf0000001, 0xf0000002, sent, takeBytes());
        EXPECT_EQ(answers, 1);
        std::vector<uint8_t> expected = countingBytes(length);
        EXPECT_EQ(std::vector<uint8_t>(sent), expected);
        if (length != 0) expected[0] = 0xee;
        EXPECT_EQ(answer, expected);
        EXPECT_EQ(result, -9);
    }
}

struct LineRow {
    const char* handler;
    const char* text;
    std::function<void(QorTvApiImpl&,
                       const std::function<void(const hidl_vec<uint8_t>&, int32_t)>&)>
            request;
};

void PrintTo(const LineRow& row, std::ostream* out) {
    *out << row.handler;
}

// clang-format off
const LineRow kLineRows[] = {
    {"hh_c_svctx_get_64", "h_svctx -2147483631 -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_get_64(kContext, 7, {}, take); }},
    {"hh_c_svctx_get_video_src_resolution", "h_svctx -2147483631\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_get_video_src_resolution(kContext, take); }},
    {"hh_c_svctx_get_audio_info", "h_svctx -2147483631 -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_get_audio_info(kContext, take); }},
    {"hh_c_svctx_get_conn_attr", "h_svctx -2147483631 7 abc -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_get_conn_attr(kContext, 7, 0xabc, 5, take); }},
    {"hh_c_svctx_set_conn_attr", "h_svctx -2147483631 7 2748 -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_set_conn_attr(kContext, 7, 0xabc, {}, take); }},
    {"hh_c_svctx_generic_get_info", "-2147483631 7 2748 -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_generic_get_info(kContext, 7, 0xabc, 5, take); }},
    {"hh_c_svctx_generic_set_info", "-2147483631 7 2748 -3\n",
     [](auto& impl, const auto& take) { impl.a_hidl_c_svctx_generic_set_info(kContext, 7, 0xabc, {}, take); }},
};
// clang-format on

class ServiceContextLine : public ServiceContext, public testing::WithParamInterface<LineRow> {
  protected:
    ServiceContextLine() {
        tv.on<&c_svctx_get>([](auto...) { return -3; });
        tv.on<&c_svctx_get_video_src_resolution>([](auto...) { return -3; });
        tv.on<&c_svctx_get_audio_info>([](auto...) { return -3; });
        tv.on<&c_svctx_get_conn_attr>([](auto...) { return -3; });
        tv.on<&c_svctx_set_conn_attr>([](auto...) { return -3; });
        tv.on<&c_svctx_generic_get_info>([](auto...) { return -3; });
        tv.on<&c_svctx_generic_set_info>([](auto...) { return -3; });
    }
};

TEST_P(ServiceContextLine, followsTheAnswer) {
    const LineRow& row = GetParam();
    const auto request = [&](const auto& answered) { row.request(*impl, answered); };
    EXPECT_EQ(linesAroundAnswer(request),
              (std::vector<Lines>{{}, {debugLine(kTag, row.handler, row.text)}}));
    mTvApiDebug = 0;
    EXPECT_EQ(linesAroundAnswer(request), (std::vector<Lines>{{}, {}}));
}

INSTANTIATE_TEST_SUITE_P(, ServiceContextLine, testing::ValuesIn(kLineRows),
                         [](const auto& row) { return std::string(row.param.handler); });

TEST_F(ServiceContext, streamAttributeLogsItsArguments) {
    tv.on<&c_svctx_set_stream_attr>([](auto...) { return -3; });
    expectDebugLines(
            {debugLine(kTag, "hh_c_svctx_set_stream_attr_64", "h_svctx -2147483631 7 2748 -3\n")},
            [&] { impl->a_hidl_c_svctx_set_stream_attr_64(kContext, 7, 0xabc, {}); });
}

}  // namespace
