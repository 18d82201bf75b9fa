/** UTF-8 text: its width on a terminal, its letter case, its control characters. */
#pragma once

#include <cstddef>
#include <string>

namespace qortvctl {

/** Makes the process take text for UTF-8, whatever the user's locale. The functions below need it,
 * so call it first in main(). */
void useUtf8();

/** Columns that a UTF-8 text takes on a terminal: 2 for a wide character, 0 for a combining one. */
size_t displayWidth(const std::string& text);

/** As much of the front of `text` (UTF-8) as fits into `columns`. */
std::string cutToWidth(std::string text, size_t columns);

/** `text` (UTF-8) with control characters shown as '?': safe for a terminal. */
std::string withoutControls(const std::string& text);

/** `text` (UTF-8) in lower case, for comparisons that ignore case. */
std::string lowerCase(const std::string& text);

}  // namespace qortvctl
