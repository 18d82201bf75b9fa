// Small pieces that the type templates and the generated classes share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace android::hardware::details {

// Kinds of generated classes, for template logic: pure interface, stub, proxy, passthrough wrapper.
struct i_tag {};
struct bnhw_tag {};
struct bphw_tag {};
struct bs_tag {};

// Logs `message` and aborts. Lets the templates do without liblog.
[[noreturn]] void logAlwaysFatal(const char* message);

// A pointer that takes eight bytes whatever the width of the process's pointers, because it lies
// inside objects that are sent as they are. Does not own what it points to.
template <typename T>
struct hidl_pointer {
    hidl_pointer() : mPadding(0) { mPointer = nullptr; }
    hidl_pointer(T* pointer) : hidl_pointer() { mPointer = pointer; }  // NOLINT: implicit
    hidl_pointer(const hidl_pointer& other) : hidl_pointer(other.mPointer) {}
    hidl_pointer& operator=(const hidl_pointer& other) {
        mPadding = 0;
        mPointer = other.mPointer;
        return *this;
    }
    hidl_pointer& operator=(T* pointer) {
        mPadding = 0;
        mPointer = pointer;
        return *this;
    }

    operator T*() const { return mPointer; }  // NOLINT: implicit
    explicit operator void*() const { return mPointer; }
    T& operator*() const { return *mPointer; }
    T* operator->() const { return mPointer; }

  private:
    union alignas(8) {
        uint64_t mPadding;
        T* mPointer;
    };
};
static_assert(sizeof(hidl_pointer<char>) == 8, "wrong size");

// Base of every generated stub, proxy and wrapper: the place where a debuggable platform build
// hangs recorders of calls. There are none here.
struct HidlInstrumentor {
    HidlInstrumentor(const std::string& package, const std::string& interface);
    virtual ~HidlInstrumentor();

  protected:
    void configureInstrumentation(bool log = true);
};

}  // namespace android::hardware::details
