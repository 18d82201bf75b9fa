#include "television/base/folders.h"

#include <cerrno>

namespace television {

bool makeFolders(const std::string& path, mode_t mode, mode_t parents) {
    for (size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
        mkdir(path.substr(0, at).c_str(), parents);
    }
    return mkdir(path.c_str(), mode) == 0 || errno == EEXIST;
}

}  // namespace television
