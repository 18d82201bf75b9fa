/** The start-up sequence, with a registry of its own for each test. */
#include "startup.h"

#include <unistd.h>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCI.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

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

bool registersEveryInterface(LogCapture& log) {
    const Services services = startServices();
    const std::vector<LogLine> expected = {
            {ANDROID_LOG_INFO, kTag, "", "register QorTvApi as service"},
            {ANDROID_LOG_INFO, kTag, "", "register QorTvApiChannelListImpl as service"},
            {ANDROID_LOG_INFO, kTag, "", "register IQorTvApiCI as service"},
    };
    return infoLines(log) == expected && services.size() == expected.size() &&
           IQorTvApi::getService("default") != nullptr &&
           IQorTvApiChannelList::getService("default") != nullptr &&
           IQorTvApiCI::getService("default") != nullptr;
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

TEST_F(ServiceStartUpDeathTest, endsWhenTheFirstRegistrationFails) {
    EXPECT_DEATH(
            {
                __android_log_set_logger(__android_log_stderr_logger);
                breakRegistry();
                startServices();
            },
            "qortvapi-service.*Could not register IQorTvApi as service, status=-[0-9]+");
}

/** Breaks the registry once `Text` is logged. */
template <const char* Text>
void breakRegistryAfter(const __android_logger_data* data, const char* message) {
    __android_log_stderr_logger(data, message);
    if (std::string(message) == Text) breakRegistry();
}

constexpr char kFirstIsRegistered[] = "register QorTvApi as service";
constexpr char kSecondIsRegistered[] = "register QorTvApiChannelListImpl as service";

TEST_F(ServiceStartUpDeathTest, endsWhenALaterRegistrationFails) {
    EXPECT_DEATH(
            {
                __android_log_set_logger(breakRegistryAfter<kFirstIsRegistered>);
                startServices();
            },
            "qortvapi-service.*Could not register IQorTvApiChannelList as service, "
            "status=-[0-9]+");
}

TEST_F(ServiceStartUpDeathTest, endsWhenTheLastRegistrationFails) {
    EXPECT_DEATH(
            {
                __android_log_set_logger(breakRegistryAfter<kSecondIsRegistered>);
                startServices();
            },
            "qortvapi-service.*Could not register IQorTvApiCI as service, status=-[0-9]+");
}

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
