/** The start-up sequence, with a registry of its own for each test. */
#include "startup.h"

#include <hidl/ServiceManagement.h>
#include <unistd.h>

#include "custom/qortvapicustom.h"
#include "middleware/bringup.h"
#include "service_fixture.h"

namespace {

const uint8_t gInitialDebugLevel = mTvApiDebug;

// The customisation library of the tests: what it answers, and when it was asked.
uint32_t gDebugLevel = 0;
std::vector<std::string> gEvents;

}  // namespace

extern "C" uint32_t hh_init_debug_level() {
    gEvents.push_back("debug level");
    return gDebugLevel;
}
extern "C" int32_t hh_qortvapi_tvapi_custom_init() {
    gEvents.push_back("custom init");
    return -1;  // of no consequence
}

namespace {

constexpr char kTag[] = "qortvapi-service";

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
};
const Registration kRegistrations[] = {
        {"", "QorTvApi", "IQorTvApi"},
        {"Config", "QorTvApiConfig", "IQorTvApiConfig"},
        {"Cec", "IQorTvApiCec", "IQorTvApiCec"},
        {"Scan", "QorTvApiScan", "IQorTvApiScan"},
        {"Broadcast", "QorTvApiBroadcastImpl", "IQorTvApiBroadcast"},
        {"Rating", "QorTvApiRatingImpl", "IQorTvApiRating"},
        {"Timeshift", "QorTvApiTimeshiftImpl", "IQorTvApiTimeshift"},
        {"Time", "QorTvApiTimeImpl", "IQorTvApiTime"},
        {"Event", "QorTvApiEventImpl", "IQorTvApiEvent"},
        {"Pvrbrowser", "QorTvApiPvrbrowserImpl", "IQorTvApiPvrbrowser"},
        {"InputSrc", "QorTvApiInputSrcImpl", "QorTvApInputSrc"},
        {"Record", "QorTvApiRecordImpl", "IQorTvApiRecord"},
        {"Multiview", "QorTvApiMultiviewImpl", "IQorTvApiMultiview"},
        {"ChannelList", "QorTvApiChannelListImpl", "IQorTvApiChannelList"},
        {"CI", "IQorTvApiCI", "IQorTvApiCI"},
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

const std::vector<std::string> kInOrder = {"debug level", "middleware", "custom init"};

TEST_F(ServiceStartUpDeathTest, keepsItsOrder) {
    EXPECT_EXIT(
            {
                tv.on<&x_rtos_init>([](const void*) {
                    gEvents.push_back("middleware");
                    return 0;
                });
                startServices();
                exitWith(gEvents ==
                         std::vector<std::string>{"debug level", "middleware", "custom init"});
            },
            testing::ExitedWithCode(0), "");
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
