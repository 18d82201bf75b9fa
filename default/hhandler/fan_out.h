/** How a middleware notification reaches every registered client. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <type_traits>

#include "bridge.h"
#include "callback_registry.h"
#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/** Returns a middleware pointer as the number that the log lines print with "%llu". */
inline unsigned long long printable(const void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}

/** Returns the bytes of the `count` integers at `data`, which must outlive the vector. */
inline hidl_vec<uint8_t> borrowedIntegers(const int32_t* data, int32_t count) {
    return borrowedBytes(data, count > 0 ? sizeof(int32_t) * static_cast<size_t>(count) : 0);
}

/** Returns what clients receive of an argument: a middleware pointer (a tag or an opaque argument)
 * becomes a number of 64 bits, anything else stays as it is. */
template <typename T>
decltype(auto) forClient(const T& value) {
    if constexpr (std::is_pointer_v<T>) {
        return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(value));
    } else {
        return (value);
    }
}

/**
 * Passes one notification on to the clients. It lives on the stack of a notification handler and
 * holds the registry's mutex from its construction to its end: clients are called one after
 * another, and a slow client delays all others. A failed call is logged with the handler's name and
 * line under its module's tag and is otherwise without effect; a client leaves the registry only by
 * its death.
 */
class FanOut {
  public:
    explicit FanOut(const char* log_tag, const char* handler = __builtin_FUNCTION(),
                    int line = __builtin_LINE())
        : mLock(getCallbackMutex()), mLogTag(log_tag), mHandler(handler), mLine(line) {}

    /**
     * What most handlers do with a number, the registration tag and further arguments: writes the
     * entry line "`name` = `number`, `tag`" while debugging is on, then calls `method` of every
     * client with all of them.
     */
    template <typename... Parameters, typename... Arguments>
    void forward(const char* name, Return<void> (IQorTvApiCallback::*method)(Parameters...),
                 int32_t number, void* tag, const Arguments&... arguments) const {
        if (mTvApiDebug != 0) logEntry(name, number, tag);
        call(method, number, tag, arguments...);
    }

    /** Calls `method` of every client, in the order of the map. Arguments are not copied. */
    template <typename... Parameters, typename... Arguments>
    void call(Return<void> (IQorTvApiCallback::*method)(Parameters...),
              const Arguments&... arguments) const {
        for (const auto& entry : getCallbackHandlers()) {
            const Return<void> status = (*entry.second.*method)(forClient(arguments)...);
            if (!status.isOk()) logFailure(status);
        }
    }

  private:
    void logEntry(const char* name, int32_t number, const void* tag) const;
    void logFailure(const Return<void>& status) const;

    std::lock_guard<std::mutex> mLock;
    const char* mLogTag;
    const char* mHandler;
    int mLine;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
