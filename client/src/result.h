/** Result codes of the television: failures become exceptions. */
#pragma once

#include <cstdint>
#include <locale>
#include <sstream>
#include <string>

#include "qortv/error.h"

namespace qortv {

/** Returns what a failure code says, such as "busy". Empty for TV_FAILED and for unknown codes. */
std::string meaningOf(int32_t code);

/**
 * @param what completes "the television refused to ..."
 * @param code the result code, negative
 * @param reason why; may be empty
 * @throws Error kRefused, always
 */
[[noreturn]] void throwRefused(const std::string& what, int32_t code, const std::string& reason);

/**
 * Returns `result` when it is no failure code.
 *
 * @param what texts and numbers that together complete "the television refused to ..."
 * @throws Error kRefused for a failure code; the message has its meaning and the code itself
 */
template <typename... Parts>
int32_t checkResult(int32_t result, const Parts&... what) {
    if (result >= 0) return result;
    std::ostringstream text;
    text.imbue(std::locale::classic());
    (text << ... << what);
    throwRefused(text.str(), result, meaningOf(result));
}

}  // namespace qortv
