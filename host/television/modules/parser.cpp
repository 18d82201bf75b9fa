// Values of configuration files.
#include "middleware/parser.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/settings/config_file.h"

namespace television {
namespace {

constexpr size_t kLongestParserKey = 256;

/** Reads the value of a key from a file. */
int32_t lookUp(const std::string& path, const char* key, std::string& value) {
    const auto name = readText(key, kLongestParserKey);
    if (!name || name->empty()) return TV_INVALID_ARGUMENT;
    if (path.empty()) return TV_NOT_FOUND;
    std::string text;
    const int32_t result = readConfigFile(path, text);
    if (result != TV_OK) return result;
    const auto values = parseConfig(text);
    const auto found = values.find(*name);
    if (found == values.end()) return TV_NOT_FOUND;
    value = found->second;
    return TV_OK;
}

int32_t numberOf(const std::string& path, const char* key, int32_t* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    std::string value;
    const int32_t result = lookUp(path, key, value);
    if (result != TV_OK) return result;
    const std::optional<int32_t> number = parseNumber(value);
    if (!number) return TV_INVALID_ARGUMENT;
    *to = *number;
    return TV_OK;
}

/** `size`: of the buffer, with the NUL. A text that does not fit is not written. */
int32_t textOf(const std::string& path, const char* key, char* to, int64_t size, uint32_t* length) {
    if (!writable(to) || size <= 0) return TV_INVALID_ARGUMENT;
    std::string value;
    const int32_t result = lookUp(path, key, value);
    if (result != TV_OK) return result;
    if (value.size() >= static_cast<size_t>(size)) return TV_INVALID_ARGUMENT;
    put(length, value.size());
    return putText(to, static_cast<uint32_t>(size), value);
}

}  // namespace

void plugParser(switchboard::Switchboard& board, const std::string& baseFile) {
    board.on<&a_qortvapi_get_base_config_file_path>([=](char* to, int16_t length) -> int32_t {
        if (baseFile.empty()) return TV_NOT_FOUND;
        if (length <= 0 || baseFile.size() >= static_cast<size_t>(length)) {
            return TV_INVALID_ARGUMENT;
        }
        return putText(to, static_cast<uint32_t>(length), baseFile);
    });
    board.on<&a_qortvapi_parser_get_value>(
            [=](const char* key, int32_t* to) { return numberOf(baseFile, key, to); });
    board.on<&a_qortvapi_parser_get_string>([=](const char* key, char* to, uint32_t* length) {
        return textOf(baseFile, key, to, PARSER_STRING_MAX, length);
    });
    board.on<&a_qortvapi_parser_get_signed_config_data>([](const char* file, const char* key,
                                                           int32_t* to) {
        const auto path = readText(file, kLongestPath);
        return path && !path->empty() ? numberOf(*path, key, to) : int32_t{TV_INVALID_ARGUMENT};
    });
    board.on<&a_qortvapi_parser_get_string_config_data>(
            [](const char* file, const char* key, char* to, int16_t length) {
                const auto path = readText(file, kLongestPath);
                return path && !path->empty() ? textOf(*path, key, to, length, nullptr)
                                              : int32_t{TV_INVALID_ARGUMENT};
            });
}

}  // namespace television
