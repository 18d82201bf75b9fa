/** Makes folders. */
#pragma once

#include <sys/stat.h>

#include <string>

namespace television {

/**
 * Makes the folder `path` with the access rights `mode`, and the missing ones above it with the
 * access rights `parents`. Returns true when it was made or something had that path already; false,
 * with errno set, when it could not be made.
 */
bool makeFolders(const std::string& path, mode_t mode, mode_t parents);

}  // namespace television
