/** Small files that describe or feed the Common Interface module, read whole. */
#pragma once

#include <cstddef>
#include <string>

namespace television {

/**
 * Reads the file `path` of at most `most` bytes into `text`. Answers 0 or the error number; EFBIG
 * for a longer file, EINVAL for one that is no plain file. Never waits for a pipe.
 */
int readCamFile(const std::string& path, size_t most, std::string& text);

}  // namespace television
