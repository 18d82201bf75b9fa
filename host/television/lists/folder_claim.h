/** Reserves a folder for one process at a time. */
#pragma once

#include <string>

namespace television {

/** Keeps other processes from the folder while it lives: they fail to claim it. */
class FolderClaim {
  public:
    /** Makes the folder when it is missing and claims it with the file `qortv.lock`, in which the
     * process id is noted. Throws SqliteError when the folder cannot be made, or when another claim
     * holds it. On a file system without such locks the folder can be claimed by anyone. */
    explicit FolderClaim(const std::string& folder);
    ~FolderClaim();
    FolderClaim(const FolderClaim&) = delete;
    FolderClaim& operator=(const FolderClaim&) = delete;

  private:
    int mFile;  ///< its lock is the claim
};

}  // namespace television
