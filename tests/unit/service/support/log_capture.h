/** Captures the log of the process, for tests of log lines. */
#pragma once

#include <android/log.h>

#include <ostream>
#include <string>
#include <vector>

/** A message, with the "<function:line> " at its front taken apart. */
struct LogLine {
    int priority;
    std::string tag;
    std::string function;  // empty where the message has no such front
    std::string text;

    bool operator==(const LogLine& other) const;
};

std::ostream& operator<<(std::ostream& out, const LogLine& line);

/** A line of the service's own kind, which all have debug priority. */
LogLine debugLine(std::string tag, std::string function, std::string text);

/** Captures the messages of every priority for as long as the object lives. One object at a time;
 * messages may come from any thread. */
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /** The messages since the last call, in order. */
    std::vector<LogLine> take();
};
