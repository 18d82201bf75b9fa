/** A notification of the television as data: its name and its arguments, for logs and tools. */
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

    /** One argument, under its name in the interface. */
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

    const char* method;         ///< such as "notifyScan"; lives as long as the program
    std::vector<Field> fields;  ///< in the order of the interface
};

/** `notifyScan code=1 tag=7 …`: one line; texts quoted with control characters escaped, bytes in
 * hex. */
std::string toString(const Notification& notification);

}  // namespace qortv
