/** The sidecar file of a recording: `x.json` beside `x.ts` holds what is known of the recording. */
#pragma once

#include <optional>
#include <string>

#include "television/recording/recording_info.h"

namespace television {

/** The path of the sidecar file of the recording at `recordingPath`. */
std::string sidecarPath(const std::string& recordingPath);

/** Writes the sidecar file of the recording at `info.path`, completely or not at all. Returns 0 or
 * an errno. */
int writeSidecar(const RecordingInfo& info);

/** Reads the sidecar file of the recording at `recordingPath`; empty when there is none that can be
 * read. Leaves `path` and `size` as they are in a new RecordingInfo. */
std::optional<RecordingInfo> readSidecar(const std::string& recordingPath);

}  // namespace television
