// The type of an array of fixed size in HIDL interfaces.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

namespace android::hardware {

namespace details {

constexpr size_t product() {
    return 1;
}
template <typename... Rest>
constexpr size_t product(size_t first, Rest... rest) {
    return first * product(rest...);
}

// The std::array of std::array ... that has the dimensions of a hidl_array.
template <typename T, size_t FIRST, size_t... REST>
struct std_array {
    using type = std::array<typename std_array<T, REST...>::type, FIRST>;
    static T* copyTo(const type& from, T* to) {
        for (const auto& row : from) to = std_array<T, REST...>::copyTo(row, to);
        return to;
    }
    static const T* copyFrom(const T* from, type* to) {
        for (auto& row : *to) from = std_array<T, REST...>::copyFrom(from, &row);
        return from;
    }
};
template <typename T, size_t FIRST>
struct std_array<T, FIRST> {
    using type = std::array<T, FIRST>;
    static T* copyTo(const type& from, T* to) {
        for (const auto& element : from) *to++ = element;
        return to;
    }
    static const T* copyFrom(const T* from, type* to) {
        for (auto& element : *to) element = *from++;
        return from;
    }
};

// A row of an array of several dimensions; T is const for rows of const arrays.
template <typename T, size_t FIRST, size_t... REST>
struct array_row {
    explicit array_row(T* base) : mBase(base) {}
    array_row<T, REST...> operator[](size_t index) const {
        return array_row<T, REST...>(mBase + index * product(REST...));
    }

  private:
    T* mBase;
};
template <typename T, size_t FIRST>
struct array_row<T, FIRST> {
    explicit array_row(T* base) : mBase(base) {}
    T& operator[](size_t index) const { return mBase[index]; }

  private:
    T* mBase;
};

}  // namespace details

// An array of fixed size and several dimensions, row after row in place.
template <typename T, size_t SIZE1, size_t... SIZES>
struct hidl_array {
    using std_array_type = typename details::std_array<T, SIZE1, SIZES...>::type;

    hidl_array() = default;
    // Copies elementCount() elements.
    hidl_array(const T* source) {  // NOLINT: implicit
        for (size_t i = 0; i < elementCount(); ++i) mBuffer[i] = source[i];
    }
    hidl_array(const std_array_type& array) {  // NOLINT: implicit
        details::std_array<T, SIZE1, SIZES...>::copyTo(array, mBuffer);
    }
    operator std_array_type() const {  // NOLINT: implicit
        std_array_type array;
        details::std_array<T, SIZE1, SIZES...>::copyFrom(mBuffer, &array);
        return array;
    }

    T* data() { return mBuffer; }
    const T* data() const { return mBuffer; }
    details::array_row<T, SIZES...> operator[](size_t index) {
        return details::array_row<T, SIZES...>(mBuffer + index * details::product(SIZES...));
    }
    details::array_row<const T, SIZES...> operator[](size_t index) const {
        return details::array_row<const T, SIZES...>(mBuffer + index * details::product(SIZES...));
    }

    using size_tuple_type = std::array<size_t, 1 + sizeof...(SIZES)>;
    static constexpr size_tuple_type size() { return {SIZE1, SIZES...}; }
    static constexpr size_t elementCount() { return details::product(SIZE1, SIZES...); }

  private:
    T mBuffer[details::product(SIZE1, SIZES...)];
};

template <typename T, size_t SIZE1>
struct hidl_array<T, SIZE1> {
    using std_array_type = std::array<T, SIZE1>;

    hidl_array() = default;
    // Copies SIZE1 elements from a pointer.
    template <typename Pointer,
              typename = std::enable_if_t<std::is_pointer<Pointer>::value &&
                                          std::is_convertible<Pointer, const T*>::value>>
    hidl_array(Pointer source) {  // NOLINT: implicit
        for (size_t i = 0; i < SIZE1; ++i) mBuffer[i] = source[i];
    }
    // g++ does not let a temporary array decay to a pointer, and generated code passes those.
    hidl_array(const T (&source)[SIZE1])  // NOLINT: implicit
        : hidl_array(static_cast<const T*>(source)) {}
    hidl_array(const std_array_type& array) : hidl_array(array.data()) {}  // NOLINT: implicit
    operator std_array_type() const {                                      // NOLINT: implicit
        std_array_type array;
        for (size_t i = 0; i < SIZE1; ++i) array[i] = mBuffer[i];
        return array;
    }

    T* data() { return mBuffer; }
    const T* data() const { return mBuffer; }
    T& operator[](size_t index) { return mBuffer[index]; }
    const T& operator[](size_t index) const { return mBuffer[index]; }
    static constexpr size_t size() { return SIZE1; }
    static constexpr size_t elementCount() { return SIZE1; }

  private:
    T mBuffer[SIZE1];
};

template <typename T, size_t SIZE1, size_t... SIZES>
bool operator==(const hidl_array<T, SIZE1, SIZES...>& a, const hidl_array<T, SIZE1, SIZES...>& b) {
    for (size_t i = 0; i < hidl_array<T, SIZE1, SIZES...>::elementCount(); ++i) {
        if (!(a.data()[i] == b.data()[i])) return false;
    }
    return true;
}
template <typename T, size_t SIZE1, size_t... SIZES>
bool operator!=(const hidl_array<T, SIZE1, SIZES...>& a, const hidl_array<T, SIZE1, SIZES...>& b) {
    return !(a == b);
}

}  // namespace android::hardware
