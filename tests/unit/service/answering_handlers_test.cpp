/** The handlers that ask the clients a question, and the one that takes wake locks. */
#include <cstring>
#include <functional>

#include "hhandler/registration.h"
#include "middleware/highlevel.h"
#include "middleware/mheg5.h"
#include "middleware/wakelock.h"
#include "support/fan_out_check.h"

namespace {

std::vector<std::string> gWakeLocks;  // the calls of the power library below

}  // namespace

// The test's own power library, in the place of the platform's.
extern "C" int acquire_wake_lock(int lock, const char* id) {
    gWakeLocks.push_back("acquire " + std::to_string(lock) + " " + id);
    return -1;  // the service ignores it
}
extern "C" int release_wake_lock(const char* id) {
    gWakeLocks.push_back(std::string("release ") + id);
    return -1;
}

namespace {

class ServiceQueryAndroid : public ServiceTest {
  protected:
    ServiceQueryAndroid()
        : handler(registeredHandler<&a_qortvapi_highlevel_register_android_responser,
                                    a_qortvapi_highlevel_android_responser_fct>(
                  hh_a_qortvapi_highlevel_init, 2222)) {
        memset(buffer, 0x55, sizeof(buffer));
    }

    /** Adds clients so that `answers[0]` is that of the first in the order of the map. */
    void addClients(const std::vector<std::function<void(const RecordingClient::queryAndroid_cb&)>>&
                            answers) {
        auto& clients = QorTvApiImpl::getCallbackHandlers();
        for (size_t i = 0; i < answers.size(); ++i) clients[i] = new RecordingClient();
        auto answer = answers.begin();
        for (const auto& entry : clients) {
            static_cast<RecordingClient*>(entry.second.get())->answerQuery = *answer++;
        }
    }

    void ask() { handler(0xf0000001u, opaquePointer(0), 0xf0000002u, &result, buffer, 2); }

    const a_qortvapi_highlevel_android_responser_fct handler;
    uint32_t result = 99;
    uint8_t buffer[8];
};

auto answerWith(int32_t attribute, std::vector<uint8_t> data) {
    return [=](const RecordingClient::queryAndroid_cb& callback) {
        callback(attribute, hidl_vec<uint8_t>(data));
    };
}

TEST_F(ServiceQueryAndroid, isAFanOutLikeTheOthers) {
    checkFanOut({"_query_android_nfy_fct",
                 "hh_qortvapi_highlevel",
                 "queryAndroid(4026531841, 18364758544493064704, 4026531842)",
                 {"e_code = -268435455, -268435454\n"},
                 {}},
                log, [&] { ask(); });
    EXPECT_EQ(result, 99u) << "nobody answered";
    EXPECT_EQ(buffer[0], 0x55);
}

TEST_F(ServiceQueryAndroid, writesTheAnswerAndItsData) {
    addClients({answerWith(-2, {1, 2})});
    log.take();
    ask();
    EXPECT_EQ(result, 0xfffffffeu);
    EXPECT_EQ(buffer[0], 1);
    EXPECT_EQ(buffer[1], 2);
    EXPECT_EQ(buffer[2], 0x55);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{
                      debugLine("hh_qortvapi_highlevel", "_query_android_nfy_fct",
                                "e_code = -268435455, -268435454\n"),
                      debugLine("hh_qortvapi_highlevel", "operator()", "ui4_attr_1 = -2\n")}));
    mTvApiDebug = 0;
    ask();
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceQueryAndroid, keepsTheBufferWhereThereIsNoData) {
    addClients({answerWith(5, {})});
    ask();
    EXPECT_EQ(result, 5u);
    EXPECT_EQ(buffer[0], 0x55);
}

TEST_F(ServiceQueryAndroid, aLaterClientThatDeclinesChangesNothing) {
    addClients({answerWith(5, {7}), answerWith(-1, {8, 8})});
    ask();
    EXPECT_EQ(result, 5u);
    EXPECT_EQ(buffer[0], 7);
    EXPECT_EQ(buffer[1], 0x55);
}

TEST_F(ServiceQueryAndroid, theLastAnswerWins) {
    addClients({answerWith(5, {1, 1, 1}), answerWith(7, {2})});
    ask();
    EXPECT_EQ(result, 7u);
    EXPECT_EQ(buffer[0], 2);
    EXPECT_EQ(buffer[1], 1) << "what an earlier answer wrote behind it stays";
}

TEST_F(ServiceQueryAndroid, doesNotBoundTheCopyByTheLengthOfTheBuffer) {
    addClients({answerWith(5, {1, 2, 3, 4, 5})});  // asked with a length of 2
    ask();
    const uint8_t expected[] = {1, 2, 3, 4, 5, 0x55};
    EXPECT_EQ(memcmp(buffer, expected, sizeof(expected)), 0);
}

class ServiceMimeType : public ServiceTest {
  protected:
    ServiceMimeType() {
        tv.on<&a_qortvapi_mheg5_reg_is_mime_type_support_fct>(
                [this](int32_t, auto its_handler, void*) {
                    handler = its_handler;
                    return 0;
                });
        hh_a_qortvapi_mheg5_init();
    }

    /** Asks clients that answer in this order of the map; returns the flag, which was `before`. */
    uint8_t ask(const std::vector<std::pair<bool, int32_t>>& answers, uint8_t before) {
        auto& clients = QorTvApiImpl::getCallbackHandlers();
        clients.clear();
        for (size_t i = 0; i < answers.size(); ++i) clients[i] = new RecordingClient();
        auto answer = answers.begin();
        for (const auto& entry : clients) {
            static_cast<RecordingClient*>(entry.second.get())->answerMimeType =
                    [answer = *answer++](const auto& callback) {
                        callback(answer.first, answer.second);
                    };
        }
        uint8_t flag = before;
        handler("text/html", &flag, opaquePointer(0), -2);
        return flag;
    }

    a_qortvapi_mheg5_is_mime_type_support_fct handler = nullptr;
};

TEST_F(ServiceMimeType, isAFanOutLikeTheOthers) {
    uint8_t flag = 9;
    checkFanOut({"_mheg5_is_mime_type_support_fct",
                 "hh_qortvapi_mheg5",
                 "isMheg5MimeTypeSupported(\"text/html\", 18364758544493064704, -2)",
                 {"{MHEG5} ps_mime_type = (text/html), pv_tag:18364758544493064704, arg1:-2.\n"},
                 {}},
                log, [&] { handler("text/html", &flag, opaquePointer(0), -2); });
    EXPECT_EQ(flag, 9) << "nobody answered";
}

TEST_F(ServiceMimeType, writesTheAnswer) {
    EXPECT_EQ(ask({{true, 0}}, 9), 1);
    EXPECT_EQ(ask({{false, 0}}, 9), 0);
    EXPECT_EQ(ask({{true, -2}}, 9), 1) << "only -1 declines";
    log.take();
    ask({{true, 3}}, 0);
    EXPECT_EQ(log.take().back(),
              debugLine("hh_qortvapi_mheg5", "operator()", "{MHEG5} b_supported = 1.\n"));
    mTvApiDebug = 0;
    EXPECT_EQ(ask({{true, 0}}, 0), 1);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceMimeType, keepsTheFlagWhereNobodyKnows) {
    EXPECT_EQ(ask({}, 9), 9);
    EXPECT_EQ(ask({{true, -1}, {false, -1}}, 9), 9);
}

TEST_F(ServiceMimeType, theLastAnswerWins) {
    EXPECT_EQ(ask({{true, 0}, {false, 0}}, 9), 0);
    EXPECT_EQ(ask({{true, 0}, {false, -1}}, 9), 1);
}

class ServiceWakeLock : public ServiceTest {
  protected:
    ServiceWakeLock()
        : handler(registeredHandler<&a_qortvapi_wakelock_reg_callback, a_qortvapi_wakelock_nfy_fct>(
                  hh_a_qortvapi_wakelock_init, 1111)) {
        gWakeLocks.clear();
        log.take();
    }

    const a_qortvapi_wakelock_nfy_fct handler;
};

LogLine wakeLockLine(const std::string& text) {
    return debugLine("hh_pcl", "_wakelock_nfy_fct", text);
}

TEST_F(ServiceWakeLock, takesALockAndLogsItAlways) {
    mTvApiDebug = 0;
    for (const uint8_t acquire : {uint8_t{1}, uint8_t{0x80}}) {
        gWakeLocks.clear();
        handler(nullptr, acquire, "tuner");
        EXPECT_EQ(gWakeLocks, std::vector<std::string>{"acquire 1 tuner"});
        EXPECT_EQ(log.take(), (std::vector<LogLine>{wakeLockLine("_wakelock_nfy_fct"),
                                                    wakeLockLine("_wakelock_nfy_fct"),
                                                    wakeLockLine("acquiring wakelock tuner")}));
    }
}

TEST_F(ServiceWakeLock, dropsALockThatWasNeverTaken) {
    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers()[0] = client;
    mTvApiDebug = 0;
    handler(nullptr, 0, "never");
    EXPECT_EQ(gWakeLocks, std::vector<std::string>{"release never"});
    EXPECT_EQ(log.take(), (std::vector<LogLine>{wakeLockLine("_wakelock_nfy_fct"),
                                                wakeLockLine("_wakelock_nfy_fct"),
                                                wakeLockLine("releasing wakelock never")}));
    EXPECT_TRUE(client->calls().empty()) << "no client is asked";
}

TEST_F(ServiceWakeLock, waitsForTheRegistry) {
    // The first line is written before the mutex is taken, everything else after.
    expectToWaitForTheRegistry(
            [&] { handler(nullptr, 1, "tuner"); },
            [&] {
                EXPECT_EQ(nextLines(log), std::vector<LogLine>{wakeLockLine("_wakelock_nfy_fct")});
                EXPECT_TRUE(gWakeLocks.empty());
            });
    EXPECT_EQ(log.take().size(), 2u);
    EXPECT_EQ(gWakeLocks.size(), 1u);
}

}  // namespace
