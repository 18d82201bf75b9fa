/** What the check of the plain bridges knows of the types of arguments, parameters and results. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>

namespace forwarding {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/** The type of an argument, parameter or result. */
struct Type {
    enum Kind : uint8_t {
        kNothing,      // a method that returns nothing
        kFlag,         // bool
        kNumber,       // an integer
        kEnumeration,  // of the interface
        kText,         // hidl_string
        kBytes,        // hidl_vec<uint8_t>: the bytes of a record
        kRecord,       // a struct of the middleware
        kCallback,     // the result callback of a method
    };
    Kind kind = kNothing;
    bool is_pointer = false;  // the rest is then about what it points to
    bool is_signed = false;
    uint32_t size = 0;  // bytes
};

template <typename T>
constexpr bool kIsCallback = false;
template <typename Signature>
constexpr bool kIsCallback<std::function<Signature>> = true;

template <typename T>
constexpr Type typeOf() {
    if constexpr (std::is_pointer_v<T>) {
        using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
        static_assert(!std::is_pointer_v<Target>);
        constexpr Type target = typeOf<Target>();
        return {target.kind, true, target.is_signed, target.size};
    } else if constexpr (std::is_void_v<T>) {
        return {};
    } else if constexpr (std::is_same_v<T, bool>) {
        return {Type::kFlag, false, false, sizeof(T)};
    } else if constexpr (std::is_enum_v<T>) {
        return {Type::kEnumeration, false, std::is_signed_v<std::underlying_type_t<T>>, sizeof(T)};
    } else if constexpr (std::is_integral_v<T>) {
        return {Type::kNumber, false, std::is_signed_v<T>, sizeof(T)};
    } else if constexpr (std::is_same_v<T, hidl_string>) {
        return {Type::kText, false, false, sizeof(T)};
    } else if constexpr (std::is_same_v<T, hidl_vec<uint8_t>>) {
        return {Type::kBytes, false, false, sizeof(T)};
    } else if constexpr (kIsCallback<T>) {
        return {Type::kCallback, false, false, sizeof(T)};
    } else {
        static_assert(std::is_class_v<T> && std::is_trivially_copyable_v<T>);
        return {Type::kRecord, false, false, sizeof(T)};
    }
}

struct Types {
    const Type* first;
    size_t count;

    const Type& operator[](size_t index) const { return first[index]; }
};

template <typename... T>
inline constexpr Type kTypes[] = {typeOf<T>()..., Type{}};

template <typename... T>
constexpr Types typesOf() {
    return {kTypes<T...>, sizeof...(T)};
}

}  // namespace forwarding
