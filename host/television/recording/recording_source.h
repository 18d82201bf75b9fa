/** What a recording is made of: a service and the multiplex that carries it. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "television/core/core.h"
#include "television/recording/recording_info.h"
#include "television/recording/service_filter.h"

namespace television {

/** The records of the channel lists when the recording started. */
struct RecordingSource {
    SVL_REC_T service = {};
    TSL_REC_T multiplex = {};

    /** The name of the multiplex's file in the folder of streams. */
    std::string streamFile() const;
};

// Any thread; not within `Core::read` or `Core::change`.

/** Finds the channel, or with `channelId` 0 the one that a window plays. Returns RECORD_ERROR_…. */
int32_t findRecordingSource(const Core& core, uint32_t channelId, size_t window,
                            RecordingSource& source);

/** Returns what is known of a recording of the source that starts now. `title`: of the programme;
 * empty: that of the guide. */
RecordingInfo newRecordingInfo(const Core& core, const RecordingSource& source,
                               const std::string& title);

/** Returns the function that writes the tables about the source into its recording; the events in
 * them are those of the guide whenever it is called. `core` outlives the function. */
ServiceFilter::Describe describerOf(const Core& core, const RecordingSource& source);

}  // namespace television
