// What applications answer to the middleware's questions, and requests that answer nothing.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>

#include "qortv/connect.h"
#include "support.h"

namespace integration {
namespace {

using android::hardware::hidl_vec;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;

constexpr char kNobody[] = "99 ";
constexpr char kUnknown[] = "9";

/** A service whose middleware the test plays. */
class IntegrationAnswers : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* file : {"/dtv_svc_is_ready", "/tv_api_is_init"}) {
            writeFile(mStation.vendorFolder() + file, "");
        }
        ASSERT_EQ(mkfifo(pipe().c_str(), 0600), 0);
        mService = std::make_unique<Process>(std::vector<std::string>{INTEGRATION_ASKING_SERVICE},
                                             mStation.environment);
        ASSERT_TRUE(waitForLog("register QorTvApiChannelListImpl"));
        mStation.enter();
    }
    void TearDown() override {
        EXPECT_TRUE(mService->running()) << log();
        EXPECT_EQ(countOf("Sanitizer", log()), 0U) << log();
        EXPECT_EQ(countOf(": runtime error: ", log()), 0U) << log();
    }

    std::string pipe() const { return mStation.vendorFolder() + "/ask"; }
    std::string log() { return mService->err(); }
    bool waitForLog(const std::string& text) {
        return eventually([&] { return countOf(text, log()) > 0; });
    }

    /** Starts a client that answers so; it is registered when this returns. */
    Process& addClient(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), INTEGRATION_ANSWERING_CLIENT);
        mClients.push_back(std::make_unique<Process>(arguments, mStation.environment));
        Process& client = *mClients.back();
        EXPECT_TRUE(eventually([&] { return client.out() == "ready\n"; })) << client.err();
        return client;
    }

    /** What the middleware receives. */
    std::string ask(const std::string& command) {
        const size_t before = countOf("\n", mService->out());
        std::ofstream(pipe()) << command << std::endl;
        EXPECT_TRUE(eventually([&] { return countOf("\n", mService->out()) > before; })) << log();
        std::string out = mService->out();
        out.pop_back();
        return out.substr(out.rfind('\n') + 1);
    }

    /** Of the clients, counted in the order of their registration, the one that is asked last. */
    size_t lastAsked() {
        std::istringstream cookies(ask("clients"));
        size_t last = 0;
        while (cookies >> last) {
        }
        return last;
    }

    /** Lines of a handler that say that a call of a client failed. */
    size_t failures(const std::string& handler, const std::string& reason) {
        size_t count = 0;
        std::istringstream lines(log());
        for (std::string line; std::getline(lines, line);) {
            if (countOf("<" + handler + ":", line) > 0 && countOf(reason, line) > 0) ++count;
        }
        return count;
    }

    Station mStation;
    std::unique_ptr<Process> mService;
    std::vector<std::unique_ptr<Process>> mClients;
};

TEST_F(IntegrationAnswers, NobodyLeavesTheMiddlewaresValues) {
    EXPECT_EQ(ask("android"), kNobody);
    EXPECT_EQ(ask("mime"), kUnknown);
}

TEST_F(IntegrationAnswers, AQuestionReachesAClientAndItsAnswerTheMiddleware) {
    Process& client = addClient({"android", "5", "some data"});
    EXPECT_EQ(ask("android"), "5 some data");
    EXPECT_EQ(client.out(), "ready\nqueryAndroid(21, 0, 22)\n");
    Process& other = addClient({"mime", "1", "0"});
    EXPECT_EQ(ask("mime"), "1");
    EXPECT_EQ(other.out(), "ready\nisMheg5MimeTypeSupported(\"text/html\", 0, 23)\n");
}

TEST_F(IntegrationAnswers, AClientThatDeclinesChangesNothingWhereverItStands) {
    addClient({"android", "-1", "declined"});
    addClient({"android", "5", "five"});
    addClient({"android", "-1", "declined"});
    EXPECT_EQ(ask("android"), "5 five");
    EXPECT_EQ(failures("_query_android_nfy_fct", ""), 0U);
}

TEST_F(IntegrationAnswers, WhereEverybodyDeclinesNothingIsWritten) {
    addClient({"android", "-1", "declined"});
    addClient({"android", "-1", "declined"});
    EXPECT_EQ(ask("android"), kNobody);
}

TEST_F(IntegrationAnswers, TheLastAnswerWins) {
    const std::vector<std::string> answers = {"5", "7", "6"};
    for (const auto& answer : answers) addClient({"android", answer, "of " + answer});
    const std::string last = answers[lastAsked()];
    EXPECT_EQ(ask("android"), last + " of " + last);
    for (const auto& client : mClients) EXPECT_EQ(countOf("queryAndroid", client->out()), 1U);
}

TEST_F(IntegrationAnswers, TheLastMimeTypeAnswerWins) {
    addClient({"mime", "1", "0"});
    addClient({"mime", "0", "-2"});
    EXPECT_EQ(ask("mime"), lastAsked() == 0 ? "1" : "0");
}

TEST_F(IntegrationAnswers, AMimeTypeThatNobodyKnowsIsLeftToTheMiddleware) {
    addClient({"mime", "1", "-1"});
    EXPECT_EQ(ask("mime"), kUnknown);
    addClient({"mime", "0", "0"});
    addClient({"mime", "1", "-1"});
    EXPECT_EQ(ask("mime"), "0");
}

TEST_F(IntegrationAnswers, AClientThatDiesWhileItIsAskedIsLoggedAndTheOthersAreAsked) {
    addClient({"android", "5", "five"});
    Process& dying = addClient({"dies"});
    addClient({"android", "5", "five"});
    EXPECT_EQ(ask("android"), "5 five");
    EXPECT_EQ(dying.wait(), 128 + SIGKILL);
    EXPECT_EQ(failures("_query_android_nfy_fct", "DEAD_OBJECT"), 1U) << log();
    for (const size_t i : {0, 2}) EXPECT_EQ(countOf("queryAndroid", mClients[i]->out()), 1U);
    EXPECT_TRUE(waitForLog("> serviceDied 1"));
    EXPECT_EQ(ask("android"), "5 five");
    EXPECT_EQ(failures("_query_android_nfy_fct", ""), 1U) << "it is asked no more";
}

TEST_F(IntegrationAnswers, AClientThatDiesLeavesTheMiddlewaresValues) {
    addClient({"dies"});
    EXPECT_EQ(ask("mime"), kUnknown);
    EXPECT_EQ(failures("_mheg5_is_mime_type_support_fct", "DEAD_OBJECT"), 1U) << log();
}

TEST_F(IntegrationAnswers, AClientThatNeverAnswersIsLoggedAndTheOthersAreAsked) {
    addClient({"silent"});
    EXPECT_EQ(ask("android"), kNobody);
    EXPECT_EQ(ask("mime"), kUnknown);
    EXPECT_EQ(failures("_query_android_nfy_fct", "EX_TRANSACTION_FAILED"), 1U) << log();
    EXPECT_EQ(failures("_mheg5_is_mime_type_support_fct", "EX_TRANSACTION_FAILED"), 1U) << log();
    EXPECT_TRUE(mClients[0]->running());

    addClient({"android", "5", "five"});
    addClient({"mime", "1", "0"});
    EXPECT_EQ(ask("android"), "5 five");
    EXPECT_EQ(ask("mime"), "1");
}

TEST_F(IntegrationAnswers, AWakeLockIsTakenAndDroppedAndNobodyIsAsked) {
    if (access("/sys/power/wake_lock", F_OK) == 0) {
        GTEST_SKIP() << "this kernel has wake locks: a test must not keep the machine awake";
    }
    Process& client = addClient({"silent"});
    EXPECT_EQ(ask("wakelock 0 never"), "done");
    EXPECT_EQ(countOf("wake lock", log()), 0U) << "nothing was held";
    EXPECT_EQ(ask("wakelock 1 tuner"), "done");
    EXPECT_EQ(countOf("> acquiring wakelock tuner", log()), 1U);
    EXPECT_EQ(countOf("wake lock tuner taken", log()), 1U);
    EXPECT_EQ(ask("wakelock 0 tuner"), "done");
    EXPECT_EQ(countOf("wake lock tuner dropped", log()), 1U);
    EXPECT_EQ(client.out(), "ready\n");
}

// A connection attribute is written in the message that the client sent, which must bear it.
TEST_F(IntegrationAnswers, AConnectionAttributeComesBackAsTheMiddlewareWroteIt) {
    const auto service = qortv::connect<IQorTvApi>();
    for (const uint32_t length : {0U, 1U, 8U, 100'000U}) {
        const hidl_vec<uint8_t> sent = std::vector<uint8_t>(length, 0x41);
        int answers = 0;
        qortv::check(service->a_hidl_c_svctx_set_conn_attr(
                             1, 2, length, sent,
                             [&](const hidl_vec<uint8_t>& answer, int32_t result) {
                                 ++answers;
                                 EXPECT_EQ(std::vector<uint8_t>(answer),
                                           std::vector<uint8_t>(length, 0x42));
                                 EXPECT_EQ(result, 7);
                             }),
                     "set_conn_attr");
        EXPECT_EQ(answers, 1);
    }
}

/** The real service. */
class IntegrationCore : public testing::Test {
  protected:
    void SetUp() override {
        mStation.startBareAndWait();
        mStation.enter();
        mService = qortv::connect<IQorTvApi>();
    }

    Station mStation;
    android::sp<IQorTvApi> mService;
};

TEST_F(IntegrationCore, ARequestThatIsNotImplementedEndsWithAClearError) {
    const auto never = [](const auto&...) { ADD_FAILURE() << "an answer out of nothing"; };
    using Request = std::function<android::hardware::Return<void>()>;
    const std::pair<const char*, Request> requests[] = {
            {"hh_c_opera_hbbtv_stm_get_audio",
             [&] { return mService->a_hidl_c_opera_hbbtv_stm_get_audio(never); }},
            {"hh_c_opera_hbbtv_stm_get_audio_lang",
             [&] { return mService->a_hidl_c_opera_hbbtv_stm_get_audio_lang(1, never); }},
            {"hh_c_opera_hbbtv_stm_get_audio_num",
             [&] { return mService->a_hidl_c_opera_hbbtv_stm_get_audio_num(never); }},
            {"hh_c_dai_tvapi_exchange_data",
             [&] { return mService->a_hidl_c_dai_tvapi_exchange_data({}, never); }},
    };
    for (const auto& [handler, request] : requests) {
        SCOPED_TRACE(handler);
        for (size_t times = 1; times <= 3; ++times) {
            const auto status = request();
            EXPECT_FALSE(status.isOk());
            EXPECT_FALSE(status.isDeadObject());
            EXPECT_NE(status.description().find(std::string(handler).substr(3)), std::string::npos)
                    << "names what was called: " << status.description();
        }
        EXPECT_EQ(countOf(std::string("<") + handler + ":", mStation.log()), 3U);
        // The same connection goes on.
        EXPECT_EQ(qortv::valueOf(mService->a_hidl_a_qortvapi_enter_special_mode(1), "enter"), 0);
    }
    EXPECT_TRUE(mStation.service().running());
}

TEST_F(IntegrationCore, AnInputEventReachesTheSocket) {
    EXPECT_EQ(qortv::valueOf(mService->a_hidl_send_key_and_mouse(0, 1, 2, 3, 4, 5, 6, 7), "send"),
              -1);
    EXPECT_EQ(countOf("> connect error", mStation.log()), 1U);

    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, (mStation.vendorFolder() + "/DFBInput").c_str(),
                 sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    EXPECT_EQ(qortv::valueOf(mService->a_hidl_send_key_and_mouse(2, 1, 2, 3, 4, 5, 6, 7), "send"),
              0);
    const int peer = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    int32_t event[6] = {};
    EXPECT_EQ(recv(peer, event, sizeof event, MSG_WAITALL), 20);
    EXPECT_EQ(std::vector<int32_t>(event, event + 5), (std::vector<int32_t>{2, 3, 4, 6, 7}));
    close(peer);
    close(listener);
}

}  // namespace
}  // namespace integration
