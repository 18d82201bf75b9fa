/** Texts that cross the middleware client's functions. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace television {

/**
 * Writes a text and its NUL into a client's buffer of `size` bytes, cut at a character's edge where
 * it does not fit; nothing behind the NUL is written. TV_INVALID_ARGUMENT, with nothing written,
 * when there is no buffer.
 */
int32_t putText(char* to, uint32_t size, const std::string& text);

/** A client's text; empty when the pointer is null or no NUL is among the first `most` bytes. */
std::optional<std::string> readText(const char* from, size_t most);

/** The window that is named "main" or "main_svctx", "sub" or "sub_svctx", or by the five characters
 * of those that a context name is cut to; empty for others. */
std::optional<size_t> windowNamed(const char* name);

}  // namespace television
