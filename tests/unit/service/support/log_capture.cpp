#include "support/log_capture.h"

#include <mutex>
#include <utility>

namespace {

std::mutex gMutex;
std::vector<LogLine> gLines;  // guarded by gMutex

void capture(const __android_logger_data* data, const char* message) {
    LogLine line{data->priority, data->tag == nullptr ? "" : data->tag, "", message};
    const size_t colon = line.text.find(':');
    const size_t end = line.text.find("> ");
    if (line.text.rfind('<', 0) == 0 && colon < end && end != std::string::npos &&
        std::stoi(line.text.substr(colon + 1)) > 0) {
        line.function = line.text.substr(1, colon - 1);
        line.text.erase(0, end + 2);
    }
    std::lock_guard<std::mutex> lock(gMutex);
    gLines.push_back(std::move(line));
}

}  // namespace

bool LogLine::operator==(const LogLine& other) const {
    return priority == other.priority && tag == other.tag && function == other.function &&
           text == other.text;
}

std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << "{priority " << line.priority << ", " << line.tag << ", " << line.function
               << ", \"" << line.text << "\"}";
}

LogLine debugLine(std::string tag, std::string function, std::string text) {
    return {ANDROID_LOG_DEBUG, std::move(tag), std::move(function), std::move(text)};
}

LogCapture::LogCapture() {
    take();
    __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
    __android_log_set_logger(capture);
}

LogCapture::~LogCapture() {
    __android_log_set_logger(__android_log_stderr_logger);
}

std::vector<LogLine> LogCapture::take() {
    std::lock_guard<std::mutex> lock(gMutex);
    return std::exchange(gLines, {});
}
