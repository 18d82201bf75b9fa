/** Brings the lists into line with what a scan of the streams found. */
#pragma once

#include "identities.h"
#include "lists.h"
#include "stream_folder.h"

namespace television {

/**
 * The lists after a scan. Services that the streams no longer carry are left out; those that remain
 * keep ids, numbers, favourites and everything that the application changed. Of files that could
 * not be read this time, and of a folder that could not be read, everything stays as it was.
 */
ChannelLists mergeScan(const ChannelLists& before, const ScanResult& scan, Identities& identities);

}  // namespace television
