#include "television/core/client_text.h"

#include <algorithm>
#include <cstring>

#include "middleware/result_codes.h"
#include "television/core/client_memory.h"

namespace television {

int32_t putText(char* to, uint32_t size, const std::string& text) {
    if (!writable(to) || size == 0) return TV_INVALID_ARGUMENT;
    size_t length = std::min<size_t>(text.size(), size - 1);
    if (length < text.size()) {
        while (length > 0 && (static_cast<uint8_t>(text[length]) & 0xC0) == 0x80) --length;
    }
    text.copy(to, length);
    to[length] = '\0';
    return TV_OK;
}

std::optional<std::string> readText(const char* from, size_t most) {
    if (from == nullptr) return std::nullopt;
    const size_t length = strnlen(from, most);
    if (length == most) return std::nullopt;
    return std::string(from, length);
}

std::optional<size_t> windowNamed(const char* name) {
    const std::optional<std::string> text = readText(name, 16);
    if (text == "main" || text == "main_" || text == "main_svctx") return 0;
    if (text == "sub" || text == "sub_s" || text == "sub_svctx") return 1;
    return std::nullopt;
}

}  // namespace television
