/** Updates the lists with what a scan of the streams found. */
#pragma once

#include "television/lists/identities.h"
#include "television/lists/lists.h"
#include "television/stream/stream_folder.h"

namespace television {

/** What a merge may change. */
struct MergeScope {
    uint8_t medium = BRDCST_MEDIUM_UNKNOWN;  ///< only the list of that medium; unknown: all lists
    bool keepGone = false;     ///< keep services that no stream carries, without their PIDs
    bool forgetEdits = false;  ///< forget what the application changed, deleted and chose as
                               ///< favourites

    bool covers(uint16_t listId) const {
        return medium == BRDCST_MEDIUM_UNKNOWN || listIdOf(medium) == listId;
    }
};

/**
 * Returns the lists after a scan. Services that the streams no longer carry are left out; those
 * that remain keep their ids, numbers, favourites and everything that the application changed. What
 * was found in files that could not be read this time stays as it was, and so does everything when
 * the folder could not be read. `identities` gets the ids of what is new.
 */
ChannelLists mergeScan(const ChannelLists& before, const ScanResult& scan, Identities& identities,
                       const MergeScope& scope = {});

}  // namespace television
