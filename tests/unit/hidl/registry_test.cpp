// Names of services in the runtime folder.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include <hidl/ServiceManagement.h>
#include <hidl/Services.h>
#include <transport/Registry.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using ::android::hardware::listServices;
using ::android::hardware::ServiceInfo;
using ::android::hardware::transport::Registry;
using ::android::hidl::manager::V1_0::IServiceNotification;

constexpr char kName[] = "qortv.test@1.0::IEcho/default";

using RegistryTest = ServiceTest;

TEST_F(RegistryTest, FolderComesFromTheEnvironment) {
    setenv("QORTV_RUNTIME_DIR", "/a", 1);
    setenv("XDG_RUNTIME_DIR", "/b", 1);
    EXPECT_EQ(Registry::folder(), "/a");
    setenv("QORTV_RUNTIME_DIR", "", 1);
    EXPECT_EQ(Registry::folder(), "/b/qortv");
    unsetenv("QORTV_RUNTIME_DIR");
    EXPECT_EQ(Registry::folder(), "/b/qortv");
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(Registry::folder(), "/run/qortv");
}

TEST_F(RegistryTest, NoServiceNoFolder) {
    LogCapture log;
    EXPECT_EQ(IEcho::tryGetService(), nullptr);
    setenv("QORTV_RUNTIME_DIR", (mFolder + "/absent").c_str(), 1);
    EXPECT_EQ(IEcho::tryGetService(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(mFolder + "/absent"));
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(RegistryTest, FolderIsMadeForItsUserAlone) {
    setenv("QORTV_RUNTIME_DIR", (mFolder + "/made").c_str(), 1);
    startService();
    struct stat status;
    ASSERT_EQ(stat((mFolder + "/made").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
    mService.kill();

    chmod((mFolder + "/made").c_str(), 0755);
    startService();
    ASSERT_EQ(stat((mFolder + "/made").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST_F(RegistryTest, FolderThatCannotBeMade) {
    LogCapture log;
    setenv("QORTV_RUNTIME_DIR", "/proc/none", 1);
    sp<IEcho> service = new EchoService;
    EXPECT_NE(service->registerAsService(), ::android::OK);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_NE(log.lines()[0].find("/proc/none"), std::string::npos);
}

TEST_F(RegistryTest, UnusableNames) {
    LogCapture log;
    sp<IEcho> service = new EchoService;
    EXPECT_EQ(service->registerAsService("a/b"), ::android::BAD_VALUE);
    EXPECT_EQ(service->registerAsService(""), ::android::BAD_VALUE);
    EXPECT_EQ(log.lines().size(), 2u);
}

// A service is found under each interface of its chain, and under no other instance name.
TEST_F(RegistryTest, NamesOfTheWholeChain) {
    sp<ILoud> node = new Node(1);
    ASSERT_EQ(node->registerAsService("100% new"), ::android::OK);
    EXPECT_EQ(ILoud::tryGetService("100% new"), node);
    EXPECT_EQ(INode::tryGetService("100% new"), node);
    EXPECT_EQ(ILoud::tryGetService(), nullptr);
    std::vector<std::string> names;
    ::android::hardware::defaultServiceManager()->list(
            [&](const hidl_vec<hidl_string>& all) { names.assign(all.begin(), all.end()); });
    EXPECT_EQ(names, (std::vector<std::string>{"qortv.test@1.0::ILoud/100% new",
                                               "qortv.test@1.0::INode/100% new"}));
}

TEST_F(RegistryTest, OwnServiceIsTheObjectItself) {
    sp<IEcho> service = new EchoService;
    ASSERT_EQ(service->registerAsService(), ::android::OK);
    EXPECT_EQ(IEcho::getService(), service);
    EXPECT_FALSE(IEcho::getService()->isRemote());
    sp<IEcho> next = new EchoService;
    ASSERT_EQ(next->registerAsService(), ::android::OK);
    EXPECT_EQ(IEcho::getService(), next);
}

TEST_F(RegistryTest, StaleNameIsReportedAndReplaced) {
    startService();
    const pid_t first = mService.pid();
    mService.kill();
    {
        LogCapture log;
        EXPECT_EQ(IEcho::tryGetService(), nullptr);
        ASSERT_EQ(log.lines().size(), 1u);
        EXPECT_NE(log.lines()[0].find(kName), std::string::npos);
        EXPECT_NE(log.lines()[0].find(std::to_string(first)), std::string::npos);
        EXPECT_NE(log.lines()[0].find("gone"), std::string::npos);
    }
    startService();
    EXPECT_NE(echo(), nullptr);
    ASSERT_EQ(serviceLog().size(), 1u);
    EXPECT_NE(serviceLog()[0].find("replaced"), std::string::npos);
    // The socket of the dead process has been removed.
    int sockets = 0;
    for (const auto& file : std::filesystem::directory_iterator(mFolder + "/run")) {
        sockets += file.is_socket() && !file.is_symlink();
    }
    EXPECT_EQ(sockets, 1);
}

TEST_F(RegistryTest, NameOfALivingProcessIsItsOwn) {
    startService();
    LogCapture log;
    sp<IEcho> service = new EchoService;
    EXPECT_EQ(service->registerAsService(), ::android::ALREADY_EXISTS);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_NE(log.lines()[0].find(std::to_string(mService.pid())), std::string::npos);
    EXPECT_TRUE(echo()->isRemote());
}

TEST_F(RegistryTest, OrderlyEndWithdrawsTheNames) {
    Child other({"--brief"});
    EXPECT_EQ(other.readLine(), "registered");
    Registry::Entry entry;
    EXPECT_TRUE(Registry().find(kName, &entry));
    EXPECT_EQ(entry.pid, other.pid());
    other.writeLine("");
    EXPECT_EQ(other.wait(), 0);
    EXPECT_FALSE(Registry().find(kName, &entry));
    for (const auto& file : std::filesystem::directory_iterator(mFolder + "/run")) {
        EXPECT_EQ(file.path().filename(), ".lock");
    }
}

// Files that are not the runtime's are neither removed nor taken for services.
TEST_F(RegistryTest, ForeignFilesInTheFolder) {
    std::ofstream(mFolder + "/run/notes.txt") << "hello";
    std::filesystem::create_symlink("notes.txt", mFolder + "/run/qortv.test@1.0::IEcho%2Fdefault");
    std::filesystem::create_symlink("/etc/1.0123.sock", mFolder + "/run/x%2Fy");
    EXPECT_EQ(IEcho::tryGetService(), nullptr);
    EXPECT_TRUE(listServices().empty());
    startService();
    EXPECT_NE(echo(), nullptr);
    EXPECT_TRUE(std::filesystem::exists(mFolder + "/run/notes.txt"));
}

TEST_F(RegistryTest, GetServiceWaits) {
    std::atomic<bool> found{false};
    std::thread waiting([&] {
        sp<IEcho> service = IEcho::getService();
        found = service != nullptr && service->number().withDefault(0) == 42;
    });
    startService();
    waiting.join();
    EXPECT_TRUE(found);
}

class Notification : public IServiceNotification {
  public:
    Return<void> onRegistration(const hidl_string& fqName, const hidl_string& name,
                                bool preexisting) override {
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.push_back(std::string(fqName) + "/" + std::string(name) +
                        (preexisting ? " before" : " now"));
        return Void();
    }
    std::vector<std::string> seen() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mSeen;
    }

  private:
    std::mutex mMutex;
    std::vector<std::string> mSeen;
};

TEST_F(RegistryTest, NotificationsOfNewAndPresentServices) {
    sp<Notification> early = new Notification;
    ASSERT_TRUE(IEcho::registerForNotifications("default", early));
    startService();
    EXPECT_TRUE(eventually([&] { return early->seen().size() == 1; }));
    EXPECT_EQ(early->seen(), std::vector<std::string>{std::string(kName) + " now"});

    sp<Notification> late = new Notification;
    sp<Notification> other = new Notification;
    ASSERT_TRUE(IEcho::registerForNotifications("", late));
    ASSERT_TRUE(IEcho::registerForNotifications("other", other));
    EXPECT_TRUE(eventually([&] { return late->seen().size() == 1; }));
    EXPECT_EQ(late->seen(), std::vector<std::string>{std::string(kName) + " before"});

    // A new process with the same name is a new registration.
    mService.kill();
    startService();
    EXPECT_TRUE(eventually([&] { return early->seen().size() == 2 && late->seen().size() == 2; }));
    EXPECT_EQ(early->seen()[1], std::string(kName) + " now");
    EXPECT_TRUE(other->seen().empty());
    EXPECT_FALSE(IEcho::registerForNotifications("default", nullptr));
}

TEST_F(RegistryTest, ListTellsProcessesAndThreads) {
    startService(3);
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    std::vector<ServiceInfo> services;
    // A listing waits a second for each process, which a busy one may take longer than.
    ASSERT_TRUE(eventually([&] {
        services = listServices();
        return services.size() == 1 && services[0].threads >= 0;
    }));
    EXPECT_EQ(services[0].interface, "qortv.test@1.0::IEcho");
    EXPECT_EQ(services[0].instance, "default");
    EXPECT_EQ(services[0].pid, mService.pid());
    EXPECT_TRUE(services[0].alive);
    EXPECT_GE(services[0].threads, 1);
    EXPECT_LE(services[0].threads, 3);
    EXPECT_GE(services[0].busyThreads, 0);
    EXPECT_EQ(services[0].maxThreads, 3);
    EXPECT_EQ(services[0].clients, 1);
    mService.kill();
    services = listServices();
    ASSERT_EQ(services.size(), 1u);
    EXPECT_FALSE(services[0].alive);
    EXPECT_EQ(services[0].threads, -1);
}

}  // namespace
}  // namespace qortv::test
