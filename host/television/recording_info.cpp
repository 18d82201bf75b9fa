#include "recording_info.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>

#include "calendar.h"

namespace television {
namespace {

using Json = nlohmann::json;

constexpr size_t kLongestNote = 64 * 1024;
constexpr char kEnding[] = ".ts";
constexpr char kNoteEnding[] = ".json";
constexpr char kDraftEnding[] = ".part";

/** Whether other systems, or a shell, read something else than a character in it. */
bool isTroublesome(char c) {
    const auto byte = static_cast<uint8_t>(c);
    return byte < 0x20 || byte == 0x7F || std::string("/\\:*?\"<>|").find(c) != std::string::npos;
}

/** A number of the file, if it is there and fits. */
template <typename Number>
void take(const Json& json, const char* name, Number& number) {
    const auto found = json.find(name);
    if (found == json.end() || !found->is_number_integer()) return;
    if (found->is_number_unsigned()) {
        const auto value = found->get<uint64_t>();
        if (value <= static_cast<uint64_t>(std::numeric_limits<Number>::max())) {
            number = static_cast<Number>(value);
        }
    } else {
        const auto value = found->get<int64_t>();
        if (std::is_signed_v<Number> && value >= std::numeric_limits<Number>::min()) {
            number = static_cast<Number>(value);
        }
    }
}

void take(const Json& json, const char* name, std::string& text) {
    const auto found = json.find(name);
    if (found != json.end() && found->is_string()) text = found->get<std::string>();
}

bool writeAll(int file, const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        const ssize_t put = write(file, text.data() + at, text.size() - at);
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) return false;
        at += static_cast<size_t>(put);
    }
    return true;
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

LocalTexts localTexts(int64_t utc, int32_t offset) {
    constexpr const char* kWeekDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    // Times that no calendar has (of files made up by somebody) are those of the year's ends.
    constexpr int64_t kFirst = -62135596800;  // 0001-01-01
    constexpr int64_t kLast = 253402300799;   // 9999-12-31
    const int64_t local = std::clamp(utc, kFirst - INT32_MIN, kLast - INT32_MAX) + offset;
    const int64_t day = floorDivide(local, kSecondsOfDay);
    const int64_t second = local - day * kSecondsOfDay;
    const Date date = dateFromDays(day);
    return {fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day),
            fmt::format("{:02}:{:02}:{:02}", second / 3600, second / 60 % 60, second % 60),
            kWeekDays[dayOfWeek(day)]};
}

std::string notePath(const std::string& recordingPath) {
    return recordingPath.substr(0, recordingPath.size() - (sizeof(kEnding) - 1)) + kNoteEnding;
}

int writeNote(const RecordingInfo& info) {
    const Json json = {{"channel_id", info.channelId},
                       {"channel_number", info.channelNumber},
                       {"channel_name", info.channelName},
                       {"program_name", info.programName},
                       {"start_time", info.startTime},
                       {"local_offset", info.localOffset},
                       {"duration", info.duration},
                       {"stop_reason", info.stopReason},
                       {"rating", info.rating},
                       {"retention", info.retention}};
    // Names come from streams: bytes that are no UTF-8 are replaced.
    const std::string text = json.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
    const std::string path = notePath(info.path);
    const std::string draft = path + kDraftEnding;
    unlink(draft.c_str());  // of a television that was killed, or a link that somebody put there
    const int file = open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0) return errno;
    bool good = writeAll(file, text);
    int error = errno;
    if (close(file) != 0 && good) {
        good = false;
        error = errno;
    }
    if (good && std::rename(draft.c_str(), path.c_str()) == 0) return 0;
    if (good) error = errno;
    unlink(draft.c_str());
    return error;
}

std::optional<RecordingInfo> readNote(const std::string& path) {
    // Without waiting: a pipe with that name must not hold the television up.
    const int file = open(notePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return std::nullopt;
    struct stat status = {};
    std::string text(kLongestNote, '\0');
    ssize_t size = -1;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        size = read(file, text.data(), text.size());
    }
    close(file);
    if (size < 0) return std::nullopt;
    text.resize(static_cast<size_t>(size));
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) return std::nullopt;
    RecordingInfo info;
    take(json, "channel_id", info.channelId);
    take(json, "channel_number", info.channelNumber);
    take(json, "channel_name", info.channelName);
    take(json, "program_name", info.programName);
    take(json, "start_time", info.startTime);
    take(json, "local_offset", info.localOffset);
    take(json, "duration", info.duration);
    take(json, "stop_reason", info.stopReason);
    take(json, "rating", info.rating);
    take(json, "retention", info.retention);
    return info;
}

}  // namespace television
