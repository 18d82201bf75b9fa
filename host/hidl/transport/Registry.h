// The names of services in the runtime folder.
//
// A service process has one socket there, "PID.TOKEN.sock". A registered name
// "package@1.0::IFoo/instance" is a symbolic link to the socket of its process; its file name is
// the registered name with '/' and '%' written as %2F and %25. The link is put in place by
// renaming, so that a reader finds it complete or not at all. The name of a process that was killed
// stays until another process registers it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <utils/Errors.h>

namespace android::hardware::transport {

// Any thread.
class Registry {
  public:
    // A registered name and its process.
    struct Entry {
        std::string name;      // "package@1.0::IFoo/instance"
        std::string socket;    // path of the process's socket
        int pid = -1;          // of the process
        uint64_t process = 0;  // token of the process
    };

    // Returns $QORTV_RUNTIME_DIR, else $XDG_RUNTIME_DIR/qortv, else /run/qortv.
    static std::string folder();

    Registry() : mFolder(folder()) {}

    // Makes the folder if it is missing, and closes it to other users. Returns false, after a log
    // line, if that fails or the folder belongs to another user than this one or root.
    bool prepare() const;

    // Finds the entry with this name, without asking whether its process is alive. Returns false if
    // there is none.
    bool find(const std::string& name, Entry* entry) const;
    // Returns all entries in alphabetical order, those of dead processes included.
    std::vector<Entry> list() const;

    // Whether the entry's process still listens.
    static bool isAlive(const Entry& entry);

    // Makes `name` point at the socket of this process, under the folder's lock. Returns OK, or
    // after a log line ALREADY_EXISTS if another living process has the name, NAME_NOT_FOUND if the
    // link cannot be made.
    status_t publish(const std::string& name, const std::string& socketName) const;

    // Listens on a new socket in the folder for the process with this token, and removes sockets
    // that nobody listens on. Returns the socket, which the caller closes, or -errno.
    int listen(uint64_t process, std::string* socketName) const;

    // Removes a socket from the folder, and the names that point at it.
    void withdraw(const std::string& socketName) const;

    const std::string& path() const { return mFolder; }

  private:
    const std::string mFolder;
};

// Waits for changes of the runtime folder. Used by one thread at a time.
class RegistryWatch {
  public:
    explicit RegistryWatch(const std::string& folder);
    ~RegistryWatch();
    RegistryWatch(const RegistryWatch&) = delete;
    RegistryWatch& operator=(const RegistryWatch&) = delete;

    // Returns the descriptor that is readable after a change; -1 if the kernel allows no more
    // watches.
    int fd() const { return mFd; }
    // Waits for a change, at most for the timeout (-1: no limit). Returns false if there was none.
    // Without a descriptor it waits for a moment and returns true.
    bool wait(int timeoutMilliseconds);
    // Discards the changes so far.
    void clear();

  private:
    int mFd;
};

}  // namespace android::hardware::transport
