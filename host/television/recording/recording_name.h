/** The names of the files of recordings. */
#pragma once

#include <cstddef>
#include <string>

#include "television/recording/recording_info.h"

namespace television {

/** Bytes of the longest path of a recording that clients can receive. */
constexpr size_t kLongestRecordingPath = 256;
/** Bytes of the longest path of a folder of recordings, which leaves room for their names. */
constexpr size_t kLongestRecordingFolder = 160;
/** Bytes of the longest name, without folder and ending: with a number and the ending behind it,
 * and the longest folder in front, it is within kLongestRecordingPath. */
constexpr size_t kLongestFileName = 84;

/** Returns the first `most` bytes of a UTF-8 text, or less so that no character is cut. */
std::string cutText(const std::string& text, size_t most);

/**
 * Returns a name for a file, without folder and ending, made of any text: characters that could
 * lead out of the folder, hide the file or trouble other systems are replaced, and it is at most
 * kLongestFileName bytes long. Never empty.
 */
std::string safeFileName(const std::string& text);

/** Returns the name of a recording for which none was set: its channel, local date and time. */
std::string defaultFileName(const RecordingInfo& info);

}  // namespace television
