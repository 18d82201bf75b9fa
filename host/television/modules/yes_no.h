/** Plugging the functions that write yes or no. */
#pragma once

#include <cstdint>

#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/switchboard/switchboard.h"

namespace television {

/** Plugs a function whose only argument receives 1 when `ask()` returns true, and else 0. */
template <auto Function, typename Ask>
void plugYesNo(switchboard::Switchboard& board, Ask ask) {
    board.on<Function>([ask](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = ask() ? 1 : 0;
        return TV_OK;
    });
}

}  // namespace television
