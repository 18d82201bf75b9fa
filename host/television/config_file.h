/** INI files: sections of `key = value` lines. */
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace television {

/** The values of a text by "section:key", or "key" before the first section. Lines that are neither
 * a section, a value, a comment nor empty are left out. */
std::map<std::string, std::string> parseConfig(const std::string& text);

/** A whole number, decimal or 0x…, and nothing else; empty when it is none or has no 32 bits. */
std::optional<int32_t> parseNumber(const std::string& text);

/**
 * Reads a file of at most PARSER_FILE_MAX bytes. TV_OK; TV_NOT_FOUND when there is none; TV_FAILED
 * when it is no plain file, too large or cannot be read, which the log says.
 */
int32_t readConfigFile(const std::string& path, std::string& text);

}  // namespace television
