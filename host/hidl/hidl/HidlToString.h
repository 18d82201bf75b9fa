// Texts of values for people. Generated code has more overloads, for structures and enumerations.
#pragma once

#include <cstddef>
#include <string>
#include <type_traits>

#include <hidl/HidlArray.h>
#include <hidl/HidlMemory.h>
#include <hidl/HidlVec.h>

namespace android::hardware {

namespace details {

template <typename T>
std::string toHexString(T value, bool prefix = true) {
    static_assert(std::is_integral<T>::value, "only integers");
    static const char kDigits[] = "0123456789abcdef";
    auto bits = static_cast<std::make_unsigned_t<T>>(value);
    std::string digits;
    do {
        digits.insert(digits.begin(), kDigits[bits & 0xf]);
        bits = static_cast<std::make_unsigned_t<T>>(bits >> 4);
    } while (bits != 0);
    return prefix ? "0x" + digits : digits;
}

}  // namespace details

template <typename T>
typename std::enable_if<std::is_arithmetic<T>::value, std::string>::type toString(T value) {
    return std::to_string(value);
}
std::string toString(const void* pointer);
std::string toString(const hidl_string& text);
std::string toString(const hidl_handle& handle);
std::string toString(const hidl_memory& memory);

template <typename T>
std::string toString(const hidl_vec<T>& vec);
template <typename T, size_t SIZE1>
std::string toString(const hidl_array<T, SIZE1>& array);
template <typename T, size_t SIZE1, size_t SIZE2, size_t... SIZES>
std::string toString(const hidl_array<T, SIZE1, SIZE2, SIZES...>& array);

namespace details {

template <typename Iterator>
std::string listToString(Iterator first, size_t count, const char* open, const char* close) {
    using ::android::hardware::toString;
    std::string text = open;
    for (size_t i = 0; i < count; ++i, ++first) {
        if (i != 0) text += ", ";
        text += toString(*first);
    }
    return text + close;
}

template <typename T, size_t SIZE1, size_t... SIZES>
std::string rowsToString(const T* base) {
    if constexpr (sizeof...(SIZES) == 0) {
        return listToString(base, SIZE1, "{", "}");
    } else {
        std::string text = "{";
        for (size_t i = 0; i < SIZE1; ++i) {
            if (i != 0) text += ", ";
            text += rowsToString<T, SIZES...>(base + i * product(SIZES...));
        }
        return text + "}";
    }
}

}  // namespace details

template <typename T>
std::string toString(const hidl_vec<T>& vec) {
    return "[" + std::to_string(vec.size()) + "]" +
           details::listToString(vec.begin(), vec.size(), "{", "}");
}
template <typename T, size_t SIZE1>
std::string toString(const hidl_array<T, SIZE1>& array) {
    return "[" + std::to_string(SIZE1) + "]" + details::rowsToString<T, SIZE1>(array.data());
}
template <typename T, size_t SIZE1, size_t SIZE2, size_t... SIZES>
std::string toString(const hidl_array<T, SIZE1, SIZE2, SIZES...>& array) {
    std::string sizes;
    for (size_t size : array.size()) sizes += "[" + std::to_string(size) + "]";
    return sizes + details::rowsToString<T, SIZE1, SIZE2, SIZES...>(array.data());
}

}  // namespace android::hardware
