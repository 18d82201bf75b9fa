// What generated code does when an implementation broke its contract: throw. Included by force in
// front of every generated source, because log/log.h defines LOG_ALWAYS_FATAL only where it is not
// defined yet. The dispatcher catches, logs, and answers the caller with a failed transaction, so
// that a request without an answer costs the client an error and the service nothing.
#pragma once

#ifdef __cplusplus
namespace android::hardware::details {

// Throws FatalCallError (hidl/FatalCallError.h) with the formatted text. Any thread.
[[noreturn]] void throwFatal(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace android::hardware::details

#define LOG_ALWAYS_FATAL(...) ::android::hardware::details::throwFatal(__VA_ARGS__)
#endif
