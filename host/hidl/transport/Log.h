// The runtime's log lines.
#pragma once

#include <android/log.h>

#define HIDL_LOGE(...) __android_log_print(ANDROID_LOG_ERROR, "hidl", __VA_ARGS__)
#define HIDL_LOGW(...) __android_log_print(ANDROID_LOG_WARN, "hidl", __VA_ARGS__)
#define HIDL_LOGI(...) __android_log_print(ANDROID_LOG_INFO, "hidl", __VA_ARGS__)
