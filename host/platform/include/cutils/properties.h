/** System properties. On Linux they are the process's own and end with it. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/** Longest value, its NUL included; names that begin with "ro." have no such limit. */
enum { PROPERTY_VALUE_MAX = 92 };

/**
 * Sets `key` to `value`. Returns 0, or -1 where the name is empty or the value too long, or where
 * a name that begins with "ro." has a value already. Any thread; what reads properties with
 * android::base::GetProperty must not do so at the same time.
 */
int property_set(const char* key, const char* value);

#ifdef __cplusplus
}
#endif
