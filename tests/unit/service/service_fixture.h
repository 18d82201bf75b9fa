/** What the tests of the service share: a television to plug handlers into, a log, an empty
 * registry. */
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "QorTvApiImpl.h"
#include "log.h"
#include "log_capture.h"
#include "recording_client.h"
#include "switchboard.h"

using namespace ::vendor::corvanta::tv::qortvapi::V1_0::implementation;

/** `pointer` as "%p" prints it. */
inline std::string pointerText(const void* pointer) {
    char text[32];
    snprintf(text, sizeof(text), "%p", pointer);
    return text;
}

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
    VendorFolder() {
        char pattern[] = "/tmp/qortv-service-XXXXXX";
        const char* parents = getenv("QORTV_SERVICE_TEST_FOLDER");
        mIsOwn = parents == nullptr;
        mPath = mIsOwn ? mkdtemp(pattern) : parents;
        setenv("QORTV_SERVICE_TEST_FOLDER", mPath.c_str(), 1);
        setenv("QORTV_VENDOR_TMP", mPath.c_str(), 1);
        create("dtv_svc_is_ready");
        create("tv_api_is_init");
    }
    ~VendorFolder() {
        unsetenv("QORTV_VENDOR_TMP");
        if (!mIsOwn) return;
        unsetenv("QORTV_SERVICE_TEST_FOLDER");
        std::filesystem::remove_all(mPath);
    }
    VendorFolder(const VendorFolder&) = delete;
    VendorFolder& operator=(const VendorFolder&) = delete;

    const std::string& path() const { return mPath; }
    void create(const char* name) const { std::ofstream(mPath + "/" + name).put('\n'); }
    void remove(const char* name) const { std::filesystem::remove(mPath + "/" + name); }

  private:
    bool mIsOwn;
    std::string mPath;
};

/** Starts each test with debugging on and no client, and leaves no client behind. */
class ServiceTest : public testing::Test {
  protected:
    ServiceTest() {
        mTvApiDebug = 1;
        clearRegistry();
    }
    ~ServiceTest() override {
        clearRegistry();
        mTvApiDebug = 1;
    }

    static void clearRegistry() {
        std::lock_guard<std::mutex> lock(QorTvApiImpl::getCallbackMutex());
        QorTvApiImpl::getCallbackHandlers().clear();
    }

    VendorFolder folder;
    switchboard::Switchboard tv;
    LogCapture log;
};
