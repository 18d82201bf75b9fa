/** Configuration files. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The files are INI files: `key = value` lines under `[section]` lines; lines that start with # or
 * ; are comments. A key is "section:key", or "key" for a line before the first section. Of several
 * lines with the same key the last one counts. Numbers are decimal or 0x….
 *
 * The base file is $QORTV_CONFIG, otherwise config.ini in the state folder ($QORTV_STATE). Every
 * call reads the file again.
 *
 * TV_NOT_FOUND: no such file or key. TV_FAILED: the file cannot be read or has more than
 * PARSER_FILE_MAX bytes. TV_INVALID_ARGUMENT: the value is not a number, or a text that does not
 * fit with its NUL; texts are never cut. The buffer of get_string has room for PARSER_STRING_MAX
 * bytes; the length that it writes is without the NUL.
 */
enum { PARSER_FILE_MAX = 1 << 20, PARSER_STRING_MAX = 256 };
int32_t a_qortvapi_get_base_config_file_path(char* ps_path, int16_t i2_length);
int32_t a_qortvapi_parser_get_signed_config_data(const char* ps_file, const char* ps_key, int32_t* pi4_value);
int32_t a_qortvapi_parser_get_string_config_data(const char* ps_file, const char* ps_key, char* ps_value, int16_t i2_length);
int32_t a_qortvapi_parser_get_value(const char* ps_key, int32_t* pi4_value);
int32_t a_qortvapi_parser_get_string(const char* ps_key, char* ps_value, uint32_t* pui4_length);

#ifdef __cplusplus
}
#endif
