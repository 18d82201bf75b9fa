/** A notification of the television as data: its method and arguments, for logs and tools. */
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace qortv {

struct Notification {
    using Bytes = std::vector<uint8_t>;
    using Texts = std::vector<std::string>;
    using Value = std::variant<bool, int64_t, uint64_t, std::string, Bytes, Texts>;

    /** An argument with its name in the interface. */
    struct Field {
        template <typename T, typename = std::enable_if_t<std::is_integral_v<T>>>
        Field(const char* fieldName, T number) : name(fieldName) {
            if constexpr (std::is_same_v<T, bool>) {
                value = number;
            } else if constexpr (std::is_signed_v<T>) {
                value = int64_t{number};
            } else {
                value = uint64_t{number};
            }
        }
        Field(const char* fieldName, std::string text) : name(fieldName), value(std::move(text)) {}
        Field(const char* fieldName, Bytes bytes) : name(fieldName), value(std::move(bytes)) {}
        Field(const char* fieldName, Texts texts) : name(fieldName), value(std::move(texts)) {}

        const char* name;
        Value value;
    };

    const char* method;         ///< such as "notifyScan"; a string literal
    std::vector<Field> fields;  ///< in the order of the interface
};

/**
 * Returns the notification as one line, such as `notifyScan code=1 tag=7`. Texts are in quotes with
 * control characters escaped, bytes in hexadecimal between angle brackets.
 */
std::string toString(const Notification& notification);

}  // namespace qortv
