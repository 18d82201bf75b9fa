/** How this library reports failures: by exception, one type, with a kind that programs can test.
 */
#pragma once

#include <stdexcept>
#include <string>

namespace qortv {

/**
 * Thrown by every function of this library that cannot do what it was asked. `what()` is one line
 * that names the thing at fault and needs no prefix.
 */
class Error : public std::runtime_error {
  public:
    enum class Kind {
        kNoService,  ///< nobody is registered under the name, also not after waiting
        kLost,       ///< the service went away during the call; connect again
        kTransport,  ///< the call could not be made or was refused, the service lives
        kRefused,    ///< the television answered the call with a negative code
        kSystem,     ///< the operating system refused something: memory, descriptors
        kArgument,   ///< the caller's mistake
    };

    Error(Kind kind, const std::string& message) : std::runtime_error(message), mKind(kind) {}

    Kind kind() const { return mKind; }

  private:
    Kind mKind;
};

}  // namespace qortv
