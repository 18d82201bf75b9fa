/** The log of the process for as long as the object lives: a test reads back what was written. */
#pragma once

#include <android/log.h>

#include <mutex>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/** A message, with the "<function:line> " at its front taken apart. */
struct LogLine {
    int priority;
    std::string tag;
    std::string function;  // empty where the message has no such front
    std::string text;

    bool operator==(const LogLine& other) const {
        return priority == other.priority && tag == other.tag && function == other.function &&
               text == other.text;
    }
};

inline std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << "{priority " << line.priority << ", " << line.tag << ", " << line.function
               << ", \"" << line.text << "\"}";
}

/** A line of the service's own kind, which all have debug priority. */
inline LogLine debugLine(std::string tag, std::string function, std::string text) {
    return {ANDROID_LOG_DEBUG, std::move(tag), std::move(function), std::move(text)};
}

/** Captures every priority. One object at a time; messages may come from any thread. */
class LogCapture {
  public:
    LogCapture() {
        take();
        __android_log_set_minimum_priority(ANDROID_LOG_VERBOSE);
        __android_log_set_logger(capture);
    }
    ~LogCapture() { __android_log_set_logger(__android_log_stderr_logger); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /** The messages since the last call, in order. */
    std::vector<LogLine> take() {
        std::lock_guard<std::mutex> lock(sMutex);
        return std::exchange(sLines, {});
    }

  private:
    static void capture(const __android_logger_data* data, const char* message) {
        LogLine line{data->priority, data->tag == nullptr ? "" : data->tag, "", message};
        const size_t colon = line.text.find(':');
        const size_t end = line.text.find("> ");
        if (line.text.rfind('<', 0) == 0 && colon < end && end != std::string::npos &&
            std::stoi(line.text.substr(colon + 1)) > 0) {
            line.function = line.text.substr(1, colon - 1);
            line.text.erase(0, end + 2);
        }
        std::lock_guard<std::mutex> lock(sMutex);
        sLines.push_back(std::move(line));
    }

    static inline std::mutex sMutex;
    static inline std::vector<LogLine> sLines;  // guarded by sMutex
};
