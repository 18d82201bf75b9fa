#include "television/recording/recording_name.h"

#include <algorithm>
#include <cstdint>

#include <fmt/format.h>

#include "television/recording/local_texts.h"

namespace television {
namespace {

/** Returns whether a character means something to file systems or shells, or cannot be printed. */
bool isTroublesome(char c) {
    const auto byte = static_cast<uint8_t>(c);
    return byte < 0x20 || byte == 0x7F || std::string("/\\:*?\"<>|").find(c) != std::string::npos;
}

}  // namespace

std::string cutText(const std::string& text, size_t most) {
    if (text.size() <= most) return text;
    size_t size = most;
    while (size > 0 && (static_cast<uint8_t>(text[size]) & 0xC0) == 0x80) --size;
    return text.substr(0, size);
}

std::string safeFileName(const std::string& text) {
    std::string name = text;
    std::replace_if(name.begin(), name.end(), isTroublesome, '_');
    name.erase(0, name.find_first_not_of(" ."));
    name = cutText(name, kLongestFileName);
    name.erase(name.find_last_not_of(" .") + 1);
    return name.empty() ? "recording" : name;
}

std::string defaultFileName(const RecordingInfo& info) {
    LocalTexts local = localTexts(info.startTime, info.localOffset);
    std::replace(local.time.begin(), local.time.end(), ':', '.');
    const std::string time = fmt::format(" {} {}", local.date, local.time);
    // A long channel name is cut, so that the time is always in the name.
    const std::string channel = safeFileName(info.channelName);
    return cutText(channel, kLongestFileName - time.size()) + time;
}

}  // namespace television
