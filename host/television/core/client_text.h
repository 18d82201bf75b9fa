/** Reads and writes the texts that clients pass to the middleware functions. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace television {

/** Bytes of the longest path that is read from a client, its NUL included. */
constexpr size_t kLongestPath = 4096;

/**
 * Writes a UTF-8 text and its NUL into a client's buffer of `size` bytes. A text that does not fit
 * is cut between two characters; nothing behind the NUL is written. Returns TV_OK, or
 * TV_INVALID_ARGUMENT, with nothing written, when there is no buffer.
 */
int32_t putText(char* to, uint32_t size, const std::string& text);

/** Reads a client's text; empty when the pointer is null or no NUL is among the first `most` bytes.
 */
std::optional<std::string> readText(const char* from, size_t most);

/** The window that a client names: 0 for "main" or "main_svctx", 1 for "sub" or "sub_svctx"; also
 * for the first five characters of these, to which a context name may be cut. Empty for others. */
std::optional<size_t> windowNamed(const char* name);

}  // namespace television
