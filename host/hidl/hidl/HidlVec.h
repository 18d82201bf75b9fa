// The type of a resizable array in HIDL interfaces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

#include <hidl/HidlInternal.h>

namespace android::hardware {

// A resizable array.
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

    // Points the vector at `size` elements at `data`. With shouldOwn they must come from new[];
    // without it the caller keeps them alive.
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

    // Keeps the first elements (moved if the vector owns them, else copied); new ones are
    // value-initialised.
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

}  // namespace android::hardware
