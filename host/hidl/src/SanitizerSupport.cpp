// What the thread sanitizer has to know. It cannot see into the platform's libutils, so it takes
// the end of an object by its last reference for a race with whoever dropped a reference before:
// the counters that order the two are in there. Nothing else is hidden from it.
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
