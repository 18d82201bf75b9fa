/** The television's lines on the platform log, under its tag, formatted with fmt. */
#pragma once

#include <android/log.h>
#include <fmt/format.h>

#define LOG_TV(priority, ...) \
    __android_log_write(priority, "television", fmt::format(__VA_ARGS__).c_str())
#define LOG_TV_INFO(...) LOG_TV(ANDROID_LOG_INFO, __VA_ARGS__)
#define LOG_TV_WARN(...) LOG_TV(ANDROID_LOG_WARN, __VA_ARGS__)
#define LOG_TV_ERROR(...) LOG_TV(ANDROID_LOG_ERROR, __VA_ARGS__)
