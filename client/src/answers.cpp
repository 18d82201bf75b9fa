#include "answers.h"

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

void throwBadImage(size_t bytes, size_t expected) {
    throw Error(Error::Kind::kTransport, "the service sent a record of " + std::to_string(bytes) +
                                                 " bytes instead of " + std::to_string(expected));
}

}  // namespace qortv
