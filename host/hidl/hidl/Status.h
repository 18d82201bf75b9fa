// The outcome of a call: Status, and Return<T>, which holds either a result or a failed Status.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include <hidl/HidlInternal.h>
#include <utils/Errors.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

// The outcome of a call: success, an exception of the implementation, or a failed transaction.
class Status final {
  public:
    enum Exception : int32_t {
        EX_NONE = 0,
        EX_SECURITY = -1,
        EX_BAD_PARCELABLE = -2,
        EX_ILLEGAL_ARGUMENT = -3,
        EX_NULL_POINTER = -4,
        EX_ILLEGAL_STATE = -5,
        EX_NETWORK_MAIN_THREAD = -6,
        EX_UNSUPPORTED_OPERATION = -7,
        EX_HAS_REPLY_HEADER = -128,
        // The call or its reply failed on the way, or the implementation gave no reply.
        EX_TRANSACTION_FAILED = -129,
    };

    Status() = default;
    static Status ok() { return Status(); }
    static Status fromExceptionCode(int32_t exceptionCode);
    static Status fromExceptionCode(int32_t exceptionCode, const char* message);
    // OK gives EX_NONE, anything else EX_TRANSACTION_FAILED with that code.
    static Status fromStatusT(status_t status);

    void setException(int32_t exceptionCode, const char* message);
    void setFromStatusT(status_t status);

    bool isOk() const { return mException == EX_NONE; }
    int32_t exceptionCode() const { return mException; }
    const char* exceptionMessage() const { return mMessage.c_str(); }
    // Returns the code of a failed transaction; OK for anything else.
    status_t transactionError() const {
        return mException == EX_TRANSACTION_FAILED ? mErrorCode : OK;
    }
    // Returns exception, code and message as a text for people.
    std::string description() const;

  private:
    Status(int32_t exceptionCode, status_t errorCode, const char* message)
        : mException(exceptionCode), mErrorCode(errorCode), mMessage(message) {}

    int32_t mException = EX_NONE;
    status_t mErrorCode = OK;
    std::string mMessage;
};

template <typename T>
class Return;

namespace details {

// Returns a status_t as a text for people.
std::string statusName(status_t status);

// The common part of all Return<T>. Move-only, as a result is taken once.
class return_status {
  public:
    return_status() = default;
    return_status(const Status& status) : mStatus(status) {}  // NOLINT: implicit
    return_status(return_status&&) = default;
    return_status& operator=(return_status&&) = default;
    return_status(const return_status&) = delete;
    return_status& operator=(const return_status&) = delete;

    bool isOk() const { return mStatus.isOk(); }
    // Whether the call failed because the object's process is gone.
    bool isDeadObject() const { return mStatus.transactionError() == DEAD_OBJECT; }
    std::string description() const { return mStatus.description(); }
    // Aborts the process if the call failed; a thread that serves a call ends only that call.
    void assertOk() const {
        if (!isOk()) failUnchecked();
    }

  protected:
    template <typename T, typename U>
    friend Return<U> StatusOf(const Return<T>& other);

    [[noreturn]] void failUnchecked() const;

    Status mStatus;
};

}  // namespace details

template <typename T>
class Return : public details::return_status {
  public:
    Return(T value) : mValue(std::move(value)) {}                               // NOLINT: implicit
    Return(const Status& status) : details::return_status(status), mValue{} {}  // NOLINT: implicit
    Return(Return&&) = default;
    Return& operator=(Return&&) = default;

    // Returns the result; for a failed call see assertOk().
    operator T() const {  // NOLINT: implicit
        assertOk();
        return mValue;
    }
    T withDefault(T value) { return isOk() ? mValue : value; }

  private:
    T mValue;
};

template <typename T>
class Return<sp<T>> : public details::return_status {
  public:
    Return(T* value) : mValue(value) {}  // NOLINT: implicit
    template <typename U>
    Return(U* value) : mValue(value) {}            // NOLINT: implicit
    Return(const sp<T>& value) : mValue(value) {}  // NOLINT: implicit
    template <typename U>
    Return(const sp<U>& value) : mValue(value) {}                     // NOLINT: implicit
    Return(std::nullptr_t) {}                                         // NOLINT: implicit
    Return(const Status& status) : details::return_status(status) {}  // NOLINT: implicit
    Return(Return&&) = default;
    Return& operator=(Return&&) = default;

    operator sp<T>() const {  // NOLINT: implicit
        assertOk();
        return mValue;
    }
    sp<T> withDefault(sp<T> value) { return isOk() ? mValue : value; }

  private:
    sp<T> mValue;
};

template <>
class Return<void> : public details::return_status {
  public:
    Return() = default;
    Return(const Status& status) : details::return_status(status) {}  // NOLINT: implicit
    Return(Return&&) = default;
    Return& operator=(Return&&) = default;
};

static inline Return<void> Void() {
    return Return<void>();
}

namespace details {

// Makes a Return<U> with the failed status of a Return<T>.
template <typename T, typename U>
Return<U> StatusOf(const Return<T>& other) {
    return Return<U>(other.mStatus);
}

}  // namespace details
}  // namespace android::hardware
