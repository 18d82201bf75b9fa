// Calls between two processes.
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <limits>

#include <hidl/HidlTransportSupport.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using TransportTest = ServiceTest;

TEST_F(TransportTest, CallsWithoutResultAndWithScalar) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->isRemote());
    EXPECT_TRUE(service->nothing().isOk());
    EXPECT_EQ(service->number().withDefault(0), 42);
}

TEST_F(TransportTest, AForkedProcessCannotGoOnWithItsParentsSessions) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    ASSERT_TRUE(service->nothing().isOk());
    EXPECT_EXIT(service->nothing().isOk(), testing::KilledBySignal(SIGABRT), "forked");
    EXPECT_EXIT(echo(), testing::KilledBySignal(SIGABRT), "forked");
    EXPECT_TRUE(service->nothing().isOk()) << "the parent does not notice";
}

TEST_F(TransportTest, ScalarsComeBackAsTheyWere) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    for (bool value : {false, true}) EXPECT_EQ(service->echoBool(value).withDefault(!value), value);
    for (int64_t value : {std::numeric_limits<int64_t>::min(), int64_t{-1}, int64_t{0},
                          std::numeric_limits<int64_t>::max()}) {
        EXPECT_EQ(service->echoI64(value).withDefault(7), value);
    }
    EXPECT_EQ(service->echoFloat(-0.1f).withDefault(0), -0.1f);
    EXPECT_EQ(service->echoDouble(1e-300).withDefault(0), 1e-300);
    EXPECT_TRUE(std::isnan(service->echoDouble(std::nan("")).withDefault(0)));
    EXPECT_EQ(service->echoColour(Colour::BLUE).withDefault(Colour::RED), Colour::BLUE);
    EXPECT_EQ(service->echoFlags(Flags::FIRST | Flags::LAST).withDefault(0), 0x80000001u);

    Scalars scalars{};
    scalars.flag = true;
    scalars.i8 = -128;
    scalars.u8 = 255;
    scalars.i16 = -32768;
    scalars.u16 = 65535;
    scalars.i32 = std::numeric_limits<int32_t>::min();
    scalars.u32 = 0xffffffff;
    scalars.i64 = std::numeric_limits<int64_t>::min();
    scalars.u64 = ~uint64_t{0};
    scalars.f32 = 1.5f;
    scalars.f64 = -2.5;
    scalars.colour = Colour::GREEN;
    bool same = false;
    EXPECT_TRUE(service->echoScalars(scalars, [&](const Scalars& back) { same = back == scalars; })
                        .isOk());
    EXPECT_TRUE(same);
}

TEST_F(TransportTest, TextsOfAllSizes) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    for (size_t size : {0u, 1u, 7u, 8u, 9u, 1000u, 4096u, 8192u, 65536u, 900000u}) {
        std::string text(size, 'x');
        if (size > 2) text[1] = '\0';
        std::string back = "not called";
        EXPECT_TRUE(service->echoString(text, [&](const hidl_string& t) { back = t; }).isOk());
        EXPECT_EQ(back, text) << size;
    }
}

TEST_F(TransportTest, VectorsOfAllSizes) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    for (size_t size : {0u, 1u, 3u, 1023u, 1024u, 4096u, 100000u, 1000000u}) {
        hidl_vec<uint8_t> bytes;
        bytes.resize(size);
        for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(i * 7);
        bool same = false;
        EXPECT_TRUE(
                service->echoBytes(bytes, [&](const auto& back) { same = back == bytes; }).isOk());
        EXPECT_TRUE(same) << size;
    }
    hidl_vec<uint16_t> words{1, 65535, 3};
    hidl_vec<Colour> colours{Colour::RED, Colour::BLUE};
    hidl_vec<hidl_string> texts{"", "one", std::string(5000, 'y'), "two"};
    hidl_vec<hidl_vec<uint32_t>> nested{{1, 2, 3}, {}, {4}};
    int same = 0;
    service->echoWords(words, [&](const auto& back) { same += back == words; });
    service->echoColours(colours, [&](const auto& back) { same += back == colours; });
    service->echoStrings(texts, [&](const auto& back) { same += back == texts; });
    service->echoStrings({}, [&](const auto& back) { same += back.size() == 0; });
    service->echoNested(nested, [&](const auto& back) { same += back == nested; });
    EXPECT_EQ(same, 5);
}

// More buffers than one system call can send.
TEST_F(TransportTest, ThousandsOfTexts) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_vec<hidl_string> texts;
    texts.resize(5000);
    for (size_t i = 0; i < texts.size(); ++i) texts[i] = std::to_string(i);
    hidl_vec<hidl_string> long_texts;
    long_texts.resize(600);
    for (size_t i = 0; i < long_texts.size(); ++i) long_texts[i] = std::string(1200 + i % 9, 'a');
    int same = 0;
    EXPECT_TRUE(
            service->echoStrings(texts, [&](const auto& back) { same += back == texts; }).isOk());
    EXPECT_TRUE(service->echoStrings(long_texts, [&](const auto& b) { same += b == long_texts; })
                        .isOk());
    EXPECT_EQ(same, 2);
}

Tree makeTree(uint32_t age) {
    Tree tree;
    tree.age = age;
    tree.branches = {{"oak", {{"leaf", std::array<uint8_t, 16>{1, 2, 3}}, {"", {}}}}, {"bare", {}}};
    tree.labels[0] = "first";
    tree.labels[1] = std::string(3000, 'z');
    return tree;
}

TEST_F(TransportTest, NestedStructuresAndArrays) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    int same = 0;
    hidl_array<uint32_t, 4> array(std::array<uint32_t, 4>{1, 2, 3, 0xffffffff});
    hidl_array<uint16_t, 3, 2> matrix;
    for (uint16_t i = 0; i < 6; ++i) matrix[i / 2u][i % 2u] = static_cast<uint16_t>(i * 1000);
    service->echoArray(array, [&](const auto& back) { same += back == array; });
    service->echoMatrix(matrix, [&](const auto& back) { same += back == matrix; });

    const Tree tree = makeTree(100);
    service->echoTree(tree, [&](const auto& back) { same += back == tree; });
    const hidl_vec<Tree> trees{makeTree(1), makeTree(2), makeTree(3)};
    service->echoTrees(trees, [&](const auto& back) { same += back == trees; });

    Groups groups{};
    for (size_t i = 0; i < 64; ++i) {
        groups.items[i].resize(i);
        for (size_t j = 0; j < i; ++j) groups.items[i][j] = static_cast<uint16_t>(i * j);
    }
    groups.data[254] = 9;
    groups.flags[19] = true;
    service->echoGroups(groups, [&](const auto& back) { same += back == groups; });
    EXPECT_EQ(same, 5);
}

TEST_F(TransportTest, SeveralResults) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    bool called = false;
    service->several(
            7, "text",
            [&](int32_t sum, const hidl_string& text, const hidl_vec<uint32_t>& numbers, bool ok) {
                called = true;
                EXPECT_EQ(sum, 8);
                EXPECT_EQ(text, "text!");
                EXPECT_EQ(numbers, (hidl_vec<uint32_t>{1, 2, 3}));
                EXPECT_TRUE(ok);
            });
    EXPECT_TRUE(called);
}

// A call that is too long fails, and the next one succeeds.
TEST_F(TransportTest, TooLongCallFailsAlone) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_vec<uint8_t> bytes;
    bytes.resize(1024 * 1024);
    auto result = service->echoBytes(bytes, [](const auto&) { FAIL() << "answered"; });
    EXPECT_FALSE(result.isOk());
    EXPECT_FALSE(result.isDeadObject());
    EXPECT_EQ(service->number().withDefault(0), 42);
}

TEST_F(TransportTest, NullCallbackIsRefusedAtOnce) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_FALSE(service->echoString("x", nullptr).isOk());
}

// If an implementation breaks its contract, its caller gets an error and the service logs a line.
TEST_F(TransportTest, ImplementationWithoutAnswer) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    auto result = service->forget([](const hidl_string&) { FAIL() << "answered"; });
    EXPECT_FALSE(result.isOk());
    EXPECT_NE(result.description().find("forget: _hidl_cb not called"), std::string::npos)
            << result.description();
    EXPECT_EQ(serviceLog().size(), 1u);
    EXPECT_EQ(service->number().withDefault(0), 42);
}

TEST_F(TransportTest, ImplementationWithTwoAnswers) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::string text;
    EXPECT_TRUE(service->answerTwice([&](const hidl_string& answer) { text = answer; }).isOk());
    EXPECT_EQ(text, "once");
    EXPECT_EQ(service->number().withDefault(0), 42);
    EXPECT_EQ(serviceLog().size(), 1u);
}

TEST_F(TransportTest, ImplementationThatThrows) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    auto result = service->throwError();
    EXPECT_FALSE(result.isOk());
    EXPECT_NE(result.description().find("thrown on purpose"), std::string::npos);
    EXPECT_EQ(service->number().withDefault(0), 42);
    EXPECT_EQ(serviceLog().size(), 1u);
}

// Oneway calls are served in the order in which they were made.
TEST_F(TransportTest, OnewayCallsKeepTheirOrder) {
    startService(8);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::vector<int32_t> sent;
    for (int32_t i = 0; i < 500; ++i) {
        EXPECT_TRUE((i % 50 == 0 ? service->postSlow(i) : service->post(i)).isOk());
        sent.push_back(i);
    }
    std::vector<int32_t> arrived;
    EXPECT_TRUE(eventually([&] {
        service->posts([&](const hidl_vec<int32_t>& posts) { arrived = posts; });
        return arrived.size() >= sent.size();
    }));
    EXPECT_EQ(arrived, sent);
}

TEST_F(TransportTest, BaseMethods) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->ping().isOk());
    std::vector<std::string> chain;
    service->interfaceChain(
            [&](const hidl_vec<hidl_string>& names) { chain.assign(names.begin(), names.end()); });
    EXPECT_EQ(chain,
              (std::vector<std::string>{"qortv.test@1.0::IEcho", "android.hidl.base@1.0::IBase"}));
    std::string descriptor;
    service->interfaceDescriptor([&](const hidl_string& name) { descriptor = name; });
    EXPECT_EQ(descriptor, "qortv.test@1.0::IEcho");
    size_t hashes = 0;
    service->getHashChain([&](const auto& chainHashes) { hashes = chainHashes.size(); });
    EXPECT_EQ(hashes, 2u);
    int32_t pid = 0;
    service->getDebugInfo([&](const auto& info) {
        pid = info.pid;
        EXPECT_EQ(info.arch, ::android::hidl::base::V1_0::DebugInfo::Architecture::IS_64BIT);
    });
    EXPECT_EQ(pid, mService.pid());
    EXPECT_TRUE(service->debug(hidl_handle(), {}).isOk());
    EXPECT_TRUE(service->setHALInstrumentation().isOk());
    EXPECT_TRUE(service->notifySyspropsChanged().isOk());
    EXPECT_TRUE(service->ping().isOk());
    EXPECT_TRUE(serviceLog().empty());
}

TEST_F(TransportTest, CallAfterTheServiceDied) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->nothing().isOk());
    mService.kill();
    for (int i = 0; i < 3; ++i) {
        auto result = service->number();
        EXPECT_FALSE(result.isOk());
        EXPECT_TRUE(result.isDeadObject());
    }
    EXPECT_EQ(echo(), nullptr);
    startService();
    EXPECT_EQ(echo()->number().withDefault(0), 42);
}

// The service ends while a call waits for its reply.
TEST_F(TransportTest, ServiceDiesInTheMiddle) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    auto result = service->quit();
    EXPECT_TRUE(result.isDeadObject());
}

}  // namespace
}  // namespace qortv::test
