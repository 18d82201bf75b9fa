/** The groups of middleware functions that the television answers: each plugs its functions into a
 * switchboard. */
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "core.h"
#include "middleware/records.h"
#include "middleware/result_codes.h"
#include "switchboard.h"

namespace television {

class CamSlot;
class Recording;
class ChannelScan;
class InputSources;
class VideoPaths;

/** All take a core that outlives the switchboard. */
void plugBringUp(switchboard::Switchboard& board);
void plugChannelIds(switchboard::Switchboard& board);
void plugChannels(switchboard::Switchboard& board, Core& core);
void plugBulkReads(switchboard::Switchboard& board, Core& core);
void plugQueries(switchboard::Switchboard& board, Core& core);
void plugChannelWrites(switchboard::Switchboard& board, Core& core);
void plugSnapshots(switchboard::Switchboard& board, Core& core);
void plugFavourites(switchboard::Switchboard& board, Core& core);
void plugInstallation(switchboard::Switchboard& board, Core& core);
void plugBissKeys(switchboard::Switchboard& board, Core& core);
void plugVolume(switchboard::Switchboard& board, Core& core);
/** `inputs` outlive the switchboard, here and below. */
void plugPicture(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
void plugCaptions(switchboard::Switchboard& board, Core& core);
void plugContext(switchboard::Switchboard& board, Core& core);
void plugComponents(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
void plugConfiguration(switchboard::Switchboard& board, Core& core, const InputSources& inputs);
void plugRatings(switchboard::Switchboard& board, Core& core);
/** `paths` outlive the switchboard, here and below. */
void plugInputSources(switchboard::Switchboard& board, const Core& core, InputSources& inputs,
                      VideoPaths& paths);
void plugMultiview(switchboard::Switchboard& board, VideoPaths& paths);
void plugTracks(switchboard::Switchboard& board, Core& core);
void plugBanner(switchboard::Switchboard& board, Core& core);
void plugTeletext(switchboard::Switchboard& board, Core& core);
/** `cam` outlives the switchboard, here and below. */
void plugUtilities(switchboard::Switchboard& board, Core& core, CamSlot& cam);
void plugCi(switchboard::Switchboard& board, Core& core, CamSlot& cam);
void plugUpgrade(switchboard::Switchboard& board, Core& core);
void plugTime(switchboard::Switchboard& board, Core& core);
void plugEvents(switchboard::Switchboard& board, Core& core);
void plugDownload(switchboard::Switchboard& board, Core& core);
void plugHighLevel(switchboard::Switchboard& board, Core& core);
void plugEngines(switchboard::Switchboard& board, Core& core);
void plugApplication(switchboard::Switchboard& board, Core& core);
void plugPower(switchboard::Switchboard& board, Core& core);
/** `scan` outlives the switchboard. */
void plugScan(switchboard::Switchboard& board, Core& core, ChannelScan& scan);
/** `digitTime`: without another digit before those typed select. */
void plugBroadcast(switchboard::Switchboard& board, Core& core,
                   std::chrono::milliseconds digitTime);
/** `cam` outlives the switchboard. */
void plugTuner(switchboard::Switchboard& board, Core& core, const CamSlot& cam);
/** `recording` outlives the switchboard, here and below. */
void plugRecord(switchboard::Switchboard& board, Core& core, Recording& recording);
void plugTimeShift(switchboard::Switchboard& board, Recording& recording);
void plugRecordings(switchboard::Switchboard& board, Recording& recording);
/** `baseFile`: the configuration file of calls that name none; empty: none. */
void plugParser(switchboard::Switchboard& board, const std::string& baseFile);

/** List handles: the kind in the upper half, the list (and favourite list) in the lower. */
enum HandleKind : uint32_t {
    kServiceListHandle = 0x51,
    kMultiplexListHandle = 0x52,
    kFavouriteListHandle = 0x53,
    kSatelliteListHandle = 0x54,
    kLogicalChannelListHandle = 0x55,
    kBissKeyListHandle = 0x56,
};
constexpr uint32_t makeHandle(HandleKind kind, uint32_t id) {
    return kind << 16 | id;
}
/** The list id of a handle of that kind, 0 for any other value. */
constexpr uint32_t handleId(uint32_t handle, HandleKind kind) {
    return handle >> 16 == kind ? handle & 0xFFFF : 0;
}

/** Whether an address that a client gave can be written at all: it is neither null nor what mmap
 * fails with. */
inline bool writable(const void* address) {
    const auto value = reinterpret_cast<uintptr_t>(address);
    return value != 0 && value != ~uintptr_t{0};
}

/** Writes a value through a pointer that may be null. */
template <typename T, typename V>
void put(T* to, V value) {
    if (writable(to)) *to = static_cast<T>(value);
}

/** Writes a service and its multiplex where they are wanted. */
void putPair(const ChannelList& list, const SVL_REC_T& record, SVL_REC_T* service,
             TSL_REC_T* multiplex);

}  // namespace television
