/** The handles that the television gives its clients: of service contexts, of power control, of
 * stream components. */
#pragma once

#include <cstddef>
#include <cstdint>

namespace television {

/** "main_svctx" and "sub_svctx": the main and the sub window. */
constexpr uint32_t kMainContext = 0x5C01;
constexpr uint32_t kSubContext = 0x5C02;
constexpr uint32_t kPowerControlHandle = 0x9C01;

constexpr bool isServiceContext(uint32_t handle) {
    return handle == kMainContext || handle == kSubContext;
}

/** The handle of the stream component of a type (SCC_COMP_…) on the sink of a window. */
constexpr uint32_t componentHandle(uint32_t type, size_t window) {
    return 0x3CC00 + type * 2 + static_cast<uint32_t>(window) + 1;
}

}  // namespace television
