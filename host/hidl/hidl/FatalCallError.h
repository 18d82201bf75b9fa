// The exception that ends a call whose implementation broke the interface's contract.
#pragma once

#include <stdexcept>

namespace android::hardware::details {

// Thrown by generated stubs (see ForcedFatal.h) and by Return<T> where a served call reads a failed
// result unchecked. Caught by the dispatcher; never crosses to the application.
class FatalCallError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Ends what the thread is doing because of `message`: throws FatalCallError while the thread serves
// a call, and otherwise logs the message and aborts the process, as the platform does.
[[noreturn]] void fatal(const char* message);

// Marks the thread as serving a call for the object's lifetime. Nests.
class ServingScope {
  public:
    ServingScope();
    ~ServingScope();
    ServingScope(const ServingScope&) = delete;
    ServingScope& operator=(const ServingScope&) = delete;
};

}  // namespace android::hardware::details
