// The type of a text in HIDL interfaces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>

#include <hidl/HidlInternal.h>

namespace android::hardware {

// A text with a NUL behind it, which size() does not count.
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
    // Points the string at `data`, which the caller keeps alive; data[size] must be NUL.
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

}  // namespace android::hardware
