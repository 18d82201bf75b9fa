#include "television/lists/folder_claim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "television/base/folders.h"
#include "television/base/log.h"
#include "television/base/sqlite.h"

namespace television {
namespace {

int openLockFile(const std::string& folder) {
    if (!makeFolders(folder, 0700, 0700)) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
    const int file = open((folder + "/qortv.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
    return file;
}

/** The process id in the lock file; "?" when there is none. */
std::string ownerOf(int file) {
    std::array<char, 16> owner{};
    if (pread(file, owner.data(), owner.size() - 1, 0) <= 0) return "?";
    return owner.data();
}

}  // namespace

FolderClaim::FolderClaim(const std::string& folder) : mFile(openLockFile(folder)) {
    if (flock(mFile, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        const std::string owner = ownerOf(mFile);
        close(mFile);
        throw SqliteError(SQLITE_BUSY, fmt::format("process {} uses the folder {}", owner, folder));
    }
    const std::string self = std::to_string(getpid());
    if (ftruncate(mFile, 0) != 0 || pwrite(mFile, self.data(), self.size(), 0) < 0) {
        LOG_TV_WARN("cannot note the process in {}/qortv.lock: {}", folder, std::strerror(errno));
    }
}

FolderClaim::~FolderClaim() {
    close(mFile);
}

}  // namespace television
