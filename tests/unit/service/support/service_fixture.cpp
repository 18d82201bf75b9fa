#include "support/service_fixture.h"

#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

std::string pointerText(const void* pointer) {
    char text[32];
    snprintf(text, sizeof(text), "%p", pointer);
    return text;
}

VendorFolder::VendorFolder() {
    char pattern[] = "/tmp/qortv-service-XXXXXX";
    const char* parents = getenv("QORTV_SERVICE_TEST_FOLDER");
    mIsOwn = parents == nullptr;
    mPath = mIsOwn ? mkdtemp(pattern) : parents;
    setenv("QORTV_SERVICE_TEST_FOLDER", mPath.c_str(), 1);
    setenv("QORTV_VENDOR_TMP", mPath.c_str(), 1);
    create("dtv_svc_is_ready");
    create("tv_api_is_init");
}

VendorFolder::~VendorFolder() {
    unsetenv("QORTV_VENDOR_TMP");
    if (!mIsOwn) return;
    unsetenv("QORTV_SERVICE_TEST_FOLDER");
    std::filesystem::remove_all(mPath);
}

void VendorFolder::create(const char* name) const {
    std::ofstream(mPath + "/" + name).put('\n');
}

void VendorFolder::remove(const char* name) const {
    std::filesystem::remove(mPath + "/" + name);
}

ServiceTest::ServiceTest() {
    mTvApiDebug = 1;
    clearRegistry();
}

ServiceTest::~ServiceTest() {
    clearRegistry();
    mTvApiDebug = 1;
}

void ServiceTest::clearRegistry() {
    std::lock_guard<std::mutex> lock(QorTvApiImpl::getCallbackMutex());
    QorTvApiImpl::getCallbackHandlers().clear();
}
