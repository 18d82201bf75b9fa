#include "qortv/notification.h"

#include <cstdio>

#include "qortv/utf8.h"

namespace qortv {

namespace {

void append(std::string& line, bool value) {
    line += value ? "true" : "false";
}
void append(std::string& line, int64_t value) {
    line += std::to_string(value);
}
void append(std::string& line, uint64_t value) {
    line += std::to_string(value);
}

void append(std::string& line, const std::string& text) {
    line += '"';
    for (const char c : validUtf8(text)) {
        if (c == '"' || c == '\\') {
            line += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            char escape[5];
            std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned>(c));
            line += escape;
        } else {
            line += c;
        }
    }
    line += '"';
}

void append(std::string& line, const Notification::Bytes& bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    line += "<";
    for (const uint8_t byte : bytes) line += {kDigits[byte >> 4], kDigits[byte & 15]};
    line += ">";
}

void append(std::string& line, const Notification::Texts& texts) {
    line += "[";
    for (size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) line += ", ";
        append(line, texts[i]);
    }
    line += "]";
}

}  // namespace

std::string toString(const Notification& notification) {
    std::string line = notification.method;
    for (const auto& field : notification.fields) {
        line += ' ';
        line += field.name;
        line += '=';
        std::visit([&](const auto& value) { append(line, value); }, field.value);
    }
    return line;
}

}  // namespace qortv
