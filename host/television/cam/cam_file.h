/** Reads the small files of the Common Interface: module descriptions and CI+ keys. */
#pragma once

#include <cstddef>
#include <string>

namespace television {

/**
 * Reads the file `path` of at most `most` bytes into `text`. Returns 0 or an errno: EFBIG for a
 * longer file, EINVAL for one that is no regular file. Never waits for a pipe.
 */
int readCamFile(const std::string& path, size_t most, std::string& text);

}  // namespace television
