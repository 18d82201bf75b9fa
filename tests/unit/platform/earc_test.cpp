/** The hardware abstraction library on Linux. */
#include <gtest/gtest.h>

#include <thread>

#include "qral/qral.h"

namespace {

/** The status of `port`, or the library's code. */
int32_t statusOf(int32_t port) {
    uint8_t status = 0xff;
    const int32_t result = QRCEC_GetEARCStatus(port, &status);
    return result == 0 ? status : result;
}

TEST(PlatformEarc, isThere) {
    uint32_t caps = 0;
    EXPECT_EQ(QRAL_Init(), 0);
    EXPECT_EQ(QRCEC_GetEARCCaps(&caps), 0);
    EXPECT_EQ(caps, 1u);
    EXPECT_LT(QRCEC_GetEARCCaps(nullptr), 0);
}

TEST(PlatformEarc, isActiveOnFourPortsOnceItIsEnabled) {
    EXPECT_EQ(statusOf(1), 0) << "before anybody enables it";
    for (const bool enabled : {true, false}) {
        EXPECT_EQ(QRCEC_SetEARCEnable(enabled), 0);
        EXPECT_EQ(QRAL_Init(), 0) << "which changes nothing";
        for (const int32_t port : {1, 2, 3, 4}) EXPECT_EQ(statusOf(port), enabled ? 1 : 0) << port;
    }
}

TEST(PlatformEarc, hasNoOtherPorts) {
    for (const int32_t port : {0, 5, -1, INT32_MIN, INT32_MAX})
        EXPECT_LT(statusOf(port), 0) << port;
    EXPECT_LT(QRCEC_GetEARCStatus(1, nullptr), 0);
}

TEST(PlatformEarc, isForAnyThread) {
    std::thread other([] {
        for (int i = 0; i < 1000; ++i) QRCEC_SetEARCEnable(i % 2 == 0);
    });
    for (int i = 0; i < 1000; ++i) EXPECT_GE(statusOf(1), 0);
    other.join();
    EXPECT_EQ(statusOf(1), 0);
}

}  // namespace
