/** Makes texts of the broadcast safe to print. */
#pragma once

#include <string>

namespace qortv {

/** Returns `text` with every byte that is not part of well-formed UTF-8 replaced by U+FFFD. */
std::string validUtf8(const std::string& text);

}  // namespace qortv
