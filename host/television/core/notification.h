/** A message of the television to the handlers of one registration. */
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "television/core/registrations.h"

namespace television {

/** One notification: a code and small integers that every handler of one registration is called
 * with. What they mean, the registration's middleware header says. */
struct Notification {
    RegistrationKey to;
    int32_t code = 0;
    std::array<uint32_t, 4> arguments = {};
    /** If set, called in place of the handlers, with no lock held: for handlers that take more than
     * small integers or that return something. */
    std::function<void()> call = {};

    /** Whether handlers are called in the same way for both. Never for two with `call`. */
    bool operator==(const Notification& other) const {
        return to == other.to && code == other.code && arguments == other.arguments && !call &&
               !other.call;
    }
};

}  // namespace television
