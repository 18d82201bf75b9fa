// Enumerations of HIDL interfaces: combinations of flags, and lists of all values.
#pragma once

#include <type_traits>

namespace android::hardware {

// The integer type that holds combinations of an enumeration's flags.
namespace details {
template <typename T, bool = std::is_enum<T>::value>
struct bitfield_type {
    using type = std::underlying_type_t<T>;
};
template <typename T>
struct bitfield_type<T, false> {};

template <typename T>
struct hidl_invalid_type;

// The values of an enumeration. Generated code specialises it for each enumeration.
template <typename T, typename = std::enable_if_t<std::is_enum<T>::value>>
constexpr hidl_invalid_type<T> hidl_enum_values;
}  // namespace details

template <typename T>
using hidl_bitfield = typename details::bitfield_type<T>::type;

// for (auto value : hidl_enum_range<Colour>()) visits every enumerator.
template <typename T, typename = std::enable_if_t<std::is_enum<T>::value>>
struct hidl_enum_range {
    constexpr auto begin() const { return details::hidl_enum_values<T>.begin(); }
    constexpr auto end() const { return details::hidl_enum_values<T>.end(); }
};

}  // namespace android::hardware
