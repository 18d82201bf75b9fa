// Which users a process speaks to.
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <transport/Trust.h>

#include "RawClient.h"
#include "ServiceProcess.h"

namespace qortv::test {
namespace {

// Refusals of other users. If the test runs as root, the client gives root up; else the service
// takes itself for a process of another user.
class StrangerTest : public ServiceTest {};

TEST_F(StrangerTest, ServiceRefusesAnotherUser) {
    const bool root = geteuid() == 0;
    if (root) {
        startService();
        chmod(mFolder.c_str(), 0755);
        chmod((mFolder + "/run").c_str(), 0755);
        chmod(RawClient::socketIn(mFolder + "/run").c_str(), 0777);
    } else {
        startService(4, {std::to_string(geteuid() + 1)});
    }
    const pid_t stranger = fork();
    if (stranger == 0) {
        if (root && (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0)) {
            _exit(3);
        }
        RawClient client(mFolder + "/run");
        if (!client.connectOnly()) _exit(2);
        _exit(RawClient::isClosed(client.notices()) ? 0 : 1);
    }
    int status = 0;
    waitpid(stranger, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_TRUE(eventually([&] { return !serviceLog().empty(); }));
    ASSERT_EQ(serviceLog().size(), 1u);
    EXPECT_NE(serviceLog()[0].find("not trusted"), std::string::npos);
    EXPECT_NE(serviceLog()[0].find(root ? "user 65534" : std::to_string(geteuid())),
              std::string::npos);
}

// Here the service is the other user's: as root it gives root up; else the client takes itself for
// a process of another user.
TEST_F(StrangerTest, ClientRefusesAnotherUsersService) {
    if (geteuid() == 0) {
        ASSERT_EQ(chown(mFolder.c_str(), 65534, 65534), 0);
        ASSERT_EQ(chown((mFolder + "/run").c_str(), 65534, 65534), 0);
        startService(4, {"-1", "65534"});
    } else {
        startService();
        ::android::hardware::transport::setOwnUidForTest(geteuid() + 1);
    }
    LogCapture log;
    EXPECT_EQ(echo(), nullptr);
    ::android::hardware::transport::setOwnUidForTest(static_cast<uid_t>(-1));
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_NE(log.lines()[0].find("not trusted"), std::string::npos);
}

TEST(TrustTest, WhoIsTrusted) {
    using ::android::hardware::transport::isTrusted;
    EXPECT_TRUE(isTrusted(1000, 1000, nullptr));
    EXPECT_TRUE(isTrusted(0, 1000, nullptr));
    EXPECT_FALSE(isTrusted(1001, 1000, nullptr));
    EXPECT_FALSE(isTrusted(1001, 0, ""));
    EXPECT_TRUE(isTrusted(1001, 1000, "1001"));
    EXPECT_TRUE(isTrusted(1001, 1000, "7, 1001"));
    EXPECT_TRUE(isTrusted(1001, 1000, "1001,7"));
    EXPECT_FALSE(isTrusted(1001, 1000, "100,1,10011"));
    EXPECT_FALSE(isTrusted(1001, 1000, "all"));
    EXPECT_FALSE(isTrusted(1001, 1000, "1001x"));
}

}  // namespace
}  // namespace qortv::test
