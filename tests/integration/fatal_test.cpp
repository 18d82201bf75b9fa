// What ends the process by rule: a message that names the rule, a supervisor that starts the
// service again, and applications that find it again by themselves.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

#include "qortv/connect.h"
#include "support.h"

namespace integration {
namespace {

using android::hardware::hidl_vec;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;
using Bytes = hidl_vec<uint8_t>;

Bytes bytes(size_t count) {
    Bytes result;
    result.resize(count);
    return result;
}

/** A supervised service and an application that listens to it. */
class IntegrationFatal : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto& [name, value] : mEnvironment) setenv(name.c_str(), value.c_str(), 1);
        mServe = std::make_unique<Process>(
                std::vector<std::string>{QORTV_SOURCE_DIR "/scripts/serve"}, mEnvironment);
        mWatch = std::make_unique<Process>(
                std::vector<std::string>{QORTVCTL, "--timeout", std::to_string(kPatience.count()),
                                         "watch"},
                mEnvironment);
        ASSERT_TRUE(eventually([&] { return heard() > 0; })) << mServe->err();
    }
    void TearDown() override {
        mServe->signal(SIGTERM);
        EXPECT_EQ(mServe->wait(), 0);
    }

    size_t heard() { return countOf("notifyDateTime", mWatch->out()); }

    /** Makes the call, which ends the service; then everything must be as before. */
    void expectDeathAndRecovery(
            const std::string& rule,
            const std::function<android::hardware::details::return_status()>& call) {
        const size_t deaths = countOf("starting it again", mServe->err());
        EXPECT_FALSE(call().isOk()) << "the caller learns that nothing came back";
        EXPECT_TRUE(eventually([&] { return countOf(rule, mServe->err() + mServe->out()) > 0; }))
                << rule << " is not in:\n"
                << mServe->err();
        EXPECT_TRUE(eventually([&] {
            return countOf("starting it again", mServe->err()) == deaths + 1;
        })) << mServe->err();
        const size_t before = heard();
        EXPECT_TRUE(eventually([&] { return heard() > before; }))
                << "the application does not hear the new service: " << mWatch->err();
    }

    TemporaryFolder mFolder;
    const Environment mEnvironment{{"QORTV_BUILD", QORTV_BINARY_DIR},
                                   {"TMPDIR", mFolder.path()},
                                   {"QORTV_RUNTIME_DIR", mFolder / "runtime"}};
    std::unique_ptr<Process> mServe;
    std::unique_ptr<Process> mWatch;
};

TEST_F(IntegrationFatal, OversizeInputNamesItsRuleAndTheServiceComesBack) {
    expectDeathAndRecovery(
            "a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info: bounded copy of 13 "
            "bytes "
            "into a block of 12",
            [] {
                return android::hardware::details::return_status(
                        qortv::connect<IQorTvApiChannelList>()
                                ->a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info(
                                        1, 0, 0, bytes(13)));
            });
    expectDeathAndRecovery("bounded copy of 5633 bytes into a block of 5632", [] {
        return android::hardware::details::return_status(
                qortv::connect<IQorTvApi>()->a_hidl_a_qortvapi_hbbtv_exchange_data(
                        bytes(5633), [](const Bytes&, int32_t) {}));
    });
}

TEST_F(IntegrationFatal, InputThatIsOnlyOddEndsNothing) {
    const auto core = qortv::connect<IQorTvApi>();
    bool answered = false;
    const auto exchange = core->a_hidl_a_qortvapi_hbbtv_exchange_data(
            bytes(5636), [&](const Bytes&, int32_t) { answered = true; });
    EXPECT_FALSE(exchange.isOk());
    EXPECT_FALSE(answered);
    core->a_hidl_a_qortvapi_util_get("name", 1, bytes(100), 1,
                                     [&](uint64_t, const Bytes& data, int32_t) {
                                         answered = true;
                                         EXPECT_EQ(data.size(), 1U);
                                     });
    EXPECT_TRUE(answered);
    EXPECT_EQ(countOf("starting it again", mServe->err()), 0U) << mServe->err();
}

}  // namespace
}  // namespace integration
