#include <hidl/FatalCallError.h>

#include <cstdarg>
#include <cstdio>

#include <hidl/ForcedFatal.h>
#include <hidl/HidlInternal.h>

namespace android::hardware::details {

static thread_local int tServing = 0;

ServingScope::ServingScope() {
    ++tServing;
}

ServingScope::~ServingScope() {
    --tServing;
}

void fatal(const char* message) {
    if (tServing == 0) logAlwaysFatal(message);
    throw FatalCallError(message);
}

void throwFatal(const char* format, ...) {
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    fatal(text);
}

}  // namespace android::hardware::details
