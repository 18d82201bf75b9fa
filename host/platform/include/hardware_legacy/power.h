/** System wake locks, matched by name. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

enum { PARTIAL_WAKE_LOCK = 1, FULL_WAKE_LOCK = 2 };

/** Takes the wake lock `id` (any text without white space). Returns 0 or more, or a negative errno.
 * Any thread. */
int acquire_wake_lock(int lock, const char* id);
/** Drops the wake lock `id`. Returns 0 or more, or a negative errno. Any thread. */
int release_wake_lock(const char* id);

#ifdef __cplusplus
}
#endif
