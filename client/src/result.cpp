#include "result.h"

#include "middleware/result_codes.h"

namespace qortv {

std::string meaningOf(int32_t code) {
    switch (code) {
        case TV_INVALID_ARGUMENT:
            return "invalid argument";
        case TV_NOT_FOUND:
            return "not found";
        case TV_NOT_SUPPORTED:
            return "not supported";
        case TV_FULL:
            return "no room";
        case TV_BUSY:
            return "busy";
        default:
            return {};
    }
}

void throwRefused(const std::string& what, int32_t code, const std::string& reason) {
    std::string message = "the television refused to " + what;
    if (!reason.empty()) message += ": " + reason;
    throw Error(Error::Kind::kRefused, message + " (code " + std::to_string(code) + ")");
}

}  // namespace qortv
