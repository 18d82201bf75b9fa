/** The password of the set: the password dialog checks it, and util.h sets it as a named value. */
#pragma once

#include <cstddef>

namespace television {

/** The name under which the core remembers the password; PWDDLG_DEFAULT_PASSWORD is the default. */
constexpr char kPasswordName[] = "password";
/** Bytes of the longest password and its NUL. */
constexpr size_t kLongestPassword = 64;

}  // namespace television
