/** Local date and time of recordings as text. */
#pragma once

#include <cstdint>
#include <string>

namespace television {

/** A local time: "2026-11-21", "20:15:00", "Sat". */
struct LocalTexts {
    std::string date;
    std::string time;
    std::string weekDay;
};

/** `utc`: seconds since 1970; `offset`: local time less UTC, seconds. Times before the year 1 or
 * after 9999 become the first or last one of these years. */
LocalTexts localTexts(int64_t utc, int32_t offset);

}  // namespace television
