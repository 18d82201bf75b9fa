#include "television/readiness_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "television/base/folders.h"
#include "television/base/log.h"

namespace television {
namespace {

/** In the order in which the service looks for them. */
constexpr const char* kNames[] = {"dtv_svc_is_ready", "tv_api_is_init"};

}  // namespace

void ReadinessFiles::remove() const {
    if (mFolder.empty()) return;
    for (const char* name : kNames) {
        const std::string path = mFolder + "/" + name;
        if (unlink(path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
            LOG_TV_ERROR("cannot remove the old readiness file {}: {}", path, std::strerror(errno));
        }
    }
}

bool ReadinessFiles::makeFolder() const {
    if (mFolder.empty()) return false;
    if (makeFolders(mFolder, 0700, 0755)) return true;
    LOG_TV_ERROR(
            "cannot make the folder {} for the readiness files: {} (QORTV_VENDOR_TMP names "
            "another)",
            mFolder, std::strerror(errno));
    return false;
}

void ReadinessFiles::write() const {
    for (const char* name : kNames) {
        const std::string path = mFolder + "/" + name;
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        if (file < 0) {
            LOG_TV_ERROR("cannot write the readiness file {}: {}", path, std::strerror(errno));
        } else {
            close(file);
        }
    }
}

}  // namespace television
