/** The handles of lists that the channel-list functions return to clients. */
#pragma once

#include <cstdint>

namespace television {

/** The upper half of a handle; the lower half is the id of the list. That of a favourite list is
 * list id * 256 + favourite list. */
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
/** Returns the list id of a handle of that kind; 0 for any other value. */
constexpr uint32_t handleId(uint32_t handle, HandleKind kind) {
    return handle >> 16 == kind ? handle & 0xFFFF : 0;
}

}  // namespace television
