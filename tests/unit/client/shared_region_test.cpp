// Shared regions: sealed memory, growing by replacement, views that know their bounds.
#include "qortv/shared_region.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iterator>

#include "qortv/error.h"

namespace qortv {
namespace {

int descriptorOf(const SharedRegion& region) {
    const auto handle = region.handle();
    return handle.getNativeHandle()->data[0];
}

size_t openDescriptors() {
    std::filesystem::directory_iterator open("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(open), end(open)));
}

TEST(ClientSharedRegion, LendsOneDescriptorOfItsLength) {
    const SharedRegion region(1000);
    const auto handle = region.handle();
    ASSERT_NE(handle.getNativeHandle(), nullptr);
    EXPECT_EQ(handle->numFds, 1);
    EXPECT_EQ(handle->numInts, 0);
    struct stat file = {};
    ASSERT_EQ(fstat(handle->data[0], &file), 0);
    EXPECT_EQ(file.st_size, 1000);
}

TEST(ClientSharedRegion, SeesWhatIsWrittenThroughTheDescriptor) {
    const SharedRegion region(8);
    void* theirs = mmap(nullptr, 8, PROT_READ | PROT_WRITE, MAP_SHARED, descriptorOf(region), 0);
    ASSERT_NE(theirs, MAP_FAILED);
    static_cast<uint32_t*>(theirs)[1] = 0x12345678;
    munmap(theirs, 8);
    EXPECT_EQ(region.records<uint32_t>(2)[0], 0U);
    EXPECT_EQ(region.records<uint32_t>(2)[1], 0x12345678U);
}

TEST(ClientSharedRegion, CannotBeResizedByWhoeverHoldsTheDescriptor) {
    const SharedRegion region(4096);
    EXPECT_EQ(ftruncate(descriptorOf(region), 0), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(ftruncate(descriptorOf(region), 8192), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(fcntl(descriptorOf(region), F_ADD_SEALS, F_SEAL_WRITE), -1);
}

TEST(ClientSharedRegion, StaysWhenLongEnoughAndIsReplacedWhenNot) {
    SharedRegion region(100);
    struct stat before = {};
    struct stat after = {};
    ASSERT_EQ(fstat(descriptorOf(region), &before), 0);
    region.reserve(50);
    ASSERT_EQ(fstat(descriptorOf(region), &after), 0);
    EXPECT_EQ(region.size(), 100U);
    EXPECT_EQ(before.st_ino, after.st_ino);
    region.reserve(101);
    ASSERT_EQ(fstat(descriptorOf(region), &after), 0);
    EXPECT_EQ(region.size(), 101U);
    EXPECT_NE(before.st_ino, after.st_ino);
}

TEST(ClientSharedRegion, RefusesViewsBeyondItsEnd) {
    SharedRegion region(11);
    EXPECT_EQ(region.records<uint32_t>(2).size(), 2U);
    try {
        region.records<uint32_t>(3);
        FAIL() << "a view beyond the end";
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kArgument);
        EXPECT_STREQ(error.what(), "a shared region of 11 bytes does not hold 3 records of 4");
    }
    // A count so large that its size in bytes wraps around is refused too.
    EXPECT_THROW(region.records<uint32_t>(SIZE_MAX / 2), Error);
}

TEST(ClientSharedRegion, AnEmptyRegionHasNoHandle) {
    const SharedRegion region;
    EXPECT_EQ(region.size(), 0U);
    EXPECT_EQ(region.handle().getNativeHandle(), nullptr);
    EXPECT_EQ(region.records<uint32_t>(0).size(), 0U);
}

TEST(ClientSharedRegion, LeavesNoDescriptorBehind) {
    const size_t before = openDescriptors();
    for (int i = 1; i <= 100; ++i) {
        SharedRegion region(10);
        region.reserve(1000);
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ClientSharedRegion, KeepsItsMemoryWhenDescriptorsRunOut) {
    SharedRegion region(10);
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    std::exception_ptr failure;
    try {
        region.reserve(20);
    } catch (...) {
        failure = std::current_exception();  // looked at later: the sanitizers need descriptors
    }
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    ASSERT_TRUE(failure);
    try {
        std::rethrow_exception(failure);
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kSystem);
        EXPECT_STREQ(error.what(), "cannot make a shared region of 20 bytes: Too many open files");
    }
    EXPECT_EQ(region.size(), 10U);
    EXPECT_NE(region.handle().getNativeHandle(), nullptr);
}

}  // namespace
}  // namespace qortv
