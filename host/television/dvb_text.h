/** Texts of DVB tables: the broadcaster's character tables to UTF-8, and UTF-8 into records. */
#pragma once

#include <cstddef>
#include <string>

#include "byte_view.h"

namespace television {

/**
 * The text of a descriptor field as UTF-8. The first byte selects the character table (EN 300 468,
 * annex A); without a selector it is ISO 6937 with its combining accents. Emphasis codes are left
 * out, line breaks become '\n', other control codes are left out, and what cannot be read becomes
 * U+FFFD.
 */
std::string dvbTextToUtf8(ByteView text);

/** Copies UTF-8 into a record's field of `size` bytes, NUL-filled, cut at a character's edge. */
void copyText(char* field, size_t size, const std::string& text);

template <size_t N>
void copyText(char (&field)[N], const std::string& text) {
    copyText(field, N, text);
}

}  // namespace television
