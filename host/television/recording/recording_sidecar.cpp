#include "television/recording/recording_sidecar.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <limits>

#include <nlohmann/json.hpp>

#include "television/stream/stream_name.h"

namespace television {
namespace {

using Json = nlohmann::json;

constexpr size_t kLargestSidecar = 64 * 1024;  ///< bytes that are read
constexpr char kSidecarEnding[] = ".json";
constexpr char kDraftEnding[] = ".part";  ///< while it is written

/** Takes a field of the file, if it is there and of that type; a number has to fit. */
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

/** Writes a new file. Returns 0 or an errno; a file that could not be completed is left behind. */
int writeNewFile(const std::string& path, const std::string& text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0) return errno;
    const int error = writeAll(file, text) ? 0 : errno;
    return close(file) != 0 && error == 0 ? errno : error;
}

/** Reads a small regular file; empty when there is none. */
std::optional<std::string> readFile(const std::string& path) {
    // O_NONBLOCK: a pipe with that name must not be waited for.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return std::nullopt;
    struct stat status = {};
    std::string text(kLargestSidecar, '\0');
    ssize_t size = -1;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        size = read(file, text.data(), text.size());
    }
    close(file);
    if (size < 0) return std::nullopt;
    text.resize(static_cast<size_t>(size));
    return text;
}

}  // namespace

std::string sidecarPath(const std::string& recordingPath) {
    return withoutStreamEnding(recordingPath) + kSidecarEnding;
}

int writeSidecar(const RecordingInfo& info) {
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
    // Names come from streams: bytes that are not UTF-8 are replaced.
    const std::string text = json.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
    const std::string path = sidecarPath(info.path);
    const std::string draft = path + kDraftEnding;
    unlink(draft.c_str());  // left by a television that was killed, or a link put there
    int error = writeNewFile(draft, text);
    if (error == 0 && std::rename(draft.c_str(), path.c_str()) == 0) return 0;
    if (error == 0) error = errno;
    unlink(draft.c_str());
    return error;
}

std::optional<RecordingInfo> readSidecar(const std::string& recordingPath) {
    const auto text = readFile(sidecarPath(recordingPath));
    if (!text) return std::nullopt;
    const Json json = Json::parse(*text, nullptr, false);
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
