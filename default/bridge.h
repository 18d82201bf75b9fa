/**
 * What turns an interface method into a call of the middleware function that it is named after.
 * Nothing here allocates: outputs and record images live on the stack of the method, and the
 * transport copies what it is handed while the result callback runs.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <type_traits>
#include <utility>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_vec;
using ::android::hardware::Return;
using ::android::hardware::Void;

/** A vector that refers to `length` bytes at `data`, which must outlive it. */
inline hidl_vec<uint8_t> borrowedBytes(const void* data, size_t length) {
    hidl_vec<uint8_t> bytes;
    bytes.setToExternal(static_cast<uint8_t*>(const_cast<void*>(data)), length);
    return bytes;
}

/** Ends the process: `method` was sent `length` bytes for a block of `size`. */
[[noreturn]] void refuseOversizedImage(size_t length, size_t size, const char* method);

/**
 * A record that a client sent as bytes: zeroed, then filled by a bounded copy. A vector shorter
 * than the record leaves its tail zero; a longer one ends the process.
 */
template <typename Record>
class InputImage {
  public:
    explicit InputImage(const hidl_vec<uint8_t>& bytes, const char* method = __builtin_FUNCTION()) {
        static_assert(std::is_trivially_copyable_v<Record>);
        if (bytes.size() > sizeof(Record)) {
            refuseOversizedImage(bytes.size(), sizeof(Record), method);
        }
        if (bytes.size() != 0) memcpy(&mRecord, bytes.data(), bytes.size());
    }
    operator const Record*() const { return &mRecord; }

  private:
    Record mRecord{};
};

/** An output of a middleware function, zero until it is written. A scalar is answered as it is. */
template <typename T, bool IsRecord = std::is_class_v<T>>
class Output {
  public:
    T* pointer() { return &mValue; }
    T forClient() const { return mValue; }

  private:
    T mValue{};
};

/** A record is answered as a vector over all its bytes, written by the middleware or not. */
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
 * Calls `function` with `inputs` followed by its outputs, which are zeroed before, and hands the
 * outputs and then the result to `callback`. What `function` takes after the inputs are pointers to
 * its outputs.
 */
template <typename Callback, typename Result, typename... Parameters, typename... Inputs>
Return<void> answer(const Callback& callback, Result (*function)(Parameters...),
                    const Inputs&... inputs) {
    static_assert(sizeof...(Parameters) > sizeof...(Inputs), "a function without outputs");
    return answerWithOutputs(callback, function,
                             std::make_index_sequence<sizeof...(Parameters) - sizeof...(Inputs)>{},
                             inputs...);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
