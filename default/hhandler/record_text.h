/** The texts in the fixed fields of the middleware's records. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "bridge.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/**
 * The text of `field` up to its first NUL. It refers to the field, which must outlive it; a field
 * that is full to its last byte has no NUL that a borrowed text needs and is copied.
 */
template <size_t Size>
hidl_string textOf(const char (&field)[Size]) {
    return memchr(field, '\0', Size) != nullptr ? borrowedText(field) : hidl_string(field, Size);
}

/** Copies `text` into `field`, which is zero before, cut so that a NUL remains at its end. */
template <size_t Size>
void setText(char (&field)[Size], const hidl_string& text) {
    memcpy(field, text.c_str(), std::min(text.size(), Size - 1));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
