#include <hidl/Status.h>

#include <cstring>

#include <hidl/FatalCallError.h>

namespace android::hardware {

Status Status::fromExceptionCode(int32_t exceptionCode) {
    return Status(exceptionCode, OK, "");
}

Status Status::fromExceptionCode(int32_t exceptionCode, const char* message) {
    return Status(exceptionCode, OK, message);
}

Status Status::fromStatusT(status_t status) {
    Status result;
    result.setFromStatusT(status);
    return result;
}

void Status::setException(int32_t exceptionCode, const char* message) {
    mException = exceptionCode;
    mErrorCode = OK;
    mMessage = message;
}

void Status::setFromStatusT(status_t status) {
    mException = status == OK ? EX_NONE : EX_TRANSACTION_FAILED;
    mErrorCode = status;
    mMessage.clear();
}

static const char* exceptionName(int32_t code) {
    switch (code) {
        case Status::EX_NONE:
            return "EX_NONE";
        case Status::EX_SECURITY:
            return "EX_SECURITY";
        case Status::EX_BAD_PARCELABLE:
            return "EX_BAD_PARCELABLE";
        case Status::EX_ILLEGAL_ARGUMENT:
            return "EX_ILLEGAL_ARGUMENT";
        case Status::EX_NULL_POINTER:
            return "EX_NULL_POINTER";
        case Status::EX_ILLEGAL_STATE:
            return "EX_ILLEGAL_STATE";
        case Status::EX_NETWORK_MAIN_THREAD:
            return "EX_NETWORK_MAIN_THREAD";
        case Status::EX_UNSUPPORTED_OPERATION:
            return "EX_UNSUPPORTED_OPERATION";
        case Status::EX_HAS_REPLY_HEADER:
            return "EX_HAS_REPLY_HEADER";
        case Status::EX_TRANSACTION_FAILED:
            return "EX_TRANSACTION_FAILED";
        default:
            return "unknown exception";
    }
}

std::string details::statusName(status_t status) {
    switch (status) {
        case OK:
            return "OK";
        case UNKNOWN_ERROR:
            return "UNKNOWN_ERROR";
        case BAD_TYPE:
            return "BAD_TYPE";
        case FAILED_TRANSACTION:
            return "FAILED_TRANSACTION";
        case UNKNOWN_TRANSACTION:
            return "UNKNOWN_TRANSACTION";
        case UNEXPECTED_NULL:
            return "UNEXPECTED_NULL";
        case DEAD_OBJECT:
            return "DEAD_OBJECT";
        case NAME_NOT_FOUND:
            return "NAME_NOT_FOUND";
        default:
            return std::to_string(status) + " (" + strerror(-status) + ")";
    }
}

std::string Status::description() const {
    if (isOk()) return "Status(EX_NONE): no error";
    std::string text = "Status(";
    text += exceptionName(mException);
    text += "): '";
    if (mException == EX_TRANSACTION_FAILED && mErrorCode != OK) {
        text += details::statusName(mErrorCode) + ": ";
    }
    return text + mMessage + "'";
}

void details::return_status::failUnchecked() const {
    fatal(("Failed call, result not checked: " + description()).c_str());
}

}  // namespace android::hardware
