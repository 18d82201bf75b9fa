// The exception that ends a served call whose implementation broke the interface's contract.
#pragma once

#include <stdexcept>

namespace android::hardware::details {

// Thrown by generated stubs (see ForcedFatal.h), and by Return<T> where a served call reads the
// result of a failed call unchecked. The session catches it; no caller sees it.
class FatalCallError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Ends what the thread is doing because of the error `message`: throws FatalCallError while the
// thread serves a call; otherwise logs the message and aborts the process, as the platform does.
[[noreturn]] void fatal(const char* message);

// Marks the thread as serving a call as long as the object lives. May be nested.
class ServingScope {
  public:
    ServingScope();
    ~ServingScope();
    ServingScope(const ServingScope&) = delete;
    ServingScope& operator=(const ServingScope&) = delete;
};

}  // namespace android::hardware::details
