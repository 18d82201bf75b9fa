// Small helpers that the type templates and the generated classes share.
#pragma once

#include <cstdint>
#include <string>

namespace android::hardware::details {

// Kinds of generated classes, for template logic: pure interface, stub, proxy, passthrough wrapper.
struct i_tag {};
struct bnhw_tag {};
struct bphw_tag {};
struct bs_tag {};

// Logs `message` and aborts the process. Keeps liblog out of the templates.
[[noreturn]] void logAlwaysFatal(const char* message);

// A pointer that takes eight bytes whatever the width of the process's pointers, because it is part
// of objects that are sent as they are in memory. Does not own what it points to.
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

// Base of every generated stub, proxy and wrapper. A debuggable build of the platform records calls
// here; this runtime does not.
struct HidlInstrumentor {
    HidlInstrumentor(const std::string& package, const std::string& interface);
    virtual ~HidlInstrumentor();

  protected:
    void configureInstrumentation(bool log = true);
};

}  // namespace android::hardware::details
