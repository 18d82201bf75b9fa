#include "ServiceProcess.h"

#include <android/log.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace qortv::test {

Child::Child(const std::vector<std::string>& arguments) {
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) abort();
    std::vector<char*> argv{const_cast<char*>("hidl_runtime_test")};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const pid_t parent = getpid();
    mPid = fork();
    if (mPid == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(1);
        dup2(input[0], STDIN_FILENO);
        dup2(output[1], STDOUT_FILENO);
        execv("/proc/self/exe", argv.data());
        _exit(127);
    }
    close(input[0]);
    close(output[1]);
    mInput = input[1];
    mOutput = output[0];
}

Child::~Child() {
    if (mPid > 0) kill();
    if (mInput >= 0) close(mInput);
    if (mOutput >= 0) close(mOutput);
}

Child& Child::operator=(Child&& other) noexcept {
    std::swap(mPid, other.mPid);
    std::swap(mInput, other.mInput);
    std::swap(mOutput, other.mOutput);
    return *this;
}

std::string Child::readLine() {
    std::string line;
    char c;
    while (read(mOutput, &c, 1) == 1 && c != '\n') line += c;
    return line;
}

void Child::writeLine(const std::string& line) {
    const std::string text = line + "\n";
    if (write(mInput, text.data(), text.size()) != static_cast<ssize_t>(text.size())) abort();
}

void Child::stop() {
    int status = 0;
    ASSERT_EQ(::kill(mPid, SIGSTOP), 0);
    ASSERT_EQ(waitpid(mPid, &status, WUNTRACED), mPid);
    ASSERT_TRUE(WIFSTOPPED(status));
}

void Child::goOn() {
    ASSERT_EQ(::kill(mPid, SIGCONT), 0);
}

void Child::kill() {
    ::kill(mPid, SIGKILL);
    wait();
}

int Child::wait() {
    int status = 0;
    waitpid(mPid, &status, 0);
    mPid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

ServiceTest::ServiceTest() {
    char folder[] = "/tmp/hidl-test-XXXXXX";
    mFolder = mkdtemp(folder);
    mkdir((mFolder + "/run").c_str(), 0700);
    setenv("QORTV_RUNTIME_DIR", (mFolder + "/run").c_str(), 1);
    unsetenv("QORTV_ALLOW_UIDS");
}

ServiceTest::~ServiceTest() {
    if (mService.pid() > 0) mService.kill();
    std::filesystem::remove_all(mFolder);
}

void ServiceTest::startService(int threads, const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"--service", std::to_string(threads), mFolder + "/log"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    mService = Child(arguments);
    ASSERT_EQ(mService.readLine(), "ready");
}

sp<IEcho> ServiceTest::echo() {
    return IEcho::tryGetService();
}

std::vector<std::string> ServiceTest::serviceLog() const {
    std::vector<std::string> lines;
    std::ifstream file(mFolder + "/log");
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

static std::mutex sLogMutex;
static std::vector<std::string> sLogLines;

LogCapture::LogCapture() {
    sLogLines.clear();
    __android_log_set_logger([](const __android_logger_data* data, const char* message) {
        if (data->tag == nullptr || strcmp(data->tag, "hidl") != 0) return;
        std::lock_guard<std::mutex> lock(sLogMutex);
        sLogLines.emplace_back(message);
    });
}

LogCapture::~LogCapture() {
    __android_log_set_logger(__android_log_stderr_logger);
}

std::vector<std::string> LogCapture::lines() const {
    std::lock_guard<std::mutex> lock(sLogMutex);
    return sLogLines;
}

Return<int32_t> Listener::notify(int32_t event, uint64_t a, uint64_t b, uint64_t c, uint64_t d,
                                 uint64_t e, uint64_t f) {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mEvents.push_back(event);
    }
    if (a + b + c + d + e + f != 21) return -2;
    return onNotify ? onNotify(event) : event + 1;
}

Return<void> Listener::post(int32_t event) {
    std::lock_guard<std::mutex> lock(mMutex);
    mEvents.push_back(event);
    return Void();
}

Return<void> Listener::tell(const hidl_string& text, tell_cb _hidl_cb) {
    _hidl_cb(std::string(text) + "?");
    return Void();
}

std::vector<int32_t> Listener::events() {
    std::lock_guard<std::mutex> lock(mMutex);
    return mEvents;
}

}  // namespace qortv::test
