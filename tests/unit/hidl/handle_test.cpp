// Descriptors in calls: the receiver gets duplicates, which are closed with the message.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

using HandleTest = ServiceTest;

// Returns a descriptor of a new file in memory with this content.
int fileWith(const std::string& content) {
    const int fd = memfd_create("handle-test", MFD_CLOEXEC);
    if (write(fd, content.data(), content.size()) != static_cast<ssize_t>(content.size())) abort();
    return fd;
}

std::string contentOf(int fd) {
    char bytes[100];
    const ssize_t size = pread(fd, bytes, sizeof(bytes), 0);
    return size < 0 ? "unreadable" : std::string(bytes, static_cast<size_t>(size));
}

// Returns a handle that owns these descriptors.
hidl_handle handleOf(const std::vector<int>& fds, const std::vector<int>& ints) {
    native_handle_t* native =
            native_handle_create(static_cast<int>(fds.size()), static_cast<int>(ints.size()));
    std::copy(fds.begin(), fds.end(), native->data);
    std::copy(ints.begin(), ints.end(), native->data + fds.size());
    hidl_handle handle;
    handle.setTo(native, true);
    return handle;
}

bool sameFile(int a, int b) {
    struct stat first, second;
    return fstat(a, &first) == 0 && fstat(b, &second) == 0 && first.st_ino == second.st_ino;
}

TEST_F(HandleTest, DescriptorsAndIntegersComeBack) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_handle handle = handleOf({fileWith("one"), fileWith("two")}, {7, -8, 9});
    bool called = false;
    EXPECT_TRUE(service->echoHandle(handle,
                                    [&](const hidl_handle& back) {
                                        called = true;
                                        ASSERT_NE(back.getNativeHandle(), nullptr);
                                        ASSERT_EQ(back->numFds, 2);
                                        ASSERT_EQ(back->numInts, 3);
                                        EXPECT_NE(back->data[0], handle->data[0]);
                                        EXPECT_TRUE(sameFile(back->data[0], handle->data[0]));
                                        EXPECT_EQ(contentOf(back->data[1]), "two");
                                        EXPECT_EQ(back->data[2], 7);
                                        EXPECT_EQ(back->data[3], -8);
                                        EXPECT_EQ(back->data[4], 9);
                                        EXPECT_NE(fcntl(back->data[0], F_GETFD) & FD_CLOEXEC, 0);
                                    })
                        .isOk());
    EXPECT_TRUE(called);
}

TEST_F(HandleTest, NullAndEmptyHandles) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    int called = 0;
    service->echoHandle(hidl_handle(), [&](const hidl_handle& back) {
        ++called;
        EXPECT_EQ(back.getNativeHandle(), nullptr);
    });
    service->echoHandle(handleOf({}, {5}), [&](const hidl_handle& back) {
        ++called;
        ASSERT_NE(back.getNativeHandle(), nullptr);
        EXPECT_EQ(back->numFds, 0);
        EXPECT_EQ(back->data[0], 5);
    });
    EXPECT_EQ(called, 2);
}

TEST_F(HandleTest, HandlesInVectorsAndStructures) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_vec<hidl_handle> handles;
    handles.resize(4);
    handles[0] = handleOf({fileWith("zero")}, {});
    handles[2] = handleOf({fileWith("a"), fileWith("b"), fileWith("c")}, {1});
    handles[3] = handleOf({}, {2, 3});
    int called = 0;
    EXPECT_TRUE(service->echoHandles(handles,
                                     [&](const hidl_vec<hidl_handle>& back) {
                                         ++called;
                                         ASSERT_EQ(back.size(), 4u);
                                         EXPECT_EQ(contentOf(back[0]->data[0]), "zero");
                                         EXPECT_EQ(back[1].getNativeHandle(), nullptr);
                                         EXPECT_EQ(contentOf(back[2]->data[2]), "c");
                                         EXPECT_EQ(back[3]->data[1], 3);
                                     })
                        .isOk());
    hidl_vec<Holder> holders;
    holders.resize(2);
    holders[0].what = "first";
    holders[0].file = handleOf({fileWith("inside")}, {});
    holders[1].what = "second";
    EXPECT_TRUE(service->echoHolders(holders,
                                     [&](const hidl_vec<Holder>& back) {
                                         ++called;
                                         ASSERT_EQ(back.size(), 2u);
                                         EXPECT_EQ(back[0].what, "first");
                                         EXPECT_EQ(contentOf(back[0].file->data[0]), "inside");
                                         EXPECT_EQ(back[1].file.getNativeHandle(), nullptr);
                                     })
                        .isOk());
    EXPECT_EQ(called, 2);
}

TEST_F(HandleTest, ReceivedDescriptorsAreClosed) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_handle handle = handleOf({fileWith("x")}, {});
    auto call = [&] { service->echoHandle(handle, [](const hidl_handle&) {}); };
    call();
    const int here = openDescriptors();
    const int32_t there = service->openDescriptors().withDefault(-1);
    for (int i = 0; i < 50; ++i) call();
    EXPECT_EQ(openDescriptors(), here);
    EXPECT_EQ(service->openDescriptors().withDefault(-1), there);
}

TEST_F(HandleTest, CopyOutlivesTheCall) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_handle kept;
    service->echoHandle(handleOf({fileWith("kept")}, {}),
                        [&](const hidl_handle& back) { kept = back; });
    ASSERT_NE(kept.getNativeHandle(), nullptr);
    EXPECT_EQ(contentOf(kept->data[0]), "kept");
}

TEST_F(HandleTest, AsManyDescriptorsAsAllowed) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    const int fd = fileWith("many");
    std::vector<int> fds;
    for (int i = 0; i < 253; ++i) fds.push_back(fcntl(fd, F_DUPFD_CLOEXEC, 0));
    close(fd);
    hidl_handle handle = handleOf(fds, {});
    int count = 0;
    EXPECT_TRUE(service->echoHandle(handle, [&](const hidl_handle& back) { count = back->numFds; })
                        .isOk());
    EXPECT_EQ(count, 253);
    fds.clear();
    for (int i = 0; i < 254; ++i) fds.push_back(fcntl(handle->data[0], F_DUPFD_CLOEXEC, 0));
    hidl_handle tooMany = handleOf(fds, {});
    auto result = service->echoHandle(tooMany, [](const hidl_handle&) { FAIL() << "answered"; });
    EXPECT_FALSE(result.isOk());
    EXPECT_EQ(service->number().withDefault(0), 42);
}

// A service that has no descriptors left for those of a call refuses that call and goes on.
TEST_F(HandleTest, NoRoomForDescriptors) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    const int32_t open = service->openDescriptors().withDefault(-1);
    rlimit old;
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, nullptr, &old), 0);
    const rlimit few{static_cast<rlim_t>(open + 1), old.rlim_max};
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &few, nullptr), 0);
    hidl_handle handle = handleOf({fileWith("a"), fileWith("b"), fileWith("c")}, {});
    auto result = service->echoHandle(handle, [](const hidl_handle&) { FAIL() << "answered"; });
    EXPECT_FALSE(result.isOk());
    EXPECT_FALSE(result.isDeadObject());
    EXPECT_EQ(serviceLog().size(), 1u);
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &old, nullptr), 0);
    int count = 0;
    service->echoHandle(handle, [&](const hidl_handle& back) { count = back->numFds; });
    EXPECT_EQ(count, 3);
    EXPECT_EQ(service->openDescriptors().withDefault(-1), open);
}

// A client that has no descriptors left for those of a reply gets an error and keeps none of them.
TEST_F(HandleTest, NoRoomForDescriptorsOfAReply) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    hidl_handle handle = handleOf({fileWith("a"), fileWith("b"), fileWith("c")}, {});
    int count = 0;
    const auto call = [&] {
        return service->echoHandle(handle, [&](const hidl_handle& back) { count = back->numFds; });
    };
    EXPECT_TRUE(call().isOk());
    EXPECT_EQ(count, 3);
    const int open = openDescriptors();
    const int lowestFree = fileWith("");
    close(lowestFree);
    rlimit old;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &old), 0);
    const rlimit oneFree{static_cast<rlim_t>(lowestFree + 1), old.rlim_max};
    count = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &oneFree), 0);
    auto result = call();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &old), 0);
    EXPECT_FALSE(result.isOk());
    EXPECT_FALSE(result.isDeadObject());
    EXPECT_EQ(count, 0);
    EXPECT_EQ(openDescriptors(), open);
    EXPECT_TRUE(call().isOk());
    EXPECT_EQ(count, 3);
}

TEST_F(HandleTest, DebugGetsItsDescriptor) {
    startService();
    sp<IEcho> service = echo();
    ASSERT_NE(service, nullptr);
    EXPECT_TRUE(service->debug(handleOf({fileWith("")}, {}), {"--all", "x"}).isOk());
}

}  // namespace
}  // namespace qortv::test
