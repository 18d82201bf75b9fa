/** An engine of interactive television: whether it runs. The streams carry no applications, so
 * there is nothing for it to run. */
#pragma once

#include <cstdint>
#include <mutex>

#include "middleware/result_codes.h"
#include "television/core/core.h"

namespace television {

/** Any thread. */
struct Engine {
    std::mutex mutex;
    bool runs = false;  // guarded by mutex

    bool get() {
        std::lock_guard<std::mutex> lock(mutex);
        return runs;
    }
    /** Starts or stops the engine; posts `notification` when that changes anything. Returns TV_OK.
     */
    int32_t set(Core& core, bool on, const Notification& notification) {
        std::lock_guard<std::mutex> lock(mutex);
        if (runs != on) core.notifier.post(notification);
        runs = on;
        return TV_OK;
    }
};

}  // namespace television
