/**
 * The service's log lines. Each source file defines LOG_TAG, its tag, before its includes; every
 * line begins with the name of the function that writes it and the source line.
 */
#pragma once

#include <android/log.h>

#include <cstdint>

/**
 * The debug switch: debug lines are written only while it is not 0. It is 1 until start-up stores
 * the debug level of the customisation library, before any other thread exists.
 */
extern uint8_t mTvApiDebug;

/** A line that is always written: failures, and the few traces that must not be lost. */
#define TVAPI_LOG(format, ...)                                                             \
    __android_log_print(ANDROID_LOG_DEBUG, LOG_TAG, "<%s:%d> " format, __func__, __LINE__, \
                        ##__VA_ARGS__)

/** A line that is written only while debugging is on. */
#define TVAPI_DEBUG(format, ...)                                \
    do {                                                        \
        if (mTvApiDebug != 0) TVAPI_LOG(format, ##__VA_ARGS__); \
    } while (false)
