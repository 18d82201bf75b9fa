/** A client's shared buffer in the service: opening, mapping, committing. */
#include "QorTvApiShareMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "support/fake_ion.h"
#include "support/service_fixture.h"

namespace {

using ::android::hardware::hidl_handle;
using ::qortvapi::QorTvApiShareMemory;

constexpr char kTag[] = "QorTvApiChannelListImpl(service)";
constexpr char kConstructor[] = "QorTvApiShareMemory";

size_t openDescriptors() {
    size_t count = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator("/proc/self/fd")) {
        ++count;
    }
    return count;
}

std::string numbers(const std::string& front, int first, int second) {
    return front + std::to_string(first) + " " + std::to_string(second);
}

std::string devices(int ion_fd, int share_fd) {
    return "2, m_ion_fd:" + std::to_string(ion_fd) + ", m_share_fd:" + std::to_string(share_fd);
}

class ServiceShareMemory : public ServiceTest {
  protected:
    ServiceShareMemory() {
        gIon = FakeIon();
        mTvApiDebug = 0;
    }
};

TEST_F(ServiceShareMemory, cannotBeShrunkUnderTheMapping) {
    const int file = memfd_create("shrinking", MFD_ALLOW_SEALING);
    ASSERT_EQ(ftruncate(file, 8192), 0);
    native_handle_t* handle = native_handle_create(1, 0);
    handle->data[0] = file;
    {
        QorTvApiShareMemory memory(hidl_handle(handle), 8192);
        auto* bytes = static_cast<uint8_t*>(memory.getPointer());
        ASSERT_NE(bytes, nullptr);
        EXPECT_NE(ftruncate(file, 0), 0);
        bytes[8191] = 1;  // would end the process behind the end of the file
    }
    native_handle_close(handle);
    native_handle_delete(handle);
}

TEST_F(ServiceShareMemory, showsTheClientWhatIsWritten) {
    const size_t before = openDescriptors();
    const SharedBuffer buffer(4);
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        EXPECT_EQ(memory.getStatus(), 0);
        void* address = memory.getPointer();
        ASSERT_NE(address, nullptr);
        EXPECT_EQ(memory.getPointer(), address);
        memcpy(address, "\1\2\3\4", 4);
        EXPECT_EQ(buffer.bytes(), (std::vector<uint8_t>{1, 2, 3, 4}));
        memory.commit();
    }
    EXPECT_EQ(buffer.bytes(), (std::vector<uint8_t>{1, 2, 3, 4}));
    EXPECT_EQ(openDescriptors(), before + 1) << "only the client's own is left";
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceShareMemory, logsItsWayWhileDebuggingIsOn) {
    mTvApiDebug = 1;
    const SharedBuffer buffer(4);
    int ion_fd;
    int share_fd;
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        ion_fd = gIon.device_fds.at(0);
        share_fd = gIon.imported_fds.at(0);
        EXPECT_GE(share_fd, 0);
    }
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine(kTag, kConstructor, devices(ion_fd, share_fd)),
                                    debugLine(kTag, "commit", numbers("commit ", ion_fd, share_fd)),
                                    debugLine(kTag, "~QorTvApiShareMemory", "~")}));
}

TEST_F(ServiceShareMemory, isUnusableWithoutTheDevice) {
    gIon.failing_open = 1;
    const SharedBuffer buffer(4);
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        EXPECT_LT(memory.getStatus(), 0);
    }
    EXPECT_EQ(gIon.events, std::vector<std::string>{"open 1"});
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine(kTag, kConstructor, "ion_open failed:-1")}));
}

TEST_F(ServiceShareMemory, reportsAHandleWithoutADescriptorAndFailsToMapIt) {
    native_handle_t* only_an_integer = native_handle_create(0, 1);
    only_an_integer->data[0] = STDIN_FILENO;  // an integer is no descriptor
    for (const hidl_handle& handle : {hidl_handle(), hidl_handle(only_an_integer)}) {
        gIon = FakeIon();
        QorTvApiShareMemory memory(handle, 4);
        EXPECT_EQ(memory.getStatus(), 0);
        EXPECT_EQ(gIon.imported_fds, std::vector<int>{-1});
        EXPECT_EQ(memory.getPointer(), nullptr);
        EXPECT_EQ(log.take(),
                  (std::vector<LogLine>{debugLine(kTag, kConstructor, "getNativeHandle null"),
                                        mapFailure(EBADF)}));
    }
    native_handle_delete(only_an_integer);
}

TEST_F(ServiceShareMemory, goesOnAfterAFailedImport) {
    gIon.import_result = -22;
    const SharedBuffer buffer(4);
    QorTvApiShareMemory quiet(buffer.handle(), 4);
    EXPECT_EQ(quiet.getStatus(), 0);
    EXPECT_NE(quiet.getPointer(), nullptr);
    EXPECT_TRUE(log.take().empty());

    mTvApiDebug = 1;
    errno = EINVAL;
    QorTvApiShareMemory memory(buffer.handle(), 4);
    const int ion_fd = gIon.device_fds.at(1);
    const int share_fd = gIon.imported_fds.at(1);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine(kTag, kConstructor,
                                              numbers("ion_import failed:", ion_fd, share_fd) +
                                                      " ret=-22(" + strerror(EINVAL) + ")"),
                                    debugLine(kTag, kConstructor, devices(ion_fd, share_fd))}));
}

TEST_F(ServiceShareMemory, keepsTheValueOfAFailedMapping) {
    const SharedBuffer buffer(4);
    QorTvApiShareMemory memory(buffer.handle(), 0);  // no region of no bytes
    EXPECT_EQ(memory.getPointer(), nullptr);
    EXPECT_EQ(log.take(), std::vector<LogLine>{mapFailure(EINVAL)});
    EXPECT_EQ(memory.getPointer(), MAP_FAILED);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceShareMemory, mapsToTheEndOfTheFilesLastPage) {
    const auto page = static_cast<uint32_t>(sysconf(_SC_PAGESIZE));
    for (const auto& [file, region] : std::vector<std::pair<uint32_t, uint32_t>>{
                 {2 * page, 2 * page}, {2 * page - 1, 2 * page}, {page + 1, 2 * page}, {1, page}}) {
        SCOPED_TRACE(std::to_string(region) + " of " + std::to_string(file));
        const SharedBuffer buffer(file);
        QorTvApiShareMemory memory(buffer.handle(), region);
        auto* bytes = static_cast<uint8_t*>(memory.getPointer());
        ASSERT_NE(bytes, nullptr);
        bytes[region - 1] = 1;  // would end the process on a page that the file does not have
        EXPECT_TRUE(log.take().empty());
    }
}

TEST_F(ServiceShareMemory, refusesToMapPagesBehindTheEndOfAFile) {
    const auto page = static_cast<uint32_t>(sysconf(_SC_PAGESIZE));
    for (const auto& [file, region] : std::vector<std::pair<uint32_t, uint32_t>>{
                 {0, 1}, {page, page + 1}, {page, 2 * page}, {2 * page, UINT32_MAX}}) {
        SCOPED_TRACE(std::to_string(region) + " of " + std::to_string(file));
        const SharedBuffer buffer(file);
        QorTvApiShareMemory memory(buffer.handle(), region);
        EXPECT_EQ(memory.getPointer(), nullptr);
        EXPECT_EQ(log.take(), std::vector<LogLine>{mapFailure(EINVAL)});
    }
}

TEST_F(ServiceShareMemory, commitsOnce) {
    const SharedBuffer buffer(4);
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        EXPECT_NE(memory.getPointer(), nullptr);
        memory.commit();
        EXPECT_EQ(gIon.events, (std::vector<std::string>{"open 1", "import 1", "close 1"}));
        memory.commit();
    }
    EXPECT_EQ(gIon.events.size(), 3u);

    mTvApiDebug = 1;
    QorTvApiShareMemory memory(buffer.handle(), 4);
    memory.commit();
    log.take();
    memory.commit();
    EXPECT_EQ(log.take(), (std::vector<LogLine>{debugLine(kTag, "commit", "commit -1 -1")}));
}

TEST_F(ServiceShareMemory, dropsTheImportedHandleOfAnOldKernel) {
    gIon.legacy = true;
    const SharedBuffer buffer(4);
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        EXPECT_NE(memory.getPointer(), nullptr);
    }
    EXPECT_EQ(gIon.events, (std::vector<std::string>{"open 1", "import 1", "free 1", "close 1"}));
    EXPECT_EQ(gIon.freed_handles, std::vector<int>{1001});

    gIon = FakeIon();
    gIon.legacy = true;
    { QorTvApiShareMemory never_mapped(buffer.handle(), 4); }
    EXPECT_EQ(gIon.events, (std::vector<std::string>{"open 1", "import 1", "close 1"}));

    gIon = FakeIon();
    gIon.legacy = true;
    {
        QorTvApiShareMemory failed_to_map(SharedBuffer(0).handle(), 4);
        EXPECT_EQ(failed_to_map.getPointer(), nullptr);
    }
    EXPECT_EQ(gIon.events, (std::vector<std::string>{"open 1", "import 1", "free 1", "close 1"}));
}

TEST_F(ServiceShareMemory, keepsTheImportedHandleOfDeviceZero) {
    gIon.legacy = true;
    gIon.opens_as_zero = true;
    const SharedBuffer buffer(4);
    {
        QorTvApiShareMemory memory(buffer.handle(), 4);
        EXPECT_EQ(memory.getStatus(), 0);
        EXPECT_NE(memory.getPointer(), nullptr);
    }
    EXPECT_EQ(gIon.device_fds, std::vector<int>{0});
    EXPECT_EQ(gIon.events, (std::vector<std::string>{"open 1", "import 1", "close 1"}));
}

TEST_F(ServiceShareMemory, logsFailuresOfTheCommitAlways) {
    gIon.legacy = true;
    gIon.free_result = -3;
    gIon.close_result = -4;
    const SharedBuffer buffer(4);
    QorTvApiShareMemory memory(buffer.handle(), 4);
    EXPECT_NE(memory.getPointer(), nullptr);
    memory.commit();
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{
                      debugLine(kTag, "commit", "ion_close failed:-3"),
                      debugLine(kTag, "commit",
                                numbers("ion_close failed:", gIon.device_fds.at(0), -4))}));
}

}  // namespace
