// The types of HIDL interfaces: strings, vectors, arrays, handles. Their object layout is part of
// the wire format, so sizes and offsets are fixed and asserted.
//
// None of these types is safe for use by several threads at once; each object belongs to whoever
// holds it. A type that "owns" its buffer frees it; one that was pointed at foreign memory with
// setToExternal/setTo does not, and a copy always owns.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <sched.h>

#include <cutils/native_handle.h>
#include <hidl/HidlInternal.h>
#include <utils/Errors.h>
#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android {

namespace hidl::base::V1_0 {
struct IBase;
}
namespace hidl::memory::V1_0 {
struct IMemory;
}

namespace hardware {

// Told when an object's process dies. The runtime holds it weakly: whoever links it keeps it alive.
struct hidl_death_recipient : public virtual RefBase {
    // Runs on a pool thread, once for each link, with no lock of the runtime held. `cookie` is the
    // number given to linkToDeath, `who` the proxy it was called on (null if that is gone).
    virtual void serviceDied(uint64_t cookie,
                             const wp<::android::hidl::base::V1_0::IBase>& who) = 0;
};

// A native_handle_t (descriptors and integers) that may own it: closes and deletes it then.
struct hidl_handle {
    hidl_handle();
    ~hidl_handle();
    // Without ownership.
    hidl_handle(const native_handle_t* handle);  // NOLINT: implicit
    // Duplicates the descriptors and owns the copies.
    hidl_handle(const hidl_handle& other);
    hidl_handle(hidl_handle&& other) noexcept;
    hidl_handle& operator=(const hidl_handle& other);
    hidl_handle& operator=(const native_handle_t* handle);
    hidl_handle& operator=(hidl_handle&& other) noexcept;

    void setTo(native_handle_t* handle, bool shouldOwn = false);
    const native_handle_t* operator->() const { return mHandle; }
    operator const native_handle_t*() const { return mHandle; }  // NOLINT: implicit
    const native_handle_t* getNativeHandle() const { return mHandle; }

    static const size_t kOffsetOfNativeHandle = 0;

  private:
    friend struct ReceivedTypes;
    void freeHandle();

    details::hidl_pointer<const native_handle_t> mHandle;
    bool mOwnsHandle;
    uint8_t mPad[7];
};
static_assert(sizeof(hidl_handle) == 16, "wrong size");

// A text of bytes with a NUL behind it; size() does not count the NUL.
struct hidl_string {
    hidl_string();
    ~hidl_string();
    hidl_string(const hidl_string& other);
    hidl_string(const char* text);  // NOLINT: implicit
    hidl_string(const char* text, size_t length);
    hidl_string(const std::string& text);  // NOLINT: implicit
    template <typename InputIterator,
              typename = typename std::enable_if<std::is_convertible<
                      typename std::iterator_traits<InputIterator>::iterator_category,
                      std::input_iterator_tag>::value>::type>
    hidl_string(InputIterator first, InputIterator last) : hidl_string(std::string(first, last)) {}
    hidl_string(hidl_string&& other) noexcept;
    hidl_string& operator=(const hidl_string& other);
    hidl_string& operator=(const char* text);
    hidl_string& operator=(const std::string& text);
    hidl_string& operator=(hidl_string&& other) noexcept;

    operator std::string() const { return std::string(mBuffer, mSize); }  // NOLINT: implicit
    const char* c_str() const { return mBuffer; }
    size_t size() const { return mSize; }
    bool empty() const { return mSize == 0; }
    void clear();
    // Points at `data`, which the caller keeps alive; data[size] must be NUL.
    void setToExternal(const char* data, size_t size);

    static const size_t kOffsetOfBuffer = 0;

  private:
    friend struct ReceivedTypes;
    void copyFrom(const char* data, size_t size);

    details::hidl_pointer<const char> mBuffer;
    uint32_t mSize;
    bool mOwnsBuffer;
    uint8_t mPad[3];
};
static_assert(sizeof(hidl_string) == 16, "wrong size");

bool operator==(const hidl_string& a, const hidl_string& b);
bool operator==(const hidl_string& a, const char* b);
bool operator<(const hidl_string& a, const hidl_string& b);
inline bool operator==(const char* a, const hidl_string& b) {
    return b == a;
}
inline bool operator!=(const hidl_string& a, const hidl_string& b) {
    return !(a == b);
}
inline bool operator!=(const hidl_string& a, const char* b) {
    return !(a == b);
}
inline bool operator!=(const char* a, const hidl_string& b) {
    return !(b == a);
}

// A named piece of shared memory: a handle, its size in bytes, and the kind of allocator.
struct hidl_memory {
    hidl_memory() : mSize(0) {}
    hidl_memory(const hidl_string& name, hidl_handle&& handle, size_t size)
        : mHandle(std::move(handle)), mSize(size), mName(name) {}

    const native_handle_t* handle() const { return mHandle; }
    const hidl_string& name() const { return mName; }
    uint64_t size() const { return mSize; }
    bool valid() const { return mHandle != nullptr; }

    static const size_t kOffsetOfHandle = 0;
    static const size_t kOffsetOfName = 24;

  private:
    friend struct ReceivedTypes;
    hidl_handle mHandle;
    uint64_t mSize;
    hidl_string mName;
};
static_assert(sizeof(hidl_memory) == 40, "wrong size");

// A resizable array that owns its elements unless setToExternal pointed it at foreign ones.
template <typename T>
struct hidl_vec {
    using value_type = T;
    using iterator = T*;
    using const_iterator = const T*;

    hidl_vec() : mSize(0), mOwnsBuffer(false), mPad{} {}
    explicit hidl_vec(size_t size) : hidl_vec() { resize(size); }
    hidl_vec(const hidl_vec& other) : hidl_vec() { copyFrom(other.begin(), other.size()); }
    hidl_vec(hidl_vec&& other) noexcept : hidl_vec() { swap(other); }
    hidl_vec(std::initializer_list<T> list) : hidl_vec() { copyFrom(list.begin(), list.size()); }
    hidl_vec(const std::vector<T>& other) : hidl_vec() {  // NOLINT: implicit
        copyFrom(other.begin(), other.size());
    }
    template <typename InputIterator,
              typename = typename std::enable_if<std::is_convertible<
                      typename std::iterator_traits<InputIterator>::iterator_category,
                      std::input_iterator_tag>::value>::type>
    hidl_vec(InputIterator first, InputIterator last) : hidl_vec() {
        copyFrom(first, static_cast<size_t>(std::distance(first, last)));
    }
    ~hidl_vec() { freeBuffer(); }

    hidl_vec& operator=(const hidl_vec& other) {
        if (this != &other) hidl_vec(other).swap(*this);
        return *this;
    }
    hidl_vec& operator=(hidl_vec&& other) noexcept {
        hidl_vec(std::move(other)).swap(*this);
        return *this;
    }
    hidl_vec& operator=(const std::vector<T>& other) {
        hidl_vec(other).swap(*this);
        return *this;
    }
    hidl_vec& operator=(std::initializer_list<T> list) {
        hidl_vec(list).swap(*this);
        return *this;
    }
    operator std::vector<T>() const { return std::vector<T>(begin(), end()); }  // NOLINT: implicit

    // Points at `size` elements at `data`. Without ownership the caller keeps them alive; with it
    // they must come from new[].
    void setToExternal(T* data, size_t size, bool shouldOwn = false) {
        checkSize(size);
        freeBuffer();
        mBuffer = data;
        mSize = static_cast<uint32_t>(size);
        mOwnsBuffer = shouldOwn;
    }
    // Gives up ownership and returns the elements; the caller deletes them with delete[] if the
    // vector owned them. The vector keeps pointing at them.
    T* releaseData() {
        mOwnsBuffer = false;
        return mBuffer;
    }

    T* data() { return mBuffer; }
    const T* data() const { return mBuffer; }
    T& operator[](size_t index) { return static_cast<T*>(mBuffer)[index]; }
    const T& operator[](size_t index) const { return static_cast<const T*>(mBuffer)[index]; }
    size_t size() const { return mSize; }
    bool empty() const { return mSize == 0; }
    iterator begin() { return mBuffer; }
    iterator end() { return begin() + mSize; }
    const_iterator begin() const { return mBuffer; }
    const_iterator end() const { return begin() + mSize; }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }

    // Keeps the first elements, moved where the vector owns them; new ones are value-initialised.
    void resize(size_t size) {
        checkSize(size);
        if (size == 0) {
            hidl_vec().swap(*this);
            return;
        }
        T* buffer = new T[size]();
        const size_t kept = size < mSize ? size : mSize;
        for (size_t i = 0; i < kept; ++i) {
            if (mOwnsBuffer) {
                buffer[i] = std::move((*this)[i]);
            } else {
                buffer[i] = std::as_const(*this)[i];
            }
        }
        setToExternal(buffer, size, true);
    }

    static const size_t kOffsetOfBuffer = 0;

  private:
    friend struct ReceivedTypes;

    static void checkSize(size_t size) {
        if (size > std::numeric_limits<uint32_t>::max()) {
            details::logAlwaysFatal("hidl_vec can't hold more than 2^32 elements.");
        }
    }
    template <typename InputIterator>
    void copyFrom(InputIterator first, size_t size) {
        checkSize(size);
        if (size == 0) return;
        T* buffer = new T[size]();
        for (size_t i = 0; i < size; ++i, ++first) buffer[i] = *first;
        mBuffer = buffer;
        mSize = static_cast<uint32_t>(size);
        mOwnsBuffer = true;
    }
    void freeBuffer() {
        if (mOwnsBuffer) delete[] static_cast<T*>(mBuffer);
        mBuffer = nullptr;
        mSize = 0;
        mOwnsBuffer = false;
    }
    void swap(hidl_vec& other) noexcept {
        std::swap(mBuffer, other.mBuffer);
        std::swap(mSize, other.mSize);
        std::swap(mOwnsBuffer, other.mOwnsBuffer);
    }

    details::hidl_pointer<T> mBuffer;
    uint32_t mSize;
    bool mOwnsBuffer;
    uint8_t mPad[3];
};
static_assert(sizeof(hidl_vec<char>) == 16, "wrong size");

template <typename T>
bool operator==(const hidl_vec<T>& a, const hidl_vec<T>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (!(a[i] == b[i])) return false;
    }
    return true;
}
template <typename T>
bool operator!=(const hidl_vec<T>& a, const hidl_vec<T>& b) {
    return !(a == b);
}

namespace details {

constexpr size_t product() {
    return 1;
}
template <typename... Rest>
constexpr size_t product(size_t first, Rest... rest) {
    return first * product(rest...);
}

// std::array of std::array ... with the dimensions of a hidl_array.
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

// The integers that combinations of an enumeration's flags are kept in.
namespace details {
template <typename T, bool = std::is_enum<T>::value>
struct bitfield_type {
    using type = std::underlying_type_t<T>;
};
template <typename T>
struct bitfield_type<T, false> {};

template <typename T>
struct hidl_invalid_type;

// The values of an enumeration: generated code specialises it for each.
template <typename T, typename = std::enable_if_t<std::is_enum<T>::value>>
constexpr hidl_invalid_type<T> hidl_enum_values;

// Whether this is a build whose objects may tell their addresses.
bool debuggable();
}  // namespace details

template <typename T>
using hidl_bitfield = typename details::bitfield_type<T>::type;

// for (auto value : hidl_enum_range<Colour>()) visits every enumerator.
template <typename T, typename = std::enable_if_t<std::is_enum<T>::value>>
struct hidl_enum_range {
    constexpr auto begin() const { return details::hidl_enum_values<T>.begin(); }
    constexpr auto end() const { return details::hidl_enum_values<T>.end(); }
};

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

}  // namespace hardware
}  // namespace android
