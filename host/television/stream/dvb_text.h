/** Texts of DVB tables: from the broadcaster's character tables to UTF-8, and on into the fields of
 * records. */
#pragma once

#include <cstddef>
#include <string>

#include "television/base/byte_view.h"

namespace television {

/**
 * The text of a descriptor field as UTF-8. The first byte selects the character table (EN 300 468,
 * annex A); without a selector it is ISO 6937 with its combining accents. Emphasis
 * codes and other control codes are left out, line breaks become '\n', and what the table does not
 * define becomes U+FFFD.
 */
std::string dvbTextToUtf8(ByteView text);

/** Copies UTF-8 into a record's field of `size` bytes and fills the rest, at least one byte, with
 * NULs. A text that is too long is cut between two characters. */
void copyText(char* field, size_t size, const std::string& text);

template <size_t N>
void copyText(char (&field)[N], const std::string& text) {
    copyText(field, N, text);
}

}  // namespace television
