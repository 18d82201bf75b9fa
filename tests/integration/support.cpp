#include "support.h"

#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

extern char** environ;

namespace integration {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/** Between two questions whether something came true. */
constexpr milliseconds kPause{5};

bool eventually(const std::function<bool()>& condition, milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (!condition()) {
        if (steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

bool eventuallyWhileMoving(const std::function<bool()>& condition,
                           const std::function<size_t()>& progress, milliseconds patience) {
    size_t seen = progress();
    auto moved = steady_clock::now();
    while (!condition()) {
        if (const size_t now = progress(); now != seen) {
            seen = now;
            moved = steady_clock::now();
        }
        if (steady_clock::now() - moved > patience) return false;
        std::this_thread::sleep_for(kPause);
    }
    return true;
}

size_t countOf(const std::string& text, const std::string& where) {
    size_t count = 0;
    for (size_t at = where.find(text); at != std::string::npos; at = where.find(text, at + 1)) {
        ++count;
    }
    return count;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream content;
    content << file.rdbuf();
    return content.str();
}

void writeFile(const std::string& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

TemporaryFolder::TemporaryFolder() : mPath("/tmp/qortv-test-XXXXXX") {
    if (mkdtemp(mPath.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), "mkdtemp");
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

Process::Process(const std::vector<std::string>& arguments, const Environment& environment,
                 std::optional<uid_t> uid) {
    Environment all;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const size_t equals = text.find('=');
        all[text.substr(0, equals)] = text.substr(equals + 1);
    }
    for (const auto& [name, value] : environment) all[name] = value;
    std::vector<std::string> texts;
    for (const auto& [name, value] : all) texts.push_back(name + "=" + value);
    std::vector<char*> envp;
    for (auto& text : texts) envp.push_back(text.data());
    envp.push_back(nullptr);
    std::vector<std::string> copies = arguments;
    std::vector<char*> argv;
    for (auto& text : copies) argv.push_back(text.data());
    argv.push_back(nullptr);

    constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
    const int in = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const int out = open((mFolder / "out").c_str(), kFlags, 0600);
    const int err = open((mFolder / "err").c_str(), kFlags, 0600);
    const pid_t parent = getpid();
    mPid = fork();
    if (mPid == 0) {
        // A test that dies takes its processes along.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(126);
        setpgid(0, 0);
        dup2(in, STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        if (uid && (setgid(*uid) != 0 || setuid(*uid) != 0)) _exit(126);
        execve(argv[0], argv.data(), envp.data());
        _exit(127);
    }
    const int reason = errno;
    for (const int fd : {in, out, err}) close(fd);
    if (mPid < 0) throw std::system_error(reason, std::generic_category(), "fork");
    setpgid(mPid, mPid);  // here too: whoever comes first
}

Process::~Process() {
    if (!running()) return;
    kill(-mPid, SIGKILL);
    waitpid(mPid, nullptr, 0);
}

bool Process::running() {
    if (mStatus) return false;
    int status = 0;
    if (waitpid(mPid, &status, WNOHANG) != mPid) return true;
    mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return false;
}

void Process::signal(int number) {
    if (running()) kill(mPid, number);
}

size_t Process::written() const {
    size_t bytes = 0;
    for (const char* name : {"out", "err"}) bytes += std::filesystem::file_size(mFolder / name);
    return bytes;
}

int Process::wait() {
    if (!eventuallyWhileMoving([&] { return !running(); }, [&] { return written(); })) {
        ADD_FAILURE() << "process " << mPid << " does not end; it wrote:\n" << err() << out();
        signal(SIGKILL);
        eventually([&] { return !running(); });
    }
    return mStatus.value_or(-1);
}

Outcome run(const std::vector<std::string>& arguments, const Environment& environment) {
    Process process(arguments, environment);
    const int status = process.wait();
    return {status, process.out(), process.err()};
}

Station::Station() {
    for (const auto& folder : {streams(), runtimeFolder(), vendorFolder()}) {
        mkdir(folder.c_str(), 0700);
    }
    environment = {{"QORTV_RUNTIME_DIR", runtimeFolder()},
                   {"QORTV_VENDOR_TMP", vendorFolder()},
                   {"QORTV_STREAMS", streams()},
                   {"QORTV_STATE", ":memory:"},
                   {"QORTV_LOG", "debug"},
                   {"QORTV_DEBUG", "0"}};
}

Station::~Station() {
    if (mService == nullptr) return;
    const std::string written = log();
    for (const char* report : {"Sanitizer", ": runtime error: "}) {
        EXPECT_EQ(countOf(report, written), 0U) << "the service has a fault";
    }
    if (!testing::Test::HasFailure()) return;
    constexpr size_t kMost = 10000;
    fprintf(stderr, "--- end of the service's log ---\n%s\n",
            written.substr(written.size() > kMost ? written.size() - kMost : 0).c_str());
}

void Station::keepNoFreedMemory() {
    const char* options = std::getenv("ASAN_OPTIONS");
    environment["ASAN_OPTIONS"] = std::string(options == nullptr ? "" : options) +
                                  ":quarantine_size_mb=0:thread_local_quarantine_size_kb=0";
}

void Station::makeStreams() {
    const auto made = run({QORTV_MKSTREAMS, streams()}, {});
    if (made.status != 0) throw std::runtime_error("qortv-mkstreams: " + made.err);
}

void Station::start() {
    mService.reset();
    mService = std::make_unique<Process>(std::vector<std::string>{QORTVAPI_SERVICE}, environment);
}

void Station::startAndWait() {
    start();
    if (!eventually([&] { return registered() || !service().running(); }) || !registered()) {
        throw std::runtime_error("the service does not come up");
    }
}

void Station::startBareAndWait() {
    environment["QORTV_TELEVISION"] = "off";
    for (const char* file : {"/dtv_svc_is_ready", "/tv_api_is_init"}) {
        writeFile(vendorFolder() + file, "");
    }
    startAndWait();
}

bool Station::registered() {
    return countOf("register IQorTvApiCI as service", log()) > 0;
}

bool Station::waitForLog(const std::string& text, size_t times) {
    return eventually([&] { return countOf(text, log()) >= times; });
}

size_t Station::descriptors() {
    const std::string folder = "/proc/" + std::to_string(service().pid()) + "/fd";
    std::filesystem::directory_iterator open(folder);
    return static_cast<size_t>(std::distance(begin(open), end(open)));
}

bool Station::idle() {
    const std::string folder = "/proc/" + std::to_string(service().pid()) + "/task";
    for (const auto& thread : std::filesystem::directory_iterator(folder)) {
        const std::string stat = readFile(thread.path() / "stat");
        const size_t nameEnd = stat.rfind(") ");
        if (nameEnd != std::string::npos && stat[nameEnd + 2] != 'S') return false;
    }
    return true;
}

size_t Station::idleDescriptors() {
    size_t count = descriptors();
    auto since = steady_clock::now();
    const bool quiet = eventually([&] {
        const size_t now = descriptors();
        if (now != count || !idle()) since = steady_clock::now();
        count = now;
        return steady_clock::now() - since > milliseconds(500);
    });
    if (!quiet) throw std::runtime_error("the service's descriptors come and go");
    return count;
}

size_t Station::residentKib() {
    std::istringstream status(readFile("/proc/" + std::to_string(service().pid()) + "/status"));
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0) return std::stoul(line.substr(6));
    }
    throw std::runtime_error("no VmRSS of the service");
}

void Station::enter() const {
    setenv("QORTV_RUNTIME_DIR", runtimeFolder().c_str(), 1);
}

Outcome Station::ctl(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), QORTVCTL);
    return run(arguments, environment);
}

std::unique_ptr<Process> Station::startCtl(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), QORTVCTL);
    return std::make_unique<Process>(arguments, environment);
}

std::unique_ptr<Process> Station::startClient(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), INTEGRATION_CLIENT);
    return std::make_unique<Process>(arguments, environment);
}

std::unique_ptr<Process> Station::startViewer(const std::string& role) {
    return std::make_unique<Process>(std::vector<std::string>{INTEGRATION_VIEWER, role},
                                     environment);
}

}  // namespace integration
