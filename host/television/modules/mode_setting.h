/** A setting with a number of modes, such as the screen mode. */
#pragma once

#include <algorithm>
#include <cstdint>

#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/core.h"

namespace television {

/** A setting that is one of `count` modes, counted from 0, and is remembered under `name`; mode 0
 * until it is set. */
struct ModeSetting {
    const char* name;
    uint16_t count;

    int32_t get(const Core& core) const { return core.rememberedNumber(name, 0); }
    int32_t set(Core& core, uint16_t mode) const {
        if (mode >= count) return TV_INVALID_ARGUMENT;
        core.rememberNumber(name, mode);
        return TV_OK;
    }
    int32_t putCount(uint32_t* to) const {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = count;
        return TV_OK;
    }
    /** Writes the first `room` modes at most. Returns how many were written. */
    uint32_t write(uint16_t* modes, uint32_t room) const {
        const uint32_t written = std::min<uint32_t>(room, count);
        for (uint32_t i = 0; i < written; ++i) modes[i] = static_cast<uint16_t>(i);
        return written;
    }
};

}  // namespace television
