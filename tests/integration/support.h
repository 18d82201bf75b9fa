/**
 * Real processes for the tests: a television service with folders of its own, programs with their
 * output, and waiting for conditions instead of sleeping.
 */
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace integration {

/**
 * After this time without the expected event a test takes a process for hung. Far beyond what a
 * single step takes, also with sanitizers on a slow and busy machine: it finds hangs and measures
 * nothing.
 */
constexpr std::chrono::seconds kPatience{120};

/** Work of many steps is taken for hung when nothing at all has moved for so long. */
constexpr std::chrono::seconds kStandstill{30};

/** Whether `condition` came true within `patience`; asks every few milliseconds. For one step. */
bool eventually(const std::function<bool()>& condition,
                std::chrono::milliseconds patience = kPatience);

/**
 * Whether `condition` came true; asks every few milliseconds. For work of many steps: it may take
 * as long as it likes while it moves. `progress` returns a counter of what was done so far, such as
 * lines written or calls heard. Returns false once that number has stayed the same for `patience`.
 */
bool eventuallyWhileMoving(const std::function<bool()>& condition,
                           const std::function<size_t()>& progress,
                           std::chrono::milliseconds patience = kStandstill);

/** Times that `text` stands in `where`. */
size_t countOf(const std::string& text, const std::string& where);

/** The whole file; empty when there is none. */
std::string readFile(const std::string& path);

/** Creates the file, or replaces it. */
void writeFile(const std::string& path, const std::string& content);

/** A folder that is removed with everything in it. */
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return mPath; }
    /** A path inside. */
    std::string operator/(const std::string& name) const { return mPath + "/" + name; }

  private:
    std::string mPath;
};

using Environment = std::map<std::string, std::string>;

/** A child process whose output is kept in files. Killed, if it still runs, by the destructor. */
class Process {
  public:
    /**
     * Starts `arguments[0]`, a path, in this process's environment changed by `environment`. With
     * `uid` the program runs as that user (needs root).
     */
    Process(const std::vector<std::string>& arguments, const Environment& environment,
            std::optional<uid_t> uid = std::nullopt);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid() const { return mPid; }
    bool running();
    void signal(int number);
    /** Waits for the end; the exit status, or 128 + the signal. Fails the test, then kills, if the
     * process neither ends nor writes anything for kPatience. */
    int wait();
    std::string out() const { return readFile(mFolder / "out"); }
    std::string err() const { return readFile(mFolder / "err"); }
    /** Bytes of out() and err() so far: the progress of a process that writes as it goes. */
    size_t written() const;

  private:
    TemporaryFolder mFolder;
    pid_t mPid = -1;
    std::optional<int> mStatus;
};

/** Runs a program to its end. */
struct Outcome {
    int status;
    std::string out;
    std::string err;
};
Outcome run(const std::vector<std::string>& arguments, const Environment& environment);

/** A service process, its folders and its log. No folder is shared with any other test. */
class Station {
  public:
    /** Folders and nothing else: start() starts the service. */
    Station();
    ~Station();

    /** Environment of the service and of its clients; changed before start() to change the service.
     */
    Environment environment;
    /** Folder of transport streams; filled by makeStreams(). */
    std::string streams() const { return mFolder / "streams"; }
    std::string runtimeFolder() const { return mFolder / "runtime"; }
    std::string vendorFolder() const { return mFolder / "vendor"; }

    void makeStreams();
    /** Before start(): the address sanitizer keeps freed memory to find late uses, which would look
     * like a leak. */
    void keepNoFreedMemory();
    /** Starts the service, without waiting for it. */
    void start();
    /** start(), and waits until registered(). */
    void startAndWait();
    /** A service without a television, up at once: for what needs no channels. */
    void startBareAndWait();
    /** Whether the last of the interfaces is registered. */
    bool registered();
    Process& service() { return *mService; }

    /** What the service wrote since it started. */
    std::string log() { return mService->err() + mService->out(); }
    bool waitForLog(const std::string& text, size_t times = 1);
    /** Entries of /proc/PID/fd. */
    size_t descriptors();
    /** descriptors() of an idle service: once they stay the same for half a second in which none of
     * its threads has work, so that no connection of the start still comes or goes. */
    size_t idleDescriptors();
    /** VmRSS in KiB. */
    size_t residentKib();

    /** Makes this test process a client: connect() finds this station. */
    void enter() const;
    /** Runs qortvctl. */
    Outcome ctl(std::vector<std::string> arguments);
    /** Starts qortvctl. */
    std::unique_ptr<Process> startCtl(std::vector<std::string> arguments);
    /** Starts `integration_client`. */
    std::unique_ptr<Process> startClient(std::vector<std::string> arguments);
    /** Starts `integration_viewer`. */
    std::unique_ptr<Process> startViewer(const std::string& role);

  private:
    /** Whether every thread of the service waits for something. */
    bool idle();

    TemporaryFolder mFolder;
    std::unique_ptr<Process> mService;
};

}  // namespace integration
