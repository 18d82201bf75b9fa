/** The exchange of messages between an application and an engine of interactive television. */
#pragma once

#include <android/log.h>
#include <hidl/HidlSupport.h>

#include <cstddef>
#include <cstdint>
#include <functional>

#include "bridge.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ExchangeAnswer = std::function<void(const hidl_vec<uint8_t>&, int32_t)>;

/**
 * Hands `data` to `engine` in a zeroed buffer of `Size` bytes, counted in whole words of four
 * bytes: bytes after the last whole word are in the buffer but not in the count. Answers with as
 * many bytes of the buffer as the client sent, and returns the engine's result. For a message that
 * is too long it returns -1 without an answer, and writes a line for `method` and `line`, under the
 * tag of the stream components whatever the engine.
 *
 * The length is tested in words: a message that exceeds the buffer by less than a word passes the
 * test and ends the process in the bounded copy. Clients rely on both.
 */
template <size_t Size>
int32_t exchangeWords(const hidl_vec<uint8_t>& data, int32_t (*engine)(uint32_t*, uint32_t),
                      const ExchangeAnswer& answer, const char* method = __builtin_FUNCTION(),
                      int line = __builtin_LINE()) {
    uint32_t buffer[Size / sizeof(uint32_t)] = {};
    const auto words = static_cast<uint32_t>(data.size() / sizeof(uint32_t));
    if (data.size() >= sizeof(buffer) + sizeof(uint32_t)) {
        __android_log_print(ANDROID_LOG_DEBUG, "hh_sm", "<%s:%d> ui4_data_len = %d\n", method, line,
                            words);
        return -1;
    }
    boundedCopy(buffer, sizeof(buffer), data, method);
    const int32_t result = engine(buffer, words);
    answer(borrowedBytes(buffer, data.size()), result);
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
