/**
 * Writes the log to standard error, one line for each message, from before main on. A program that
 * does not link this object logs as the log library does by default.
 *
 * $QORTV_LOG is the lowest priority that is written: verbose, debug, info (the default), warn,
 * error.
 */
#include <android/log.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace {

struct Priority {
    const char* name;
    android_LogPriority value;
};
constexpr Priority kPriorities[] = {{"verbose", ANDROID_LOG_VERBOSE},
                                    {"debug", ANDROID_LOG_DEBUG},
                                    {"info", ANDROID_LOG_INFO},
                                    {"warn", ANDROID_LOG_WARN},
                                    {"error", ANDROID_LOG_ERROR}};

char letterOf(int priority) {
    constexpr std::string_view kLetters = "??VDIWEF";
    const bool known = priority >= 0 && static_cast<size_t>(priority) < kLetters.size();
    return known ? kLetters[priority] : '?';
}

iovec part(std::string_view text) {
    return {const_cast<char*>(text.data()), text.size()};
}

// Writes one line by one system call, so that lines of several threads do not mix. Line feeds
// inside the message are written as "\n". Allocates nothing and takes no lock, because it also runs
// while the process is being aborted.
void writeLine(const __android_logger_data* data, const char* message) {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local = {};
    localtime_r(&now.tv_sec, &local);

    char prefix[256];
    snprintf(prefix, sizeof(prefix),
             "%02d-%02d %02d:%02d:%02d.%03ld %5d %5ld %c %s: ", local.tm_mon + 1, local.tm_mday,
             local.tm_hour, local.tm_min, local.tm_sec, now.tv_nsec / 1000000, getpid(),
             syscall(SYS_gettid), letterOf(data->priority), data->tag == nullptr ? "" : data->tag);

    std::string_view text = message == nullptr ? "" : message;
    while (!text.empty() && text.back() == '\n') text.remove_suffix(1);

    iovec parts[64];
    int count = 0;
    parts[count++] = part(prefix);
    size_t feed = text.find('\n');
    while (feed != std::string_view::npos && count + 4 < static_cast<int>(std::size(parts))) {
        parts[count++] = part(text.substr(0, feed));
        parts[count++] = part("\\n");
        text.remove_prefix(feed + 1);
        feed = text.find('\n');
    }
    parts[count++] = part(text);
    parts[count++] = part("\n");
    // There is no other place to report that standard error cannot be written.
    [[maybe_unused]] const ssize_t written = writev(STDERR_FILENO, parts, count);
}

const bool sIsSetUp = [] {
    int minimum = ANDROID_LOG_INFO;
    const char* wanted = std::getenv("QORTV_LOG");
    const auto* found =
            std::find_if(std::begin(kPriorities), std::end(kPriorities), [&](const Priority& p) {
                return wanted != nullptr && std::string_view(wanted) == p.name;
            });
    if (found != std::end(kPriorities)) minimum = found->value;
    __android_log_set_minimum_priority(minimum);
    __android_log_set_logger(writeLine);
    if (wanted != nullptr && *wanted != '\0' && found == std::end(kPriorities)) {
        __android_log_print(ANDROID_LOG_WARN, "log",
                            "QORTV_LOG=%s is none of verbose, debug, info, warn, error", wanted);
    }
    return true;
}();

}  // namespace
