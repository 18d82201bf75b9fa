// The names of services in the runtime folder.
//
// A service process has one socket there, "PID.TOKEN.sock". A name "package@1.0::IFoo/instance" is
// a symbolic link to the socket of its process, named like the service with '/' and '%' written as
// %2F and %25: put in place by renaming, so that it is there whole or not at all. A name whose
// process is gone stays until somebody takes it over.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <utils/Errors.h>

namespace android::hardware::transport {

class Registry {
  public:
    struct Entry {
        std::string name;    // "package@1.0::IFoo/instance"
        std::string socket;  // path
        int pid = -1;
        uint64_t process = 0;  // token
    };

    // QORTV_RUNTIME_DIR, else $XDG_RUNTIME_DIR/qortv, else /run/qortv.
    static std::string folder();

    Registry() : mFolder(folder()) {}

    // Makes sure that the folder exists and is this user's or root's alone. False and a log line if
    // not.
    bool prepare() const;

    // The entry with this name. False if there is none; whether its process is alive shows when it
    // is called.
    bool find(const std::string& name, Entry* entry) const;
    // All entries, by name.
    std::vector<Entry> list() const;

    // Whether somebody listens there.
    static bool isAlive(const Entry& entry);

    // Makes `name` point at the socket of this process. ALREADY_EXISTS if another living process
    // has it. Holds the folder's lock meanwhile.
    status_t publish(const std::string& name, const std::string& socketName) const;

    // Listens in the folder under a new name, and removes sockets that nobody listens on. The
    // socket, or -errno.
    int listen(uint64_t process, std::string* socketName) const;

    // Removes a process's socket and the names that point at it.
    void withdraw(const std::string& socketName) const;

    const std::string& path() const { return mFolder; }

  private:
    const std::string mFolder;
};

// Wakes up when the folder changes. One thread.
class RegistryWatch {
  public:
    explicit RegistryWatch(const std::string& folder);
    ~RegistryWatch();
    RegistryWatch(const RegistryWatch&) = delete;
    RegistryWatch& operator=(const RegistryWatch&) = delete;

    // The descriptor to wait on; -1 where the kernel allows no more watches.
    int fd() const { return mFd; }
    // Waits for a change, at most so long (-1: without limit). Without a descriptor it waits for a
    // moment. False if nothing changed.
    bool wait(int timeoutMilliseconds);
    // Forgets the changes so far.
    void clear();

  private:
    int mFd;
};

}  // namespace android::hardware::transport
