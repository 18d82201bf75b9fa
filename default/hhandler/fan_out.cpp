#include "hhandler/fan_out.h"

#include <android/log.h>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

void FanOut::logEntry(const char* name, int32_t number, const void* tag) const {
    __android_log_print(ANDROID_LOG_DEBUG, mLogTag, "<%s:%d> %s = %d, %p\n", mHandler, mLine, name,
                        number, tag);
}

void FanOut::logFailure(const Return<void>& status) const {
    __android_log_print(ANDROID_LOG_DEBUG, mLogTag, "<%s:%d> %s", mHandler, mLine,
                        status.description().c_str());
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
