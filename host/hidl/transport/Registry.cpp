#include <transport/Registry.h>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <hidl/Limits.h>
#include <transport/Log.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

namespace {

constexpr char kSocketSuffix[] = ".sock";
// Time between two reads of the folder where it cannot be watched.
constexpr int kPollMilliseconds = 100;

// Makes a file name of a registered name, and the registered name of a file name.
std::string encode(const std::string& name) {
    std::string text;
    for (const char c : name) {
        if (c == '/') {
            text += "%2F";
        } else if (c == '%') {
            text += "%25";
        } else {
            text += c;
        }
    }
    return text;
}

std::string decode(const std::string& file) {
    std::string text;
    for (size_t i = 0; i < file.size(); ++i) {
        if (file.compare(i, 3, "%2F") == 0) {
            text += '/';
            i += 2;
        } else if (file.compare(i, 3, "%25") == 0) {
            text += '%';
            i += 2;
        } else {
            text += file[i];
        }
    }
    return text;
}

// Reads "PID.TOKEN.sock". Returns false for any other name.
bool parseSocketName(const std::string& name, int* pid, uint64_t* process) {
    int end = 0;
    return sscanf(name.c_str(), "%d.%16" SCNx64 "%n", pid, process, &end) == 2 &&
           name.compare(static_cast<size_t>(end), std::string::npos, kSocketSuffix) == 0;
}

// Reads the link `file` of the folder. Returns false if it is none of a registered name.
bool readEntry(const std::string& folder, const std::string& file, Registry::Entry* entry) {
    char target[256];
    const ssize_t size = readlink((folder + "/" + file).c_str(), target, sizeof(target));
    if (size <= 0 || static_cast<size_t>(size) == sizeof(target)) return false;
    const std::string socket(target, static_cast<size_t>(size));
    if (socket.find('/') != std::string::npos) return false;
    if (!parseSocketName(socket, &entry->pid, &entry->process)) return false;
    entry->name = decode(file);
    entry->socket = folder + "/" + socket;
    return true;
}

// Whether a process listens on the socket at `path`.
bool isListening(const std::string& path) {
    const int socket = connectTo(path, limits::kInquiryMilliseconds);
    if (socket >= 0) close(socket);
    // Other errors, for example too many open files here, tell nothing about that process.
    return socket != -ECONNREFUSED && socket != -ENOENT;
}

// Holds the folder's lock as long as it lives.
class FolderLock {
  public:
    explicit FolderLock(const std::string& folder)
        : mFd(open((folder + "/.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
        while (mFd >= 0 && flock(mFd, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~FolderLock() {
        if (mFd >= 0) close(mFd);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    const int mFd;
};

// Returns the names of the folder's files in alphabetical order, without hidden ones.
std::vector<std::string> filesOf(const std::string& folder) {
    std::vector<std::string> files;
    DIR* directory = opendir(folder.c_str());
    if (directory == nullptr) return files;
    while (const dirent* file = readdir(directory)) {
        if (file->d_name[0] != '.') files.emplace_back(file->d_name);
    }
    closedir(directory);
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::string Registry::folder() {
    const char* folder = getenv("QORTV_RUNTIME_DIR");
    if (folder != nullptr && *folder != '\0') return folder;
    const char* runtime = getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime != '\0') return std::string(runtime) + "/qortv";
    return "/run/qortv";
}

bool Registry::prepare() const {
    if (mkdir(mFolder.c_str(), 0700) != 0 && errno != EEXIST) {
        HIDL_LOGE("Runtime folder %s cannot be made: %s", mFolder.c_str(), strerror(errno));
        return false;
    }
    const int fd = open(mFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    struct stat status;
    bool usable = fd >= 0 && fstat(fd, &status) == 0;
    if (!usable) {
        HIDL_LOGE("Runtime folder %s cannot be used: %s", mFolder.c_str(), strerror(errno));
    } else if (status.st_uid != geteuid() && status.st_uid != 0) {
        HIDL_LOGE("Runtime folder %s belongs to user %u", mFolder.c_str(), status.st_uid);
        usable = false;
    } else if ((status.st_mode & 0777) != 0700 && fchmod(fd, 0700) != 0) {
        HIDL_LOGE("Runtime folder %s is open to others: %s", mFolder.c_str(), strerror(errno));
        usable = false;
    }
    if (fd >= 0) close(fd);
    return usable;
}

bool Registry::find(const std::string& name, Entry* entry) const {
    return readEntry(mFolder, encode(name), entry);
}

std::vector<Registry::Entry> Registry::list() const {
    std::vector<Entry> entries;
    for (const std::string& file : filesOf(mFolder)) {
        Entry entry;
        if (readEntry(mFolder, file, &entry)) entries.push_back(entry);
    }
    return entries;
}

bool Registry::isAlive(const Entry& entry) {
    return isListening(entry.socket);
}

status_t Registry::publish(const std::string& name, const std::string& socketName) const {
    FolderLock lock(mFolder);
    Entry old;
    if (find(name, &old) && old.socket != mFolder + "/" + socketName) {
        if (isAlive(old)) {
            HIDL_LOGE("%s is registered by process %d already", name.c_str(), old.pid);
            return ALREADY_EXISTS;
        }
        HIDL_LOGI("%s was registered by process %d, which is gone: replaced", name.c_str(),
                  old.pid);
    }
    const std::string temporary = mFolder + "/.new." + socketName;
    unlink(temporary.c_str());
    if (symlink(socketName.c_str(), temporary.c_str()) != 0 ||
        rename(temporary.c_str(), (mFolder + "/" + encode(name)).c_str()) != 0) {
        HIDL_LOGE("%s cannot be registered: %s", name.c_str(), strerror(errno));
        unlink(temporary.c_str());
        return NAME_NOT_FOUND;
    }
    return OK;
}

int Registry::listen(uint64_t process, std::string* socketName) const {
    FolderLock lock(mFolder);
    for (const std::string& file : filesOf(mFolder)) {
        int pid;
        uint64_t other;
        const std::string path = mFolder + "/" + file;
        if (parseSocketName(file, &pid, &other) && !isListening(path)) unlink(path.c_str());
    }
    char name[64];
    snprintf(name, sizeof(name), "%d.%016" PRIx64 "%s", getpid(), process, kSocketSuffix);
    *socketName = name;
    return listenAt(mFolder + "/" + name);
}

void Registry::withdraw(const std::string& socketName) const {
    FolderLock lock(mFolder);
    const std::string socket = mFolder + "/" + socketName;
    for (const std::string& file : filesOf(mFolder)) {
        Entry entry;
        if (readEntry(mFolder, file, &entry) && entry.socket == socket) {
            unlink((mFolder + "/" + file).c_str());
        }
    }
    unlink(socket.c_str());
}

RegistryWatch::RegistryWatch(const std::string& folder)
    : mFd(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (mFd >= 0 && inotify_add_watch(mFd, folder.c_str(), IN_CREATE | IN_MOVED_TO) < 0) {
        close(mFd);
        mFd = -1;
    }
}

RegistryWatch::~RegistryWatch() {
    if (mFd >= 0) close(mFd);
}

bool RegistryWatch::wait(int timeoutMilliseconds) {
    if (mFd < 0) {
        poll(nullptr, 0, kPollMilliseconds);
        return true;
    }
    pollfd state{mFd, POLLIN, 0};
    const bool changed = poll(&state, 1, timeoutMilliseconds) > 0;
    if (changed) clear();
    return changed;
}

void RegistryWatch::clear() {
    char events[4096];
    while (mFd >= 0 && read(mFd, events, sizeof(events)) > 0) {
    }
}

}  // namespace android::hardware::transport
