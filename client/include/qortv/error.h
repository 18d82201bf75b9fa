/** The exception by which this library reports failures. */
#pragma once

#include <stdexcept>
#include <string>

namespace qortv {

/**
 * Thrown by every function of this library that fails. `what()` is one line that names the cause
 * and can be shown to users as it is.
 */
class Error : public std::runtime_error {
  public:
    enum class Kind {
        kNoService,  ///< no service was registered under the name before the timeout
        kLost,       ///< the service died during the call; connect again
        kTransport,  ///< the call did not go through, or its answer is malformed; the service runs
        kRefused,    ///< the television returned a failure code or does not accept the request
        kSystem,     ///< the operating system is out of memory or file descriptors
        kArgument,   ///< the caller passed an invalid argument
    };

    Error(Kind kind, const std::string& message) : std::runtime_error(message), mKind(kind) {}

    Kind kind() const { return mKind; }

  private:
    Kind mKind;
};

}  // namespace qortv
