/** Wake locks on Linux: in the kernel's files, or in memory where there are none. */
#include <gtest/gtest.h>
#include <hardware_legacy/power.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/wake_locks.h"
#include "support/log_capture.h"

namespace {

using Names = std::set<std::string>;

LogLine infoLine(const std::string& text) {
    return {ANDROID_LOG_INFO, "power", "", text};
}

class PlatformWakeLocks : public testing::Test {
  protected:
    PlatformWakeLocks() {
        char pattern[] = "/tmp/qortv-wake-XXXXXX";
        folder = mkdtemp(pattern);
    }
    ~PlatformWakeLocks() override { std::filesystem::remove_all(folder); }

    std::string content(const char* name) const {
        std::stringstream text;
        text << std::ifstream(folder + "/" + name).rdbuf();
        return text.str();
    }

    std::string folder;
    LogCapture log;
};

TEST_F(PlatformWakeLocks, areKeptInMemoryByName) {
    host::WakeLocks locks(folder);
    EXPECT_EQ(locks.acquire("tuner"), 5);
    EXPECT_EQ(locks.acquire("record"), 6);
    EXPECT_EQ(locks.held(), (Names{"record", "tuner"}));
    EXPECT_EQ(log.take(), (std::vector<LogLine>{infoLine("wake lock tuner taken"),
                                                infoLine("wake lock record taken")}));
    EXPECT_EQ(locks.acquire("tuner"), 5) << "taken twice, held once";
    EXPECT_TRUE(log.take().empty()) << "nothing has changed";
    EXPECT_EQ(locks.release("tuner"), 5);
    EXPECT_EQ(locks.held(), Names{"record"});
    EXPECT_EQ(log.take(), std::vector<LogLine>{infoLine("wake lock tuner dropped")});
}

TEST_F(PlatformWakeLocks, thatNobodyHoldsCannotBeDropped) {
    host::WakeLocks locks(folder);
    EXPECT_EQ(locks.release("never"), -EINVAL);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(PlatformWakeLocks, goToTheKernelWhereItHasThem) {
    std::ofstream(folder + "/wake_lock").flush();
    std::ofstream(folder + "/wake_unlock").flush();
    host::WakeLocks locks(folder);
    EXPECT_EQ(locks.acquire("tuner"), 5);
    EXPECT_EQ(content("wake_lock"), "tuner");
    EXPECT_EQ(content("wake_unlock"), "");
    EXPECT_EQ(locks.release("record"), 6);
    EXPECT_EQ(content("wake_unlock"), "record");
    EXPECT_TRUE(locks.held().empty());
}

TEST_F(PlatformWakeLocks, reportWhatTheKernelRefuses) {
    std::filesystem::create_symlink("/dev/full", folder + "/wake_lock");
    std::filesystem::create_symlink("/dev/full", folder + "/wake_unlock");
    host::WakeLocks locks(folder);
    EXPECT_EQ(locks.acquire("tuner"), -ENOSPC);
    EXPECT_EQ(locks.release("tuner"), -ENOSPC);
    EXPECT_TRUE(locks.held().empty());
}

TEST_F(PlatformWakeLocks, areWhatThePowerLibraryWorksOn) {
    if (access("/sys/power/wake_lock", F_OK) == 0) {
        GTEST_SKIP() << "this kernel has wake locks: a test must not keep the machine awake";
    }
    EXPECT_EQ(acquire_wake_lock(PARTIAL_WAKE_LOCK, "tuner"), 5);
    EXPECT_EQ(host::systemWakeLocks().held(), Names{"tuner"});
    EXPECT_EQ(release_wake_lock("tuner"), 5);
    EXPECT_EQ(release_wake_lock("tuner"), -EINVAL);
    EXPECT_TRUE(host::systemWakeLocks().held().empty());
}

}  // namespace
