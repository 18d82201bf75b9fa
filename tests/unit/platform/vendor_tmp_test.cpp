/** The middleware's folder, on Linux and on a device. */
#include <gtest/gtest.h>
#include <stdlib.h>

#include "vendor_tmp.h"

/** A device's `qortv_vendor_tmp`, which is built under this name here. */
extern "C" const char* device_vendor_tmp(void);

namespace {

TEST(PlatformVendorTmp, isThatOfADeviceUnlessAnotherIsNamed) {
    unsetenv("QORTV_VENDOR_TMP");
    EXPECT_STREQ(qortv_vendor_tmp(), "/mnt/vendor/tmp");
    setenv("QORTV_VENDOR_TMP", "", 1);
    EXPECT_STREQ(qortv_vendor_tmp(), "/mnt/vendor/tmp");
    setenv("QORTV_VENDOR_TMP", "/elsewhere", 1);
    EXPECT_STREQ(qortv_vendor_tmp(), "/elsewhere");
    EXPECT_STREQ(device_vendor_tmp(), "/mnt/vendor/tmp") << "a device has no other";
    unsetenv("QORTV_VENDOR_TMP");
}

}  // namespace
