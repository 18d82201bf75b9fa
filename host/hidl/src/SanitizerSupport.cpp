// Suppressions for the thread sanitizer. The platform's libutils is built without it, so it does
// not see the reference counts there, which order the deletion of an object after every earlier
// release of a reference, and takes the two for a race.
#include <hidl/HidlSupport.h>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
    return "race:android::RefBase::decStrong\n"
           "race:android::RefBase::weakref_type::decWeak\n";
}
#endif
#endif

namespace android::hardware::details {

bool debuggable() {
    return false;
}

}  // namespace android::hardware::details
