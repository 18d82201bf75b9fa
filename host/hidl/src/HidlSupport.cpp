#include <hidl/HidlSupport.h>

#include <cstdlib>

#include <android/log.h>
#include <log/log.h>

namespace android::hardware {

namespace details {

void logAlwaysFatal(const char* message) {
    __android_log_write(ANDROID_LOG_FATAL, "hidl", message);
    abort();
}

HidlInstrumentor::HidlInstrumentor(const std::string&, const std::string&) {}
HidlInstrumentor::~HidlInstrumentor() = default;
void HidlInstrumentor::configureInstrumentation(bool) {}

}  // namespace details

// hidl_handle

hidl_handle::hidl_handle() : mOwnsHandle(false), mPad{} {}

hidl_handle::~hidl_handle() {
    freeHandle();
}

hidl_handle::hidl_handle(const native_handle_t* handle) : hidl_handle() {
    mHandle = handle;
}

hidl_handle::hidl_handle(const hidl_handle& other) : hidl_handle() {
    *this = other;
}

hidl_handle::hidl_handle(hidl_handle&& other) noexcept : hidl_handle() {
    *this = std::move(other);
}

hidl_handle& hidl_handle::operator=(const hidl_handle& other) {
    if (this == &other) return *this;
    freeHandle();
    if (other.mHandle != nullptr) {
        mHandle = native_handle_clone(other.mHandle);
        if (mHandle == nullptr) {
            details::logAlwaysFatal("hidl_handle: descriptors could not be duplicated.");
        }
        mOwnsHandle = true;
    }
    return *this;
}

hidl_handle& hidl_handle::operator=(const native_handle_t* handle) {
    freeHandle();
    mHandle = handle;
    return *this;
}

hidl_handle& hidl_handle::operator=(hidl_handle&& other) noexcept {
    if (this != &other) {
        freeHandle();
        mHandle = other.mHandle;
        mOwnsHandle = other.mOwnsHandle;
        other.mHandle = nullptr;
        other.mOwnsHandle = false;
    }
    return *this;
}

void hidl_handle::setTo(native_handle_t* handle, bool shouldOwn) {
    freeHandle();
    mHandle = handle;
    mOwnsHandle = shouldOwn;
}

void hidl_handle::freeHandle() {
    if (mOwnsHandle && mHandle != nullptr) {
        native_handle_close(mHandle);
        native_handle_delete(
                const_cast<native_handle_t*>(static_cast<const native_handle_t*>(mHandle)));
    }
    mHandle = nullptr;
    mOwnsHandle = false;
}

// hidl_string

static const char* const kEmpty = "";

hidl_string::hidl_string() : mBuffer(kEmpty), mSize(0), mOwnsBuffer(false), mPad{} {}

hidl_string::~hidl_string() {
    clear();
}

hidl_string::hidl_string(const char* text) : hidl_string() {
    if (text != nullptr) copyFrom(text, strlen(text));
}

hidl_string::hidl_string(const char* text, size_t length) : hidl_string() {
    copyFrom(text, length);
}

hidl_string::hidl_string(const std::string& text) : hidl_string() {
    copyFrom(text.data(), text.size());
}

hidl_string::hidl_string(const hidl_string& other) : hidl_string() {
    copyFrom(other.c_str(), other.size());
}

hidl_string::hidl_string(hidl_string&& other) noexcept : hidl_string() {
    *this = std::move(other);
}

hidl_string& hidl_string::operator=(const hidl_string& other) {
    if (this != &other) *this = hidl_string(other);
    return *this;
}

hidl_string& hidl_string::operator=(const char* text) {
    return *this = hidl_string(text);
}

hidl_string& hidl_string::operator=(const std::string& text) {
    return *this = hidl_string(text);
}

hidl_string& hidl_string::operator=(hidl_string&& other) noexcept {
    if (this != &other) {
        clear();
        mBuffer = other.mBuffer;
        mSize = other.mSize;
        mOwnsBuffer = other.mOwnsBuffer;
        other.mOwnsBuffer = false;
        other.clear();
    }
    return *this;
}

void hidl_string::clear() {
    if (mOwnsBuffer) delete[] static_cast<const char*>(mBuffer);
    mBuffer = kEmpty;
    mSize = 0;
    mOwnsBuffer = false;
}

void hidl_string::setToExternal(const char* data, size_t size) {
    if (size > UINT32_MAX) {
        details::logAlwaysFatal("hidl_string size can't exceed 2^32 bytes.");
    }
    if (data[size] != '\0') {
        details::logAlwaysFatal("hidl_string needs a NUL behind its last byte.");
    }
    clear();
    mBuffer = data;
    mSize = static_cast<uint32_t>(size);
}

// Only for strings that own nothing.
void hidl_string::copyFrom(const char* data, size_t size) {
    if (size >= UINT32_MAX) {
        details::logAlwaysFatal("hidl_string size can't exceed 2^32 bytes.");
    }
    if (size == 0) return;
    char* buffer = new char[size + 1];
    memcpy(buffer, data, size);
    buffer[size] = '\0';
    mBuffer = buffer;
    mSize = static_cast<uint32_t>(size);
    mOwnsBuffer = true;
}

bool operator==(const hidl_string& a, const hidl_string& b) {
    return a.size() == b.size() && memcmp(a.c_str(), b.c_str(), a.size()) == 0;
}

bool operator==(const hidl_string& a, const char* b) {
    return b != nullptr && a.size() == strlen(b) && memcmp(a.c_str(), b, a.size()) == 0;
}

bool operator<(const hidl_string& a, const hidl_string& b) {
    return std::string_view(a.c_str(), a.size()) < std::string_view(b.c_str(), b.size());
}

// toString

std::string toString(const void* pointer) {
    return details::toHexString(reinterpret_cast<uintptr_t>(pointer));
}

std::string toString(const hidl_string& text) {
    return "\"" + std::string(text) + "\"";
}

std::string toString(const hidl_handle& handle) {
    return toString(static_cast<const void*>(handle.getNativeHandle()));
}

std::string toString(const hidl_memory& memory) {
    return "memory {.name = " + toString(memory.name()) +
           ", .size = " + std::to_string(memory.size()) +
           ", .handle = " + toString(static_cast<const void*>(memory.handle())) + "}";
}

}  // namespace android::hardware
