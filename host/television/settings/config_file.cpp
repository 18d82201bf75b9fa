#include "television/settings/config_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <limits>

#include "middleware/parser.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"

namespace television {
namespace {

std::string trimmed(const std::string& text) {
    constexpr char kBlanks[] = " \t\r\v\f";
    const size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/** Reads a file to its end, but at most one byte more than is allowed. */
bool readAll(int file, std::string& text) {
    text.resize(PARSER_FILE_MAX + 1);
    size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t got = read(file, &text[filled], text.size() - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) break;
        filled += static_cast<size_t>(got);
    }
    text.resize(filled);
    return true;
}

}  // namespace

std::map<std::string, std::string> parseConfig(const std::string& text) {
    std::map<std::string, std::string> values;
    std::string section;
    size_t at = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    while (at < text.size()) {
        const size_t end = std::min(text.find('\n', at), text.size());
        const std::string line = trimmed(text.substr(at, end - at));
        at = end + 1;
        if (line.empty() || line[0] == '#' || line[0] == ';') continue;
        if (line.front() == '[') {
            if (line.back() == ']') section = trimmed(line.substr(1, line.size() - 2)) + ":";
            continue;
        }
        const size_t equals = line.find('=');
        if (equals == std::string::npos) continue;
        const std::string key = trimmed(line.substr(0, equals));
        if (key.empty()) continue;
        std::string value = trimmed(line.substr(equals + 1));
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
            value = value.substr(1, value.size() - 2);
        }
        values[(section == ":" ? "" : section) + key] = value;
    }
    return values;
}

std::optional<int32_t> parseNumber(const std::string& text) {
    const bool negative = !text.empty() && text[0] == '-';
    const size_t start = negative ? 1 : 0;
    const bool hexadecimal = text.compare(start, 2, "0x") == 0 || text.compare(start, 2, "0X") == 0;
    const std::string digits = text.substr(start + (hexadecimal ? 2 : 0));
    const char* allowed = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    // Fifteen digits are more than 32 bits need, leading zeros aside, and always fit 64 bits.
    constexpr size_t kMostDigits = 15;
    if (digits.empty() || digits.size() > kMostDigits ||
        digits.find_first_not_of(allowed) != std::string::npos) {
        return std::nullopt;
    }
    const auto magnitude =
            static_cast<int64_t>(std::stoull(digits, nullptr, hexadecimal ? 16 : 10));
    const int64_t number = negative ? -magnitude : magnitude;
    // Hexadecimal numbers may set the sign bit: 0xFFFFFFFF is -1.
    if (hexadecimal && !negative && number <= std::numeric_limits<uint32_t>::max()) {
        return static_cast<int32_t>(static_cast<uint32_t>(number));
    }
    if (number < std::numeric_limits<int32_t>::min() ||
        number > std::numeric_limits<int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<int32_t>(number);
}

int32_t readConfigFile(const std::string& path, std::string& text) {
    // O_NONBLOCK: the path may name a pipe, whose writer must not be waited for.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) {
        if (errno == ENOENT || errno == ENOTDIR) return TV_NOT_FOUND;
        LOG_TV_ERROR("cannot read the configuration file {}: {}", path, std::strerror(errno));
        return TV_FAILED;
    }
    struct stat status;
    const bool plain = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const bool read = plain && readAll(file, text);
    close(file);
    if (!read || text.size() > PARSER_FILE_MAX) {
        LOG_TV_ERROR("the configuration file {} is no readable file of at most {} bytes", path,
                     int{PARSER_FILE_MAX});
        return TV_FAILED;
    }
    return TV_OK;
}

}  // namespace television
