// Makes generated code throw where an implementation broke its contract, instead of aborting the
// process. The session catches the exception, logs it and replies EX_TRANSACTION_FAILED: one call
// fails, the service goes on. The compiler includes this file in front of every generated source,
// because log/log.h defines LOG_ALWAYS_FATAL only if it is not defined yet.
#pragma once

#ifdef __cplusplus
namespace android::hardware::details {

// Throws FatalCallError (hidl/FatalCallError.h) with the formatted text. Any thread.
[[noreturn]] void throwFatal(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace android::hardware::details

#define LOG_ALWAYS_FATAL(...) ::android::hardware::details::throwFatal(__VA_ARGS__)
#endif
