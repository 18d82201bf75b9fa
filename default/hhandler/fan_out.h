/** How a middleware notification reaches every registered client. */
#pragma once

#include <cstdint>
#include <mutex>
#include <type_traits>

#include "QorTvApiImpl.h"
#include "bridge.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;

/** A middleware pointer as the log lines print it with "%llu". */
inline unsigned long long printable(const void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}

/** A vector that refers to `count` integers at `data`, four bytes each; they must outlive it. */
inline hidl_vec<uint8_t> borrowedIntegers(const int32_t* data, int32_t count) {
    return borrowedBytes(data, count > 0 ? sizeof(int32_t) * static_cast<size_t>(count) : 0);
}

/** The middleware's pointers (tags and opaque arguments) cross the interface as 64-bit numbers. */
template <typename T>
decltype(auto) forClient(const T& value) {
    if constexpr (std::is_pointer_v<T>) {
        return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(value));
    } else {
        return (value);
    }
}

/**
 * Lives on the stack of a notification handler and holds the registry's mutex from its construction
 * to the handler's end: clients are called one after another, and a slow client delays all others.
 * A failed call is logged with the handler's name and line under its module's tag and is otherwise
 * without effect; only a client's death takes it out of the registry.
 */
class FanOut {
  public:
    explicit FanOut(const char* log_tag, const char* handler = __builtin_FUNCTION(),
                    int line = __builtin_LINE())
        : mLock(QorTvApiImpl::getCallbackMutex()),
          mLogTag(log_tag),
          mHandler(handler),
          mLine(line) {}

    /** Calls `method` of every client, in the order of the map. Arguments are not copied. */
    template <typename... Parameters, typename... Arguments>
    void call(Return<void> (IQorTvApiCallback::*method)(Parameters...),
              const Arguments&... arguments) const {
        for (const auto& entry : QorTvApiImpl::getCallbackHandlers()) {
            const Return<void> status = (*entry.second.*method)(forClient(arguments)...);
            if (!status.isOk()) logFailure(status);
        }
    }

  private:
    void logFailure(const Return<void>& status) const;

    std::lock_guard<std::mutex> mLock;
    const char* mLogTag;
    const char* mHandler;
    int mLine;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
