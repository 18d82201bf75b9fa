/** What the tests of the service share: the switchboard in the place of the middleware, the log,
 * and a callback registry that is empty when a test starts. */
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "QorTvApiImpl.h"
#include "log.h"
#include "support/log_capture.h"
#include "television/switchboard/switchboard.h"

using ::android::sp;
using ::android::hardware::hidl_death_recipient;
using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;
using ::android::hardware::Status;
using namespace ::vendor::corvanta::tv::qortvapi::V1_0;
using namespace ::vendor::corvanta::tv::qortvapi::V1_0::implementation;

/** `pointer` as "%p" prints it. */
std::string pointerText(const void* pointer);

/** A pointer whose every byte is set, so that a lost half shows: 0xfedcba98765432NN. */
inline void* opaquePointer(uint8_t number) {
    return reinterpret_cast<void*>(static_cast<uintptr_t>(0xfedcba9876543200u | number));
}

/**
 * The middleware's folder for one test, with both readiness files in it unless a test takes them
 * away. The process of a death test, which starts anew, uses its parent's.
 */
class VendorFolder {
  public:
    VendorFolder();
    ~VendorFolder();
    VendorFolder(const VendorFolder&) = delete;
    VendorFolder& operator=(const VendorFolder&) = delete;

    const std::string& path() const { return mPath; }
    void create(const char* name) const;
    void remove(const char* name) const;

  private:
    bool mIsOwn;
    std::string mPath;
};

/** Starts each test with debugging on and no client, and leaves no client behind. */
class ServiceTest : public testing::Test {
  protected:
    ServiceTest();
    ~ServiceTest() override;

    static void clearRegistry();

    VendorFolder folder;
    switchboard::Switchboard tv;
    LogCapture log;
};
