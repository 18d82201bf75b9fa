/**
 * The means by which an interface method calls the middleware function that it is named after. To
 * answer a request is to call its result callback, with the outputs first and the result last.
 *
 * Only arrays whose size the client chooses are allocated: other outputs and record images live on
 * the stack of the method, and the transport copies them while the result callback runs.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;
using ::android::hardware::Void;

/** Returns zeroed memory for `count` elements of `size` bytes with a byte of 0 after them; the
 * caller frees it with free(). Null if there is none, or if the size does not fit in 32 bits. */
void* zeroedMemory(int64_t count, size_t size);

/** Ends the process: there is no memory for an array that `method` cannot do without. */
[[noreturn]] void endForLackOfMemory(int64_t count, size_t size, const char* method);

/** Returns a vector that refers to `count` elements at `data`, which must outlive it. */
template <typename T>
hidl_vec<T> borrowedVector(T* data, size_t count) {
    hidl_vec<T> borrowed;
    borrowed.setToExternal(data, count);
    return borrowed;
}

/** Returns a vector that refers to `length` bytes at `data`, which must outlive it. */
inline hidl_vec<uint8_t> borrowedBytes(const void* data, size_t length) {
    return borrowedVector(static_cast<uint8_t*>(const_cast<void*>(data)), length);
}

/** Returns a text that refers to `text` up to its first NUL; `text` must outlive it. */
inline hidl_string borrowedText(const char* text) {
    hidl_string borrowed;
    borrowed.setToExternal(text, strlen(text));
    return borrowed;
}

/** A zeroed buffer for a text of at most `Size` bytes. The client gets it up to the first NUL. */
template <size_t Size>
class FixedText {
  public:
    char* data() { return mText; }
    static constexpr uint32_t size() { return Size; }
    hidl_string forClient() const { return borrowedText(mText); }

  private:
    char mText[Size + 1] = {};  // the last byte, which size() leaves out, remains a NUL
};

/**
 * A zeroed array of a size that the client chose. If memory is short, or the size does not fit in
 * the 32 bits of the middleware, the process ends (kRequired) or the array is null (kOptional).
 */
template <typename T>
class CallerArray {
  public:
    enum Kind { kRequired, kOptional };

    explicit CallerArray(int64_t count, Kind kind = kRequired,
                         const char* method = __builtin_FUNCTION())
        : mCount(count), mData(static_cast<T*>(zeroedMemory(count, sizeof(T)))) {
        if (mData == nullptr && kind == kRequired) endForLackOfMemory(count, sizeof(T), method);
    }
    /** A copy of what a client sent, for the middleware to rewrite. */
    explicit CallerArray(const hidl_vec<T>& values, const char* method = __builtin_FUNCTION())
        : CallerArray(values.size(), kRequired, method) {
        std::copy_n(values.data(), values.size(), mData);
    }
    ~CallerArray() { free(mData); }
    CallerArray(const CallerArray&) = delete;
    CallerArray& operator=(const CallerArray&) = delete;

    T* data() const { return mData; }
    /** Frees the array before the end of its scope. */
    void clear() { free(std::exchange(mData, nullptr)); }
    /**
     * Returns how many elements to answer with when the middleware reports `reported`. It may
     * report more than the client asked for: the client then learns that number, and gets the
     * elements that it asked for.
     */
    size_t held(size_t reported) const { return std::min(reported, static_cast<size_t>(mCount)); }

  private:
    int64_t mCount;
    T* mData;
};

/**
 * An array that a client sent together with a count. The middleware is told the count and may read
 * as many elements: if the client sent fewer, it gets a copy that is filled up with zeros.
 */
template <typename T>
class SentArray {
  public:
    SentArray(const hidl_vec<T>& values, uint64_t count, const char* method = __builtin_FUNCTION())
        : mSent(values.data()) {
        if (count <= values.size()) return;
        const auto elements = static_cast<int64_t>(std::min<uint64_t>(count, INT64_MAX));
        mPadded = static_cast<T*>(zeroedMemory(elements, sizeof(T)));
        if (mPadded == nullptr) endForLackOfMemory(elements, sizeof(T), method);
        std::copy_n(values.data(), values.size(), mPadded);
    }
    ~SentArray() { free(mPadded); }
    SentArray(const SentArray&) = delete;
    SentArray& operator=(const SentArray&) = delete;

    const T* data() const { return mPadded != nullptr ? mPadded : mSent; }

  private:
    const T* mSent;
    T* mPadded = nullptr;
};

/** A zeroed buffer for a text of `length` bytes and a NUL. The client gets it up to the first NUL.
 */
class CallerText : public CallerArray<char> {
  public:
    explicit CallerText(int64_t length, const char* method = __builtin_FUNCTION())
        : CallerArray(length + 1, kRequired, method) {}
    hidl_string forClient() const { return borrowedText(data()); }
};

/** Ends the process: the client of `method` sent `length` bytes for a block of `size`. */
[[noreturn]] void refuseOversizedImage(size_t length, size_t size, const char* method);

/** Copies `bytes`, which a client sent, to the start of a block of `size` bytes. The process ends
 * if they do not fit. */
inline void boundedCopy(void* block, size_t size, const hidl_vec<uint8_t>& bytes,
                        const char* method = __builtin_FUNCTION()) {
    if (bytes.size() > size) refuseOversizedImage(bytes.size(), size, method);
    if (bytes.size() != 0) memcpy(block, bytes.data(), bytes.size());
}

/**
 * A record that a client sent as bytes. If there are fewer bytes than the record has, the rest of
 * it is zero; more bytes end the process.
 */
template <typename Record>
class InputImage {
  public:
    explicit InputImage(const hidl_vec<uint8_t>& bytes, const char* method = __builtin_FUNCTION()) {
        static_assert(std::is_trivially_copyable_v<Record>);
        boundedCopy(&mRecord, sizeof(mRecord), bytes, method);
    }
    operator const Record*() const { return &mRecord; }

  private:
    Record mRecord{};
};

/** An output of a middleware function, zero until it is written. A scalar is answered as a number.
 */
template <typename T, bool IsRecord = std::is_class_v<T>>
class Output {
  public:
    T* pointer() { return &mValue; }
    T forClient() const { return mValue; }

  private:
    T mValue{};
};

/** A record is answered as a vector of all its bytes. */
template <typename T>
class Output<T, true> {
  public:
    Output() { mBytes.setToExternal(reinterpret_cast<uint8_t*>(&mRecord), sizeof(mRecord)); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    T* pointer() { return &mRecord; }
    const hidl_vec<uint8_t>& forClient() const { return mBytes; }

  private:
    T mRecord{};
    hidl_vec<uint8_t> mBytes;
};

template <typename Callback, typename Result, typename... Parameters, size_t... I,
          typename... Inputs>
Return<void> answerWithOutputs(const Callback& callback, Result (*function)(Parameters...),
                               std::index_sequence<I...>, const Inputs&... inputs) {
    using Types = std::tuple<Parameters...>;
    std::tuple<Output<std::remove_pointer_t<std::tuple_element_t<sizeof...(Inputs) + I, Types>>>...>
            outputs;
    const Result result = function(inputs..., std::get<I>(outputs).pointer()...);
    callback(std::get<I>(outputs).forClient()..., result);
    return Void();
}

/**
 * Calls `function` with `inputs` and then pointers to its outputs, which are zero before the call,
 * and answers with the outputs and the result. The parameters of `function` after the inputs are
 * the pointers to its outputs.
 */
template <typename Callback, typename Result, typename... Parameters, typename... Inputs>
Return<void> answer(const Callback& callback, Result (*function)(Parameters...),
                    const Inputs&... inputs) {
    static_assert(sizeof...(Parameters) > sizeof...(Inputs), "a function without outputs");
    return answerWithOutputs(callback, function,
                             std::make_index_sequence<sizeof...(Parameters) - sizeof...(Inputs)>{},
                             inputs...);
}

/**
 * The same for a function whose only output is a flag: a byte, which the client receives as true if
 * it is not 0.
 */
template <typename Callback, typename Result, typename... Parameters, typename... Inputs>
Return<void> answerFlag(const Callback& callback, Result (*function)(Parameters...),
                        const Inputs&... inputs) {
    uint8_t flag = 0;
    const Result result = function(inputs..., &flag);
    callback(flag != 0, result);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
