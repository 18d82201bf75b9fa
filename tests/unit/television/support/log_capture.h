/** Collects the lines that are written on the platform log. */
#pragma once

#include <android/log.h>

#include <mutex>
#include <string>
#include <vector>

/** One at a time. Starts empty. */
class LogCapture {
  public:
    LogCapture() {
        {
            std::lock_guard<std::mutex> lock(mutex());
            lines().clear();
        }
        __android_log_set_minimum_priority(ANDROID_LOG_DEBUG);
        __android_log_set_logger([](const __android_logger_data*, const char* message) {
            std::lock_guard<std::mutex> inner(mutex());
            lines().push_back(message);
        });
    }
    ~LogCapture() { __android_log_set_logger(__android_log_stderr_logger); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /** Whether one line contains all of `parts`. */
    template <typename... T>
    bool has(const T&... parts) const {
        std::lock_guard<std::mutex> lock(mutex());
        for (const std::string& line : lines()) {
            if (((line.find(parts) != std::string::npos) && ...)) return true;
        }
        return false;
    }

    /** How many lines contain `part`. */
    size_t count(const std::string& part) const {
        std::lock_guard<std::mutex> lock(mutex());
        size_t found = 0;
        for (const std::string& line : lines()) {
            if (line.find(part) != std::string::npos) ++found;
        }
        return found;
    }

    /** How many lines there are. */
    size_t size() const {
        std::lock_guard<std::mutex> lock(mutex());
        return lines().size();
    }

  private:
    static std::mutex& mutex() {
        static std::mutex instance;
        return instance;
    }
    static std::vector<std::string>& lines() {
        static std::vector<std::string> instance;
        return instance;
    }
};
