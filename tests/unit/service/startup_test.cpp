/** The start-up sequence, with a registry of its own for each test. */
#include "startup.h"

#include <hidl/ServiceManagement.h>
#include <stdlib.h>
#include <transport/ThreadPool.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <thread>

#include "custom/qortvapicustom.h"
#include "middleware/bringup.h"
#include "support/service_fixture.h"

namespace {

using ::android::hardware::transport::ThreadPool;
using ::android::hidl::base::V1_0::IBase;

const uint8_t gInitialDebugLevel = mTvApiDebug;

constexpr char kTag[] = "qortvapi-service";
constexpr char kTestTag[] = "startup_test";

/** Logs an event outside the service among the service's own lines. */
void note(const std::string& text) {
    __android_log_write(ANDROID_LOG_INFO, kTestTag, text.c_str());
}

ThreadPool& pool() {
    return ThreadPool::instance();
}

// The debug level that the customisation library of the tests, below, returns.
uint32_t gDebugLevel = 0;

}  // namespace

extern "C" uint32_t hh_init_debug_level() {
    note("debug level, " + std::to_string(pool().maxThreads()) + " threads");
    return gDebugLevel;
}
extern "C" int32_t hh_qortvapi_tvapi_custom_init() {
    note("custom init");
    return -1;  // the service ignores it
}

namespace {

/** Makes every later registration fail: a file stands where the runtime's folder should be. */
void breakRegistry() {
    const std::string runtime = getenv("QORTV_RUNTIME_DIR");
    std::filesystem::remove_all(runtime);
    std::ofstream(runtime).put('\n');
}

class ServiceStartUpDeathTest : public ServiceTest {
  protected:
    ServiceStartUpDeathTest() {
        // Start-up belongs to a process: each test starts up in one of its own.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        setenv("QORTV_RUNTIME_DIR", (folder.path() + "/runtime").c_str(), 1);
        gDebugLevel = 1;
    }

    static void exitWith(bool as_expected) { _exit(as_expected ? 0 : 1); }
};

std::vector<LogLine> infoLines(LogCapture& log) {
    std::vector<LogLine> lines;
    for (LogLine& line : log.take()) {
        if (line.priority == ANDROID_LOG_INFO && line.tag == kTag) lines.push_back(std::move(line));
    }
    return lines;
}

TEST(ServiceStartUp, beginsWithDebuggingOn) {
    EXPECT_EQ(gInitialDebugLevel, 1);
}

/** What is registered, in order. */
struct Registration {
    const char* interface;  // less "IQorTvApi"
    const char* said;       // when it is registered
    const char* failed;     // what the message of a failure names
    const char* created;    // the class, if its constructor writes a debug line
};
const Registration kRegistrations[] = {
        {"", "QorTvApi", "IQorTvApi", "QorTvApiImpl"},
        {"Config", "QorTvApiConfig", "IQorTvApiConfig", "QorTvApiConfigImpl"},
        {"Cec", "IQorTvApiCec", "IQorTvApiCec", nullptr},
        {"Scan", "QorTvApiScan", "IQorTvApiScan", "QorTvApiScanImpl"},
        {"Broadcast", "QorTvApiBroadcastImpl", "IQorTvApiBroadcast", "QorTvApiBroadcastImpl"},
        {"Rating", "QorTvApiRatingImpl", "IQorTvApiRating", "QorTvApiRatingImpl"},
        {"Timeshift", "QorTvApiTimeshiftImpl", "IQorTvApiTimeshift", "QorTvApiTimeshiftImpl"},
        {"Time", "QorTvApiTimeImpl", "IQorTvApiTime", "QorTvApiTimeImpl"},
        {"Event", "QorTvApiEventImpl", "IQorTvApiEvent", "QorTvApiEventImpl"},
        {"Pvrbrowser", "QorTvApiPvrbrowserImpl", "IQorTvApiPvrbrowser", "QorTvApiPvrbrowserImpl"},
        {"InputSrc", "QorTvApiInputSrcImpl", "QorTvApInputSrc", "QorTvApiInputSrcImpl"},
        {"Record", "QorTvApiRecordImpl", "IQorTvApiRecord", "QorTvApiRecordImpl"},
        {"Multiview", "QorTvApiMultiviewImpl", "IQorTvApiMultiview", "QorTvApiMultiviewImpl"},
        {"ChannelList", "QorTvApiChannelListImpl", "IQorTvApiChannelList", nullptr},
        {"CI", "IQorTvApiCI", "IQorTvApiCI", nullptr},
};

bool registersEveryInterface(LogCapture& log) {
    const Services services = startServices();
    std::vector<LogLine> expected;
    bool published = true;
    for (const Registration& row : kRegistrations) {
        expected.push_back(
                {ANDROID_LOG_INFO, kTag, "", std::string("register ") + row.said + " as service"});
        const std::string name =
                std::string("vendor.corvanta.tv.qortvapi@1.0::IQorTvApi") + row.interface;
        published = published && ::android::hardware::details::getServiceBinder(
                                         name.c_str(), "default", false) != nullptr;
    }
    return infoLines(log) == expected && services.size() == expected.size() && published;
}

TEST_F(ServiceStartUpDeathTest, registersEveryInterfaceAndSaysSo) {
    EXPECT_EXIT(exitWith(registersEveryInterface(log)), testing::ExitedWithCode(0), "");
}

/** What happened in order: what the test noted, the constructors, the registrations. */
std::vector<std::string> events(LogCapture& log) {
    std::vector<std::string> events;
    for (const LogLine& line : log.take()) {
        // Other functions of these classes have names of their own.
        if (line.function.rfind("QorTvApi", 0) == 0) events.push_back("create " + line.function);
        if (line.tag == kTag || line.tag == kTestTag) events.push_back(line.text);
    }
    return events;
}

bool keepsItsOrder(LogCapture& log) {
    startServices();
    std::vector<std::string> expected = {"debug level, 20 threads"};
    for (const Registration& row : kRegistrations) {
        if (row.created != nullptr) expected.push_back(std::string("create ") + row.created);
        if (expected.size() == 2) expected.push_back("middleware");
        expected.push_back(std::string("register ") + row.said + " as service");
    }
    expected.push_back("custom init");
    const std::vector<std::string> happened = events(log);
    std::cerr << testing::PrintToString(happened);  // shown where it is not as expected
    return happened == expected;
}

TEST_F(ServiceStartUpDeathTest, keepsItsOrder) {
    EXPECT_EXIT(
            {
                tv.on<&x_rtos_init>([](const void*) {
                    note("middleware");
                    return 0;
                });
                exitWith(keepsItsOrder(log));
            },
            testing::ExitedWithCode(0), "");
}

/** Keeps all threads of the pool busy. The last of them looks for a successor before it begins. */
bool keepsOneThreadForTheCaller() {
    const Services services = startServices();
    static std::atomic<size_t> busy{0};
    constexpr size_t kThreads = 19;  // and the caller
    for (size_t i = 0; i < kThreads; ++i) {
        pool().post([] {
            ++busy;
            for (;;) pause();
        });
    }
    while (busy < kThreads) std::this_thread::yield();
    return pool().threads() == kThreads;
}

TEST_F(ServiceStartUpDeathTest, keepsOneThreadForTheCaller) {
    EXPECT_EXIT(exitWith(keepsOneThreadForTheCaller()), testing::ExitedWithCode(0), "");
}

TEST(ServiceRelease, dropsTheLastOneFirst) {
    struct Recorded : IBase {
        Recorded(int its_number, std::vector<int>& its_released)
            : number(its_number), released(its_released) {}
        ~Recorded() override { released.push_back(number); }
        const int number;
        std::vector<int>& released;
    };
    std::vector<int> released;
    Services services;
    for (int number = 1; number <= 3; ++number) services.push_back(new Recorded(number, released));
    releaseInReverse(services);
    EXPECT_EQ(released, (std::vector<int>{3, 2, 1}));
    EXPECT_TRUE(services.empty());
}

TEST_F(ServiceStartUpDeathTest, takesTheLowByteOfTheDebugLevel) {
    for (const auto& [level, byte] :
         {std::pair<uint32_t, uint8_t>{256, 0}, {257, 1}, {0xff, 0xff}}) {
        gDebugLevel = level;
        EXPECT_EXIT(
                {
                    startServices();
                    exitWith(mTvApiDebug == byte);
                },
                testing::ExitedWithCode(0), "")
                << level;
    }
}

std::string gBreakingLine;

/** Breaks the registry once `gBreakingLine` is logged. */
void breakRegistryAfterLine(const __android_logger_data* data, const char* message) {
    __android_log_stderr_logger(data, message);
    if (message == gBreakingLine) breakRegistry();
}

class ServiceRegistrationDeathTest : public ServiceStartUpDeathTest,
                                     public testing::WithParamInterface<size_t> {};

TEST_P(ServiceRegistrationDeathTest, endsWhenItFails) {
    const size_t row = GetParam();
    EXPECT_DEATH(
            {
                __android_log_set_logger(breakRegistryAfterLine);
                if (row == 0) {
                    breakRegistry();
                } else {
                    gBreakingLine =
                            std::string("register ") + kRegistrations[row - 1].said + " as service";
                }
                startServices();
            },
            std::string("qortvapi-service.*Could not register ") + kRegistrations[row].failed +
                    " as service, status=-[0-9]+");
}

INSTANTIATE_TEST_SUITE_P(, ServiceRegistrationDeathTest,
                         testing::Range(size_t{0}, std::size(kRegistrations)));

TEST_F(ServiceStartUpDeathTest, registersWithoutAMiddleware) {
    EXPECT_EXIT(
            {
                tv.on<&x_rtos_init>([](const void*) { return -1; });
                tv.on<&handle_init>([](uint32_t, void**, uint32_t*) { return -1; });
                tv.on<&os_init>([](void*, uint32_t) { return -1; });
                const Services services = startServices();
                exitWith(infoLines(log).size() == services.size());
            },
            testing::ExitedWithCode(0), "");
}

}  // namespace
