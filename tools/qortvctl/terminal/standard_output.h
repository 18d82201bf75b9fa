/** Standard output line by line, with write errors reported as exceptions. */
#pragma once

#include <string>

namespace qortvctl {

/** Thrown when the reader of our output is gone (`qortvctl … | head`): the program ends silently
 * and with success. */
struct OutputClosed {};

/** Prepares standard output: written line by line, and write errors reported to us instead of by a
 * signal. Call first in main(). */
void prepareOutput();

/**
 * Writes a line to standard output. Any thread.
 *
 * @throws OutputClosed when the reader is gone
 * @throws std::runtime_error for any other failure, such as a full disk
 */
void printLine(const std::string& line);

}  // namespace qortvctl
