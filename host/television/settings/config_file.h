/** Configuration files in INI format: sections of `key = value` lines. */
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace television {

/** Returns the values of an INI text by "section:key", or by "key" before the first section. Empty
 * lines, comments (# or ;) and lines that are neither section nor value are skipped. */
std::map<std::string, std::string> parseConfig(const std::string& text);

/** Returns the value of a text that is one whole number, decimal or 0x…; empty when it is not, or
 * when the number does not fit 32 bits. */
std::optional<int32_t> parseNumber(const std::string& text);

/**
 * Reads a file of at most PARSER_FILE_MAX bytes. Returns TV_OK; TV_NOT_FOUND when there is no file;
 * TV_FAILED, with a line on the log, when it is no regular file, too large or unreadable.
 */
int32_t readConfigFile(const std::string& path, std::string& text);

}  // namespace television
