/** What is known of one recording, and the file beside it that keeps this. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "middleware/record.h"

namespace television {

/** One recording. Texts are UTF-8. */
struct RecordingInfo {
    std::string path;   ///< of the `.ts` file; not kept in the file beside it
    uint64_t size = 0;  ///< bytes; not kept either
    uint32_t channelId = 0;
    int32_t channelNumber = 0;
    std::string channelName;
    std::string programName;
    int64_t startTime = 0;    ///< seconds since 1970-01-01 00:00 UTC
    int32_t localOffset = 0;  ///< local time less UTC at the start, seconds
    uint32_t duration = 0;    ///< seconds; 0 when nobody knows
    int32_t stopReason = RECORD_STOP_UNKNOWN;
    int32_t rating = 0;      ///< minimum age
    int32_t retention = 0;   ///< days; 0 for ever
    bool recording = false;  ///< it is being made
};

/** Longest path that applications can be told, bytes. */
constexpr size_t kLongestRecordingPath = 256;
/** Longest folder of recordings, so that there is room for names in it, bytes. */
constexpr size_t kLongestRecordingFolder = 160;

/** Longest name of a file without folder and ending, bytes: with a number and the ending behind it,
 * and the longest folder in front, it is within kLongestRecordingPath. */
constexpr size_t kLongestFileName = 84;

/** A text of at most `most` bytes, cut at a character's edge. */
std::string cutText(const std::string& text, size_t most);

/**
 * A name for a file, without folder and ending, from a text that comes from anywhere: what could
 * leave the folder, hide the file or trouble other systems is replaced, and it is cut at a
 * character's edge so that an ending and a number still fit. Never empty.
 */
std::string safeFileName(const std::string& text);

/** Local date and time: "2026-11-21", "20:15:00", "Sat". */
struct LocalTexts {
    std::string date;
    std::string time;
    std::string weekDay;
};
LocalTexts localTexts(int64_t utc, int32_t offset);

/** The path of the file beside a recording `x.ts`: `x.json`. */
std::string notePath(const std::string& recordingPath);

/** Writes the file beside a recording, whole or not at all. 0, or an errno. */
int writeNote(const RecordingInfo& info);

/** Reads the file beside the recording at `path`; empty when there is none that makes sense. Size
 * and path are left open. */
std::optional<RecordingInfo> readNote(const std::string& path);

}  // namespace television
