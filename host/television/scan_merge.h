/** Brings the lists into line with what a scan of the streams found. */
#pragma once

#include "identities.h"
#include "lists.h"
#include "stream_folder.h"

namespace television {

/** How far a merge goes. */
struct MergeScope {
    uint8_t medium = BRDCST_MEDIUM_UNKNOWN;  ///< only the list of that medium; unknown: all
    bool keepGone = false;     ///< services that the streams no longer carry stay, without streams
    bool forgetEdits = false;  ///< what the application changed, deleted and chose as favourites is
                               ///< forgotten

    bool covers(uint16_t listId) const {
        return medium == BRDCST_MEDIUM_UNKNOWN || listIdOf(medium) == listId;
    }
};

/** What the network mask says of a service before an application changes it. */
uint32_t networkMask(const ParsedService& service);

/**
 * The lists after a scan. Services that the streams no longer carry are left out; those that remain
 * keep ids, numbers, favourites and everything that the application changed. Of files that could
 * not be read this time, and of a folder that could not be read, everything stays as it was.
 */
ChannelLists mergeScan(const ChannelLists& before, const ScanResult& scan, Identities& identities,
                       const MergeScope& scope = {});

}  // namespace television
