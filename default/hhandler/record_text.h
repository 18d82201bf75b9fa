/** Conversion of the texts in the fields of the middleware's records, which have a fixed size. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "bridge.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/**
 * Returns the text of `field` up to its first NUL. It refers to the field, which must outlive it.
 * Of a field without a NUL it is a copy, since a text that refers to memory needs one.
 */
template <size_t Size>
hidl_string textOf(const char (&field)[Size]) {
    return memchr(field, '\0', Size) != nullptr ? borrowedText(field) : hidl_string(field, Size);
}

/** Copies `text` into `field`, which must be zero, cut so that the last byte remains a NUL. */
template <size_t Size>
void setText(char (&field)[Size], const hidl_string& text) {
    memcpy(field, text.c_str(), std::min(text.size(), Size - 1));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
