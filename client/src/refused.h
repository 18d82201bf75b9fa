/** What the television said no to, as an exception. */
#pragma once

#include <cstdint>
#include <string>

#include "middleware/result_codes.h"
#include "qortv/error.h"

namespace qortv {

/**
 * @param what completes "the television refused to ..."
 * @param code negative
 * @param reason what the code means for this request; empty: the code alone
 */
[[noreturn]] inline void throwRefusedTo(const std::string& what, int32_t code,
                                        const std::string& reason = {}) {
    std::string message = "the television refused to " + what;
    if (!reason.empty()) message += ": " + reason;
    throw Error(Error::Kind::kRefused, message + " (code " + std::to_string(code) + ")");
}

}  // namespace qortv
