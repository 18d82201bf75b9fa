#include <cstdlib>
#include <thread>

#include "support/log_capture.h"
#include "support/television_test.h"

namespace {

class TelevisionBoot : public TelevisionTest {
  protected:
    TelevisionBoot() { options.readiness = folder() / "vendor/tmp"; }

    bool ready(const std::string& name) const {
        return std::filesystem::exists(options.readiness + "/" + name);
    }
};

TEST_F(TelevisionBoot, ReadinessFilesComeWithTheLists) {
    startWithDemo();
    EXPECT_TRUE(ready("dtv_svc_is_ready"));
    EXPECT_TRUE(ready("tv_api_is_init"));
    EXPECT_EQ(services(1).size(), 15u);
    tv->stop();
    EXPECT_FALSE(ready("dtv_svc_is_ready"));
    EXPECT_FALSE(ready("tv_api_is_init"));
}

TEST_F(TelevisionBoot, OldReadinessFilesAreRemoved) {
    std::filesystem::create_directories(options.readiness);
    std::ofstream(options.readiness + "/dtv_svc_is_ready") << "old";
    television::Television other(options);
    other.removeReadiness();
    EXPECT_FALSE(ready("dtv_svc_is_ready"));
}

TEST_F(TelevisionBoot, FolderThatCannotBeMadeIsNamed) {
    const LogCapture log;
    folder().write("file", {1});
    options.readiness = folder() / "file/tmp";
    startWithDemo();
    EXPECT_TRUE(log.has(options.readiness, "QORTV_VENDOR_TMP"));
    EXPECT_EQ(services(1).size(), 15u);
}

TEST_F(TelevisionBoot, StartsAndStopsAgain) {
    startWithDemo();
    for (int i = 0; i < 3; ++i) {
        tv->stop();
        tv->stop();
        EXPECT_EQ(a_qortvapi_channellist_get_number_by_filter(1, 0), 0);  // unplugged
        tv->start();
        tv->start();
        EXPECT_EQ(a_qortvapi_channellist_get_number_by_filter(1, 0), 15);
    }
}

TEST_F(TelevisionBoot, OptionsComeFromTheEnvironment) {
    setenv("QORTV_STREAMS", "/some/streams", 1);
    setenv("QORTV_STATE", "/some/state", 1);
    setenv("QORTV_VENDOR_TMP", "/some/vendor", 1);
    television::Options read = television::Options::fromEnvironment();
    EXPECT_EQ(read.streams, "/some/streams");
    EXPECT_EQ(read.state, "/some/state");
    EXPECT_EQ(read.readiness, "/some/vendor");
    unsetenv("QORTV_STATE");
    unsetenv("QORTV_STREAMS");
    setenv("XDG_STATE_HOME", "/xdg", 1);
    setenv("HOME", "/home/somebody", 1);
    read = television::Options::fromEnvironment();
    EXPECT_EQ(read.streams, "");
    EXPECT_EQ(read.state, "/xdg/qortv");
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(television::Options::fromEnvironment().state, "/home/somebody/.local/state/qortv");
}

/** Runs boot_probe, whose exit code shows whether the television started. */
int boot(const std::string& environment) {
    return WEXITSTATUS(std::system((environment + " " + BOOT_PROBE + " 2>/dev/null").c_str()));
}

TEST_F(TelevisionBoot, LinkedIntoAProgramItStartsByItself) {
    stream_generator::writeStreams(streams(), stream_generator::demoPlans());
    std::filesystem::create_directories(options.readiness);
    std::ofstream(options.readiness + "/dtv_svc_is_ready") << "old";
    const std::string environment = "QORTV_STREAMS=" + streams() + " QORTV_STATE=" + options.state +
                                    " QORTV_VENDOR_TMP=" + options.readiness;
    EXPECT_EQ(boot(environment), 15);
    EXPECT_TRUE(ready("dtv_svc_is_ready"));
    std::filesystem::remove_all(options.readiness);
    EXPECT_EQ(boot(environment + " QORTV_TELEVISION=off"), 99);
    EXPECT_FALSE(ready("dtv_svc_is_ready"));
}

}  // namespace
